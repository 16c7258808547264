// Light statements: the cones of `illuminate` and `solar`, and the loop over lights.

#include <utility>

#include "icode/SlcGenInterCode.h"
#include "symbols/SlcGeneratedNames.h"
#include "symbols/SlcShaderSymbolTable.h"

using Hiddens = SlcShaderSymbolTable;

namespace {

bool AreUniform(std::initializer_list<const SlcOperand*> operands)
{
    for (const SlcOperand* operand : operands)
        if (!(*operand)->IsUniform())
            return false;
    return true;
}

bool IsP(const SlcOperand& operand)
{
    return operand->GetName() == SlcGeneratedNames::k_P;
}

}  // namespace

void SlcGenInterCode::AddEvalLightForP()
{
    AddICode(MakeShared<SlcEvalLightForPICode>());
    m_evaluatesLightsForP = true;
}

SlcGenInterCode::Cone SlcGenInterCode::EvaluateCone(SlcExprNode* position, SlcExprNode* axis,
                                                    SlcExprNode* angle)
{
    for (SlcExprNode* part : {position, axis, angle})
        if (part)
            part->ApplyWalker(this);
    Cone cone;
    if (angle)
        cone.angle = Pop();
    if (axis)
        cone.axis = Converted(Pop(), SlcTypeNode::APoint());
    if (position)
        cone.position = Converted(Pop(), SlcTypeNode::APoint());
    return cone;
}

void SlcGenInterCode::Case(SlcIlluminateStmtNode* node)
{
    const SlcOperand L = OperandOf(Hiddens::sm_L);
    const SlcOperand Ps = OperandOf(Hiddens::sm_Ps);
    const Cone cone = EvaluateCone(node->GetLightPosition(), node->GetAxis(), node->GetAngle());
    const SlcOperand flag = GenTempVar(SlcTypeNode::ABoolean(), SlcDetailNode::AVarying());
    const SlcOperand uniformFlag = GenTempVar(SlcTypeNode::ABoolean(), SlcDetailNode::AUniform());

    // One computation of the light's geometry serves all points.
    const bool uniform = cone.axis ? AreUniform({&cone.position, &cone.axis, &cone.angle})
                                   : cone.position->IsUniform();
    const auto condition = GridForm();
    if (m_options.m_simdInstructions && uniform && condition)
        AddICode(MakeShared<SlcIlluminateICode>(flag, cone.position, cone.axis, cone.angle, Ps, L,
                                                true, *condition));
    else
        AddInBlock(SlcDetailNode::AVarying(),
                   MakeShared<SlcIlluminateICode>(flag, cone.position, cone.axis, cone.angle, Ps, L,
                                                  false, nullptr));
    GenLitBody(node, flag, uniformFlag);
}

void SlcGenInterCode::Case(SlcSolarStmtNode* node)
{
    const SlcOperand L = OperandOf(Hiddens::sm_L);
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    Cone cone = EvaluateCone(nullptr, node->GetAxis(), node->GetAngle());
    const SlcOperand flag = GetBoolFlag(varying);
    const SlcOperand uniformFlag = GetBoolFlag(SlcDetailNode::AUniform());
    if (!node->GetAxis()) {
        cone.angle = SlcLexType::Float(0);
        cone.axis = GenTempVar(SlcTypeNode::APoint(), varying);
        AddInBlock(varying, MakeShared<SlcSubICode>(cone.axis, OperandOf(Hiddens::sm_Ps),
                                                    OperandOf(Hiddens::sm_E)));
    }
    const auto condition = GridForm();
    if (AreUniform({&cone.axis, &cone.angle}) && condition)
        AddICode(MakeShared<SlcSolarICode>(flag, cone.axis, cone.angle, L, true, *condition,
                                           !condition->Null()));
    else
        AddInBlock(varying, MakeShared<SlcSolarICode>(flag, cone.axis, cone.angle, L, false,
                                                      nullptr, false));
    GenLitBody(node, flag, uniformFlag);
    ReleaseBoolFlag(uniformFlag);
    ReleaseBoolFlag(flag);
}

/// The body runs at the points inside the cone, and at the others the light is black.
void SlcGenInterCode::GenLitBody(SlcLoopStmtNode* node, const SlcOperand& flag,
                                 const SlcOperand& uniformFlag)
{
    ClearOutsideCondition(flag);
    const auto anyPoint = [&] {
        AddICode(MakeShared<SlcSetUniformBoolFlagICode>(uniformFlag, flag));
    };
    anyPoint();
    EnterCondition(flag, uniformFlag);
    node->GetBody()->ApplyWalker(this);
    LeaveCondition();

    AddICode(MakeShared<SlcInvertBoolFlagICode>(flag, flag, InnermostFlag()));
    anyPoint();
    EnterCondition(flag, uniformFlag);
    const SlcOperand zero = SlcLexType::Float(0);
    AddInBlock(SlcDetailNode::AVarying(),
               MakeShared<SlcColorICode>(OperandOf(Hiddens::sm_Cl), zero, zero, zero));
    LeaveCondition();
}

void SlcGenInterCode::Case(SlcIlluminanceStmtNode* node)
{
    // The body runs once for each light: what was made in front of it must outlive it.
    const bool outerNoTempRelease = std::exchange(m_noTempRelease, true);
    const Cone cone = EvaluateCone(node->GetSurfacePosition(), node->GetAxis(), node->GetAngle());
    const SlcLabel start = GenLabel();
    const SlcLabel end = GenLabel();
    const auto begin = MakeShared<SlcBeginIlluminanceICode>(start, end);
    if (cone.axis) {
        GenConeLoop(node, cone, begin);
    } else {
        EnterLightLoop(cone.position);
        AddICode(begin);
        node->GetBody()->ApplyWalker(this);
    }
    AddICode(MakeShared<SlcEndIlluminanceICode>(start));
    AddICode(end);
    LeaveLightLoop(end);
    m_noTempRelease = outerNoTempRelease;
    ReleaseTempVars();
}

/// Up to the end of the body, which runs at the points whose current light lies in the cone. The
/// parts of the cone wait on the stack meanwhile, so that one that the body writes is copied in
/// front of the loop.
void SlcGenInterCode::GenConeLoop(SlcIlluminanceStmtNode* node, const Cone& cone,
                                  const SlcPtr<SlcICode>& begin)
{
    const SlcOperand flag = GenTempVar(SlcTypeNode::ABoolean(), SlcDetailNode::AVarying());
    const SlcOperand uniformFlag = GenTempVar(SlcTypeNode::ABoolean(), SlcDetailNode::AUniform());
    for (const SlcOperand& part : {cone.position, cone.axis, cone.angle})
        Push(part);
    EnterLightLoop(cone.position);
    ClearOutsideCondition(flag);
    AddICode(begin);
    const auto condition = GridForm();
    const bool simd = m_options.m_simdInstructions && condition && !cone.position->IsUniform() &&
                      !cone.axis->IsUniform() && cone.angle->IsUniform();
    const auto check = MakeShared<SlcCheckIlluminanceICode>(
        flag, cone.position, cone.axis, cone.angle, simd, simd ? *condition : nullptr,
        simd && !condition->Null());
    if (simd)
        AddICode(check);
    else
        AddInBlock(SlcDetailNode::AVarying(), check);
    AddICode(MakeShared<SlcSetUniformBoolFlagICode>(uniformFlag, flag));
    EnterCondition(flag, uniformFlag);
    node->GetBody()->ApplyWalker(this);
    LeaveCondition();
    check->m_angle = Pop();
    check->m_axis = Pop();
    check->m_position = Pop();
}

void SlcGenInterCode::EnterLightLoop(const SlcOperand& position)
{
    const SlcOperand points = IsP(position) ? position : Widened(position);
    if (IsP(position))
        AddEvalLightForP();
    else
        AddICode(MakeShared<SlcEvalLightICode>(points));
    m_lightLoop = {points, &*m_list->m_icodes.back()};
}

void SlcGenInterCode::LeaveLightLoop(const SlcLabel& end)
{
    const LightLoop loop = std::exchange(m_lightLoop, {});
    const bool isForP = IsP(loop.position);
    if (!isForP)
        m_otherLightsBehind[&*end] = {};
    if (loop.callsForP.empty() || (isForP && !loop.movesP))
        return;
    // The body may change the points.
    const SlcOperand copy = MakeTempVar(SlcTypeNode::APoint(), SlcDetailNode::AVarying());
    m_copiesOfPoints[loop.evaluation] = MakeShared<SlcAssignSIMDICode>(copy, loop.position);
    for (const SlcICode* last : loop.callsForP)
        m_otherLightsBehind[last] = copy;
}

void SlcGenInterCode::NoteCallForP()
{
    if (m_lightLoop.evaluation)
        m_lightLoop.callsForP.push_back(&*m_list->m_icodes.back());
}

void SlcGenInterCode::InsertLightEvaluations()
{
    if (m_otherLightsBehind.empty())
        return;
    std::deque<SlcPtr<SlcICode>> codes;
    for (const auto& code : m_list->m_icodes) {
        if (const auto copy = m_copiesOfPoints.find(&*code); copy != m_copiesOfPoints.end())
            codes.push_back(copy->second);
        codes.push_back(code);
        const auto others = m_otherLightsBehind.find(&*code);
        if (others == m_otherLightsBehind.end())
            continue;
        if (!others->second.Null())
            codes.push_back(MakeShared<SlcEvalLightICode>(others->second));
        if (m_evaluatesLightsForP)
            codes.push_back(MakeShared<SlcResetEvalLightForPICode>());
    }
    m_list->m_icodes.swap(codes);
}

// Lowers light statements: the cones of `illuminate` and `solar`, and the loop over lights.
//
//     illuminate (p, a, w) { S }     f = in cone, L = Ps - p; under f: S; under not f: Cl = 0
//     illuminance (p, a, w) { S }    lights for p; begin; f = in cone; under f: S; end
//
// For each light, `illuminance` tests the cone as it was before the loop: those parts of the cone
// that the body writes are copied before the loop.
//
// Tested by tests/golden (illuminance_cones, illuminate_forms) and, with values, by
// tests/run/LightTest.cpp.

#include "lowering/SlcGenInterCode.h"
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

}  // namespace

SlcGenInterCode::Cone SlcGenInterCode::EvaluateCone(SlcExprNode* position, SlcExprNode* axis,
                                                    SlcExprNode* angle)
{
    for (SlcExprNode* part : {position, axis, angle})
        if (part)
            part->ApplyWalker(this);
    Cone cone;
    if (angle)
        cone.angle = m_values.Pop();
    if (axis)
        cone.axis = m_context.Converted(m_values.Pop(), SlcTypeNode::APoint());
    if (position)
        cone.position = m_context.Converted(m_values.Pop(), SlcTypeNode::APoint());
    return cone;
}

void SlcGenInterCode::Case(SlcIlluminateStmtNode* node)
{
    const SlcOperand L = m_context.OperandOf(Hiddens::EntryNamed("L"));
    const SlcOperand Ps = m_context.OperandOf(Hiddens::EntryNamed("Ps"));
    const Cone cone = EvaluateCone(node->GetLightPosition(), node->GetAxis(), node->GetAngle());
    const SlcOperand flag = m_list.GenTempVar(SlcTypeNode::ABoolean(), SlcDetailNode::AVarying());
    const SlcOperand uniformFlag =
        m_list.GenTempVar(SlcTypeNode::ABoolean(), SlcDetailNode::AUniform());

    // The whole-grid form reads the cone once for all points, so the cone must be uniform.
    const bool uniform = cone.axis ? AreUniform({&cone.position, &cone.axis, &cone.angle})
                                   : cone.position->IsUniform();
    const SlcGridForm form =
        m_options.m_simdInstructions && uniform ? m_conditions.GridForm() : SlcGridForm::Plain();
    m_conditions.AddInForm(form, MakeShared<SlcIlluminateICode>(flag, cone.position, cone.axis,
                                                                cone.angle, Ps, L, form));
    GenLitBody(node, flag, uniformFlag);
}

void SlcGenInterCode::Case(SlcSolarStmtNode* node)
{
    const SlcOperand L = m_context.OperandOf(Hiddens::EntryNamed("L"));
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    Cone cone = EvaluateCone(nullptr, node->GetAxis(), node->GetAngle());
    const SlcOperand flag = m_conditions.GetBoolFlag(varying);
    const SlcOperand uniformFlag = m_conditions.GetBoolFlag(SlcDetailNode::AUniform());
    if (!node->GetAxis()) {
        cone.angle = SlcLexType::Float(0);
        cone.axis = m_list.GenTempVar(SlcTypeNode::APoint(), varying);
        m_conditions.AddInBlock(
            varying,
            MakeShared<SlcSubICode>(cone.axis, m_context.OperandOf(Hiddens::EntryNamed("Ps")),
                                    m_context.OperandOf(Hiddens::EntryNamed("E"))));
    }
    const SlcGridForm form =
        AreUniform({&cone.axis, &cone.angle}) ? m_conditions.GridForm() : SlcGridForm::Plain();
    m_conditions.AddInForm(form, MakeShared<SlcSolarICode>(flag, cone.axis, cone.angle, L, form));
    GenLitBody(node, flag, uniformFlag);
    m_conditions.ReleaseBoolFlag(uniformFlag);
    m_conditions.ReleaseBoolFlag(flag);
}

void SlcGenInterCode::GenLitBody(SlcLoopStmtNode* node, const SlcOperand& flag,
                                 const SlcOperand& uniformFlag)
{
    m_conditions.ClearOutsideCondition(flag);
    const auto anyPoint = [&] {
        m_list.AddICode(MakeShared<SlcSetUniformBoolFlagICode>(uniformFlag, flag));
    };
    anyPoint();
    m_conditions.EnterCondition(flag, uniformFlag);
    node->GetBody()->ApplyWalker(this);
    m_conditions.LeaveCondition();

    m_list.AddICode(MakeShared<SlcInvertBoolFlagICode>(flag, flag, m_conditions.InnermostFlag()));
    anyPoint();
    m_conditions.EnterCondition(flag, uniformFlag);
    const SlcOperand zero = SlcLexType::Float(0);
    m_conditions.AddInBlock(SlcDetailNode::AVarying(),
                            MakeShared<SlcColorICode>(
                                m_context.OperandOf(Hiddens::EntryNamed("Cl")), zero, zero, zero));
    m_conditions.LeaveCondition();
}

void SlcGenInterCode::Case(SlcIlluminanceStmtNode* node)
{
    {
        // The body runs once for each light, so it must not reuse temporaries made before the loop.
        const SlcListBuilder::KeepTempVars keep(m_list);
        const Cone cone =
            EvaluateCone(node->GetSurfacePosition(), node->GetAxis(), node->GetAngle());
        const SlcLabel start = m_list.GenLabel();
        const SlcLabel end = m_list.GenLabel();
        const auto begin = MakeShared<SlcBeginIlluminanceICode>(start, end);
        if (cone.axis) {
            GenConeLoop(node, cone, begin);
        } else {
            EnterLightLoop(cone.position);
            m_list.AddICode(begin);
            node->GetBody()->ApplyWalker(this);
        }
        m_list.AddICode(MakeShared<SlcEndIlluminanceICode>(start));
        m_list.AddICode(end);
        m_lights.LeaveLightLoop(end);
    }
    m_list.ReleaseTempVars();
}

/// Emits the loop up to the end of its body, which runs at points whose current light is in the
/// cone. Meanwhile the parts of the cone stay on the value stack, so that a part that the body
/// writes is copied before the loop.
void SlcGenInterCode::GenConeLoop(SlcIlluminanceStmtNode* node, const Cone& cone,
                                  const SlcPtr<SlcICode>& begin)
{
    const SlcOperand flag = m_list.GenTempVar(SlcTypeNode::ABoolean(), SlcDetailNode::AVarying());
    const SlcOperand uniformFlag =
        m_list.GenTempVar(SlcTypeNode::ABoolean(), SlcDetailNode::AUniform());
    for (const SlcOperand& part : {cone.position, cone.axis, cone.angle})
        m_values.Push(part);
    EnterLightLoop(cone.position);
    m_conditions.ClearOutsideCondition(flag);
    m_list.AddICode(begin);
    const bool canUseGrid = m_options.m_simdInstructions && !cone.position->IsUniform() &&
                            !cone.axis->IsUniform() && cone.angle->IsUniform();
    const SlcGridForm form = canUseGrid ? m_conditions.GridForm() : SlcGridForm::Plain();
    const auto check =
        MakeShared<SlcCheckIlluminanceICode>(flag, cone.position, cone.axis, cone.angle, form);
    m_conditions.AddInForm(form, check);
    m_list.AddICode(MakeShared<SlcSetUniformBoolFlagICode>(uniformFlag, flag));
    m_conditions.EnterCondition(flag, uniformFlag);
    node->GetBody()->ApplyWalker(this);
    m_conditions.LeaveCondition();
    check->m_angle = m_values.Pop();
    check->m_axis = m_values.Pop();
    check->m_position = m_values.Pop();
}

/// Lights can be evaluated only for a varying position.
void SlcGenInterCode::EnterLightLoop(const SlcOperand& position)
{
    m_lights.EnterLightLoop(SlcLightEvaluations::IsP(position) ? position
                                                               : m_context.Widened(position));
}

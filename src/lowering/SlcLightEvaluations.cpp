// Decides when the lights are evaluated.
//
//     EVAL Q; begin lights; EVAL_FOR_P; d = diffuse(N); end lights
// becomes, where the loop needs its lights again,
//     T = Q; EVAL Q; begin lights; EVAL_FOR_P; d = diffuse(N); EVAL T; RESET_FOR_P; end lights
//
// Whether a loop needs its lights again is known only once its body has been lowered, but the copy
// of its points belongs before the loop. So the places are recorded by their instructions, and
// everything is inserted when the list is complete. Tested by
// tests/lowering/SlcGenInterCodeCallsTest.cpp and, with values, by tests/run/LightTest.cpp.

#include "lowering/SlcLightEvaluations.h"

#include <utility>

#include "frontend/SlcShaderTypeNode.h"
#include "icode/SlcAssignICode.h"
#include "icode/SlcLightICode.h"
#include "symbols/SlcGeneratedNames.h"

bool SlcLightEvaluations::IsP(const SlcOperand& operand)
{
    return operand->GetName() == SlcGeneratedNames::k_P;
}

void SlcLightEvaluations::AddEvalLightForP()
{
    m_list.AddICode(MakeShared<SlcEvalLightForPICode>());
    m_evaluatesLightsForP = true;
}

void SlcLightEvaluations::NoteCallForP()
{
    if (m_lightLoop.evaluation)
        m_lightLoop.callsForP.push_back(&*m_list.Codes().back());
}

void SlcLightEvaluations::ResetEvalLightIfPAssigned(const SlcOperand& assigned,
                                                    const SlcShaderTypeNode* shaderType)
{
    if (!shaderType || !shaderType->SeesLights() || !IsP(assigned))
        return;
    m_list.AddICode(MakeShared<SlcResetEvalLightForPICode>());
    m_lightLoop.movesP = true;
}

void SlcLightEvaluations::EnterLightLoop(const SlcOperand& position)
{
    if (IsP(position))
        AddEvalLightForP();
    else
        m_list.AddICode(MakeShared<SlcEvalLightICode>(position));
    m_lightLoop = {position, &*m_list.Codes().back()};
}

void SlcLightEvaluations::LeaveLightLoop(const SlcLabel& end)
{
    const LightLoop loop = std::exchange(m_lightLoop, {});
    const bool isForP = IsP(loop.position);
    if (!isForP)
        m_otherLightsAfter[&*end] = {};
    if (loop.callsForP.empty() || (isForP && !loop.movesP))
        return;
    // A copy, since the body may change the points.
    const SlcOperand copy = m_list.MakeTempVar(SlcTypeNode::APoint(), SlcDetailNode::AVarying());
    m_copiesOfPoints[loop.evaluation] = MakeShared<SlcAssignSIMDICode>(copy, loop.position);
    for (const SlcICode* last : loop.callsForP)
        m_otherLightsAfter[last] = copy;
}

void SlcLightEvaluations::InsertLightEvaluations()
{
    if (m_otherLightsAfter.empty())
        return;
    std::deque<SlcPtr<SlcICode>> codes;
    for (const auto& code : m_list.Codes()) {
        if (const auto copy = m_copiesOfPoints.find(&*code); copy != m_copiesOfPoints.end())
            codes.push_back(copy->second);
        codes.push_back(code);
        const auto others = m_otherLightsAfter.find(&*code);
        if (others == m_otherLightsAfter.end())
            continue;
        if (!others->second.Null())
            codes.push_back(MakeShared<SlcEvalLightICode>(others->second));
        if (m_evaluatesLightsForP)
            codes.push_back(MakeShared<SlcResetEvalLightForPICode>());
    }
    m_list.Codes().swap(codes);
}

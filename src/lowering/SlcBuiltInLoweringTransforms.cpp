// If whole-grid forms are enabled, transforms between spaces whose names are constants are lowered
// as steps through the current space.
//
//     transform("a", "b", p)       T = from "a" p; r = to "b" T
//     transform("b", p)            r = to "b" p            one step: p is in the current space
//     transform("a", "a", p)       r = p
//
// Otherwise the names are passed to the primitive, which looks them up at run time.
//
// Tested by tests/lowering/SlcBuiltInLoweringTest.cpp.

#include "frontend/SlcNodes.h"
#include "icode/SlcICodes.h"
#include "lowering/SlcBuiltInLowering.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

/// Returns the type that a transform between named spaces transforms; null for other primitives.
SlcTypeNode* TransformedType(SqxPrimitive primitive)
{
    if (primitive == SqxPrimitive::CALL_PRIM_TRANSFORM ||
        primitive == SqxPrimitive::CALL_PRIM_TRANSFORM2)
        return SlcTypeNode::APoint();
    if (primitive == SqxPrimitive::CALL_PRIM_VTRANSFORM ||
        primitive == SqxPrimitive::CALL_PRIM_VTRANSFORM2)
        return SlcTypeNode::AVector();
    if (primitive == SqxPrimitive::CALL_PRIM_NTRANSFORM ||
        primitive == SqxPrimitive::CALL_PRIM_NTRANSFORM2)
        return SlcTypeNode::ANormal();
    return nullptr;
}

bool IsCurrent(const SlcOperand& space)
{
    return space->GetString() == "\"current\"";
}

}  // namespace

SlcOperand SlcBuiltInLowering::InlineTransform(SlcProcCallExprNode* call, SqxPrimitive primitive,
                                               const SlcOperand& from, const SlcOperand& to,
                                               const SlcOperand& value)
{
    SlcTypeNode* type = TransformedType(primitive);
    if (!type)
        m_errors->FatalError(call, "Invalid function name in SlcGenInterCode::InlineTransform: " +
                                       std::string(SqxPrimitiveName(primitive)));
    if (!from->IsString() || !to->IsString())
        return nullptr;
    if (from->GetString() == to->GetString())
        return GenSameSpace(call, type, value);

    SlcDetailNode* detail = value->GetDetail();
    const SlcGridForm form = m_conditions.FormFor(detail);
    const bool throughCurrent = !IsCurrent(from) && !IsCurrent(to);
    const SlcOperand current = throughCurrent ? m_list.GenTempVar(type, detail) : value;
    const SlcOperand result = m_list.GetResultVar(call, type, detail);
    if (!form.simd)
        m_conditions.AddBeginBlock(detail);
    if (!IsCurrent(from))
        m_list.AddICode(MakeShared<SlcTransformFromSpaceICode>(throughCurrent ? current : result,
                                                               value, type, from, form));
    if (!IsCurrent(to))
        m_list.AddICode(MakeShared<SlcTransformToSpaceICode>(result, current, type, to, form));
    if (!form.simd)
        m_conditions.AddEndBlock(detail);
    return result;
}

SlcOperand SlcBuiltInLowering::GenSameSpace(SlcProcCallExprNode* call, SlcTypeNode* type,
                                            const SlcOperand& value)
{
    const SlcOperand result = m_list.GetResultVar(call, type, value->GetDetail());
    if (value->IsUniform() || m_conditions.IsInParallelIf())
        m_conditions.AddInBlock(value->GetDetail(), MakeShared<SlcAssignICode>(result, value));
    else
        m_list.AddICode(MakeShared<SlcAssignSIMDICode>(result, value));
    return result;
}

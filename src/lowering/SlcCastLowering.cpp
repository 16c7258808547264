// Lowers casts. The operand and the type determine the structure of the code, and the space
// determines whether a transform is needed.
//
//     color (r, g, b)              { T = (r, g, b) }
//     point "shader" (x, y, z)     { T = (x, y, z) }; R = from "shader" T      varying: whole grid
//                                  { T = (x, y, z); R = from "shader" T }      uniform
//     matrix "shader" 1            { T = 1 }; { R = concat T "shader" }
//     vector p                     nothing: the kinds of points are stored alike
//
// Tested by tests/lowering/SlcGenInterCodeTest.cpp.

#include "lowering/SlcCastLowering.h"

#include "frontend/SlcNodes.h"
#include "icode/SlcICodes.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

/// Points and matrices are stored in the current space and colors in rgb, so a cast from that space
/// needs no transform.
bool NeedsTransform(const SlcCastExprNode* node)
{
    if (!node->GetSpace())
        return false;
    const std::string& space = node->GetSpace()->GetText();
    return space != "\"\"" && space != (node->GetType()->IsColorType() ? "\"rgb\"" : "\"current\"");
}

/// Returns color, vector, normal or point, which constructors and transforms distinguish.
SlcTypeNode* KindOf(const SlcTypeNode* type)
{
    if (type->IsColorType())
        return SlcTypeNode::AColor();
    if (type->IsVectorType())
        return SlcTypeNode::AVector();
    if (type->IsNormalType())
        return SlcTypeNode::ANormal();
    return SlcTypeNode::APoint();
}

SlcPtr<SlcICode> MakeConstructor(const SlcTypeNode* type, const SlcOperand& result,
                                 const SlcOperand& x, const SlcOperand& y, const SlcOperand& z)
{
    if (type->IsColorType())
        return MakeShared<SlcColorICode>(result, x, y, z);
    if (type->IsVectorType())
        return MakeShared<SlcVectorICode>(result, x, y, z);
    if (type->IsNormalType())
        return MakeShared<SlcNormalICode>(result, x, y, z);
    return MakeShared<SlcPointICode>(result, x, y, z);
}

SlcOperand SpaceOperand(const SlcCastExprNode* node)
{
    return MakeShared<SlcLexType>(node->GetSpace(), SlcTypeNode::AString(),
                                  SlcDetailNode::AUniform(), SlcStorageSpecNode::ALocal());
}

}  // namespace

SlcOperand SlcCastLowering::Triple(SlcCastExprNode* node, const SlcOperand& x, const SlcOperand& y,
                                   const SlcOperand& z)
{
    if (!node->GetType()->IsPointType() && !node->GetType()->IsColorType())
        m_context.RejectForm(node);
    SlcDetailNode* detail = SlcConditions::UniformIfAll({x, y, z});
    SlcTypeNode* type = KindOf(node->GetType());
    if (!NeedsTransform(node)) {
        const SlcOperand result = m_list.GetResultVar(node, type, detail);
        m_conditions.AddInBlock(detail, MakeConstructor(type, result, x, y, z));
        return result;
    }
    const SlcOperand temporary = m_list.GenTempVar(type, detail);
    const SlcOperand result = m_list.GetResultVar(node, type, detail);
    return GenFromSpace(node, result, temporary, type, MakeConstructor(type, temporary, x, y, z));
}

/// `constructor` is in a block. The transform is in the same block if the source is uniform;
/// otherwise it has whole-grid form and follows the block.
SlcOperand SlcCastLowering::GenFromSpace(SlcCastExprNode* node, const SlcOperand& result,
                                         const SlcOperand& source, SlcTypeNode* type,
                                         const SlcPtr<SlcICode>& constructor)
{
    SlcDetailNode* detail = source->GetDetail();
    const SlcGridForm form = m_conditions.FormFor(detail);
    const auto transform =
        MakeShared<SlcTransformFromSpaceICode>(result, source, type, SpaceOperand(node), form);
    m_conditions.AddBeginBlock(detail);
    m_list.AddICode(constructor);
    if (!form.simd)
        m_list.AddICode(transform);
    m_conditions.AddEndBlock(detail);
    if (form.simd)
        m_list.AddICode(transform);
    return result;
}

SlcOperand SlcCastLowering::Matrix(SlcCastExprNode* node, const std::deque<SlcOperand>& values)
{
    SlcDetailNode* detail = SlcConditions::UniformIfAll(values);
    if (!NeedsTransform(node)) {
        const SlcOperand result = m_list.GetResultVar(node, SlcTypeNode::AMatrix(), detail);
        m_conditions.AddInBlock(detail, MakeShared<SlcMatrixICode>(result, values));
        return result;
    }
    const SlcOperand temporary = m_list.GenTempVar(SlcTypeNode::AMatrix(), detail);
    m_conditions.AddInBlock(detail, MakeShared<SlcMatrixICode>(temporary, values));
    return GenConcatSpace(node, temporary);
}

SlcOperand SlcCastLowering::GenConcatSpace(SlcCastExprNode* node, const SlcOperand& source)
{
    SlcDetailNode* detail = source->GetDetail();
    const SlcOperand result = m_list.GetResultVar(node, SlcTypeNode::AMatrix(), detail);
    m_conditions.AddInBlock(
        detail, MakeShared<SlcConcatSpaceMatrixICode>(result, source, node->GetSpace()));
    return result;
}

SlcOperand SlcCastLowering::Value(SlcCastExprNode* node, const SlcOperand& operand)
{
    // The value may still be a triple or float that has not been promoted to the operand's type.
    const SlcOperand value =
        m_context.Converted(operand, SlcLoweringContext::TypeOf(node->GetOperand()));
    const SlcTypeNode* type = node->GetType();
    if (!NeedsTransform(node) && value->GetType()->IsSameType(type))
        return value;
    if (type->IsColorType())
        return GenCastToColor(node, value);
    if (type->IsPointType())
        return GenCastToPoint(node, value);
    if (type->IsMatrixType())
        return GenCastToMatrix(node, value);
    m_context.RejectForm(node);
}

SlcOperand SlcCastLowering::GenCastToColor(SlcCastExprNode* node, const SlcOperand& value)
{
    SlcDetailNode* detail = value->GetDetail();
    SlcTypeNode* color = SlcTypeNode::AColor();
    const bool fromFloat = value->GetType()->IsFloatType();
    if (!NeedsTransform(node)) {
        const SlcOperand result =
            fromFloat ? m_list.GetResultVar(node, color, detail) : m_list.GenTempVar(color, detail);
        m_conditions.AddInBlock(detail, fromFloat
                                            ? MakeConstructor(color, result, value, value, value)
                                            : MakeShared<SlcAssignICode>(result, value));
        return result;
    }
    if (fromFloat) {
        const SlcOperand temporary = m_list.GenTempVar(color, detail);
        const SlcOperand result = m_list.GetResultVar(node, color, detail);
        return GenFromSpace(node, result, temporary, color,
                            MakeConstructor(color, temporary, value, value, value));
    }
    const SlcGridForm form = m_conditions.FormFor(detail);
    const SlcOperand result = m_list.GetResultVar(node, color, detail);
    const auto transform =
        MakeShared<SlcTransformFromSpaceICode>(result, value, color, SpaceOperand(node), form);
    if (form.simd)
        m_list.AddICode(transform);
    else
        m_conditions.AddInBlock(detail, transform);
    return result;
}

SlcOperand SlcCastLowering::GenCastToPoint(SlcCastExprNode* node, const SlcOperand& value)
{
    SlcDetailNode* detail = value->GetDetail();
    SlcTypeNode* kind = KindOf(node->GetType());
    const bool fromFloat = value->GetType()->IsFloatType();
    if (!NeedsTransform(node)) {
        const SlcOperand result = fromFloat
                                      ? m_list.GetResultVar(node, SlcTypeNode::APoint(), detail)
                                      : m_list.GenTempVar(kind, detail);
        if (fromFloat)
            m_conditions.AddInBlock(detail, MakeShared<SlcPointICode>(result, value, value, value));
        else
            m_conditions.AddInBlock(detail, MakeShared<SlcAssignICode>(result, value));
        return result;
    }
    SlcOperand source = value;
    SlcTypeNode* type = SlcLoweringContext::TypeOf(node->GetOperand());
    if (fromFloat) {
        source = m_context.Converted(value, kind);
        type = kind;
    }
    const SlcOperand result = m_list.GetResultVar(node, kind, detail);
    m_conditions.AddInBlock(detail, MakeShared<SlcTransformFromSpaceICode>(result, source, type,
                                                                           SpaceOperand(node),
                                                                           SlcGridForm::Plain()));
    return result;
}

SlcOperand SlcCastLowering::GenCastToMatrix(SlcCastExprNode* node, const SlcOperand& value)
{
    SlcTypeNode* matrix = SlcTypeNode::AMatrix();
    if (NeedsTransform(node)) {
        return GenConcatSpace(node, m_context.Converted(value, matrix));
    }
    const SlcOperand result = m_list.GetResultVar(node, matrix, value->GetDetail());
    m_conditions.AddInBlock(value->GetDetail(), MakeShared<SlcAssignICode>(result, value));
    return result;
}

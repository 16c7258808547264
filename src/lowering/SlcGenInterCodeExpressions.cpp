// Lowers constants, variables, elements, arithmetic, constructors, casts and texture accesses. Each
// expression pops the operands of its parts and pushes one operand; an array constructor leaves one
// per element. Braces enclose a parallel run:
//
//     a * (b + c)    push a, b, c; pop c, b; { T = b + c } push T; pop T, a; { U = a * T } push U
//
// The result of an operation is varying if any operand is; on a grid, that of a texture access
// always is. The result is stored in a temporary, or in the target of the enclosing assignment.
//
// Tested by tests/lowering/SlcGenInterCodeTest.cpp.

#include <string>
#include <typeinfo>

#include "lowering/SlcGenInterCode.h"
#include "support/SlcFloatText.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

/// Returns the type of an arithmetic result. All results of the point family, such as the sum of
/// two vectors, are stored as points.
SlcTypeNode* ResultType(const SlcBinOpExprNode* node, const SlcOperand& left,
                        const SlcOperand& right)
{
    const SlcTypeNode* leftType = left->GetType();
    const SlcTypeNode* rightType = right->GetType();
    if (node->IsDotProd())
        return SlcTypeNode::AFloat();
    if (leftType->IsPointType() || rightType->IsPointType())
        return SlcTypeNode::APoint();
    if (leftType->IsColorType() || rightType->IsColorType())
        return SlcTypeNode::AColor();
    if (leftType->IsMatrixType() || rightType->IsMatrixType())
        return SlcTypeNode::AMatrix();
    return SlcTypeNode::AFloat();
}

/// Returns null for an operator without an instruction.
SlcPtr<SlcICode> MakeBinOp(const SlcBinOpExprNode* node, const SlcOperand& result,
                           const SlcOperand& left, const SlcOperand& right)
{
    if (node->IsAdd())
        return MakeShared<SlcAddICode>(result, left, right);
    if (node->IsSub())
        return MakeShared<SlcSubICode>(result, left, right);
    if (node->IsMult())
        return MakeShared<SlcMultICode>(result, left, right);
    if (node->IsDiv())
        return MakeShared<SlcDivICode>(result, left, right);
    if (node->IsCrossProd())
        return MakeShared<SlcCrossProdICode>(result, left, right);
    if (node->IsDotProd())
        return MakeShared<SlcDotProdICode>(result, left, right);
    return nullptr;
}

}  // namespace

void SlcGenInterCode::Case(SlcConstExprNode* node)
{
    SlcLexicalNode* constant = node->GetConst();
    if (node->IsFloat()) {
        // Use the value that the run time will have, so that folding computes with the same number.
        const double value = node->GetFloatConst()->GetValue();
        const double written = SlcValueOfFloatText(value);
        if (written != value)
            constant = SlcLexicalNode::CreateFloat(written);
    }
    m_values.Push(MakeShared<SlcLexType>(
        constant, node->IsFloat() ? SlcTypeNode::AFloat() : SlcTypeNode::AString(),
        SlcDetailNode::AUniform(), SlcStorageSpecNode::ALocal()));
}

void SlcGenInterCode::Case(SlcIdentExprNode* node)
{
    m_values.Push(m_context.OperandOf(node->GetSymbolEntry()));
}

void SlcGenInterCode::Case(SlcBinOpExprNode* node)
{
    node->WalkIn(this);
    GenBinOp(node);
}

/// Pops both operands. A separate function, so that the stack frame of the recursive walk is small.
void SlcGenInterCode::GenBinOp(SlcBinOpExprNode* node)
{
    SlcOperand right = m_values.Pop();
    SlcOperand left = m_values.Pop();
    m_context.MatchColors(left, right);
    SlcDetailNode* detail = SlcDetailNode::Combine(left->GetDetail(), right->GetDetail());
    const SlcOperand result = m_list.GetResultVar(node, ResultType(node, left, right), detail);
    const SlcPtr<SlcICode> code = MakeBinOp(node, result, left, right);
    if (code.Null())
        m_errors->FatalError(node, "Invalid operator while generating i-code for bin op");
    m_conditions.AddInBlock(detail, code);
    m_values.Push(result);
}

void SlcGenInterCode::Case(SlcUMinusExprNode* node)
{
    SlcOperand source = Evaluate(node->GetOperand());
    SlcTypeNode* type = SlcLoweringContext::TypeOf(node);
    // A float that will be promoted later still has type float here.
    if (type->IsColorType() && source->GetType()->IsPointType())
        source = m_context.Converted(source, type);
    else if (!source->GetType()->IsSameType(type))
        type = SlcTypeNode::AFloat();
    SlcDetailNode* detail = SlcDetailNode::Combine(m_context.DetailOf(node), source->GetDetail());
    const SlcOperand result = m_list.GetResultVar(node, type, detail);
    m_conditions.AddInBlock(detail, MakeShared<SlcUnaryMinusICode>(result, source));
    m_values.Push(result);
}

void SlcGenInterCode::Case(SlcPointExprNode* node)
{
    node->WalkIn(this);
    const SlcOperand z = m_values.Pop();
    const SlcOperand y = m_values.Pop();
    const SlcOperand x = m_values.Pop();
    SlcDetailNode* detail = SlcConditions::UniformIfAll({x, y, z});
    const SlcOperand result = m_list.GetResultVar(node, SlcTypeNode::APoint(), detail);
    m_conditions.AddInBlock(detail, MakeShared<SlcPointICode>(result, x, y, z));
    m_values.Push(result);
}

void SlcGenInterCode::Case(SlcMatrixExprNode* node)
{
    const std::deque<SlcOperand> values = EvaluateMatrix(node);
    SlcDetailNode* detail = SlcConditions::UniformIfAll(values);
    const SlcOperand result = m_list.GetResultVar(node, SlcTypeNode::AMatrix(), detail);
    m_conditions.AddInBlock(detail, MakeShared<SlcMatrixICode>(result, values));
    m_values.Push(result);
}

std::deque<SlcOperand> SlcGenInterCode::EvaluateMatrix(SlcMatrixExprNode* node)
{
    node->WalkIn(this);
    std::deque<SlcOperand> values;
    for (std::size_t i = 0; i < node->GetValues().size(); ++i)
        values.push_front(m_values.Pop());
    return values;
}

void SlcGenInterCode::Case(SlcArrayExprNode* node)
{
    node->WalkIn(this);
}

void SlcGenInterCode::Case(SlcArrayRefExprNode* node)
{
    const SlcOperand array = m_context.OperandOf(node->GetSymbolEntry());
    const SlcOperand index = Evaluate(node->GetIndex());
    m_elements.GenIndexCheck(node, node->GetIdent()->GetName(), array, index);
    if (index->IsUniform()) {
        m_values.Push(m_elements.GenElementRef(array, index, array->GetDetail()));
        return;
    }
    const SlcOperand copy =
        m_list.GetResultVar(node, SlcElements::ElementType(array), SlcDetailNode::AVarying());
    m_elements.GenElementRead(copy, array, index);
    // An element that was read into the target of an assignment is not written back from there.
    if (!(copy == SlcPossibleTypes::Of(node)->GetOperandHint()))
        m_elements.RememberCopy(copy, array, index);
    m_values.Push(copy);
}

void SlcGenInterCode::Case(SlcCastExprNode* node)
{
    if (auto* triple = dynamic_cast<SlcPointExprNode*>(node->GetOperand())) {
        triple->WalkIn(this);
        const SlcOperand z = m_values.Pop();
        const SlcOperand y = m_values.Pop();
        const SlcOperand x = m_values.Pop();
        m_values.Push(m_casts.Triple(node, x, y, z));
    } else if (auto* matrix = dynamic_cast<SlcMatrixExprNode*>(node->GetOperand())) {
        m_values.Push(m_casts.Matrix(node, EvaluateMatrix(matrix)));
    } else {
        m_values.Push(m_casts.Value(node, Evaluate(node->GetOperand())));
    }
}

void SlcGenInterCode::Case(SlcTextureExprNode* node)
{
    node->GetFilename()->ApplyWalker(this);
    node->GetChannel()->ApplyWalker(this);
    node->GetArguments()->ApplyWalker(this);
    constexpr std::size_t nameAndChannel = 2;
    std::deque<SlcOperand> args;
    for (std::size_t i = 0; i < node->GetArguments()->GetArgs().size() + nameAndChannel; ++i)
        args.push_front(m_values.Pop());
    m_values.Push(m_textures.Lower(node, args));
}

void SlcGenInterCode::Default(SlcSyntaxNode* node)
{
    m_context.RejectForm(node);
}

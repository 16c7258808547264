// Arrays and their elements.

#include <algorithm>

#include "icode/SlcGenInterCode.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

SlcTypeNode* ElementType(const SlcOperand& array)
{
    return static_cast<SlcArrayTypeNode*>(array->GetType())->GetElementType();
}

int Length(const SlcOperand& array)
{
    return static_cast<SlcArrayTypeNode*>(array->GetType())->GetLength();
}

}  // namespace

void SlcGenInterCode::Case(SlcArrayExprNode* node)
{
    node->WalkIn(this);
}

void SlcGenInterCode::Case(SlcArrayRefExprNode* node)
{
    const SlcOperand array = OperandOf(node->GetSymbolEntry());
    const SlcOperand index = Evaluate(node->GetIndex());
    GenIndexCheck(node, node->GetIdent(), array, index);
    if (index->IsUniform())
        Push(GenElementRef(array, index, array->GetDetail()));
    else
        GenElementRead(node, array, index);
}

SlcOperand SlcGenInterCode::GenElementRef(const SlcOperand& array, const SlcOperand& index,
                                          SlcDetailNode* detail)
{
    const SlcOperand ref = MakeElementRef(array, detail);
    AddICode(MakeShared<SlcArrayRefICode>(ref, array, index));
    return ref;
}

SlcOperand SlcGenInterCode::MakeElementRef(const SlcOperand& array, const SlcDetailNode* detail)
{
    SlcDetailNode* refDetail =
        detail->IsUniform() ? SlcDetailNode::AUniform() : SlcDetailNode::AVarying();
    SlcOperand ref = GenTempVar(SlcTypeNode::CreateArrayRefType(ElementType(array)), refDetail);
    m_arrayOfRef[&*ref] = array;
    return ref;
}

void SlcGenInterCode::GenIndexCheck(SlcSyntaxNode* node, SlcIdentNode* ident,
                                    const SlcOperand& array, const SlcOperand& index)
{
    if (!m_options.m_checkArrayBounds)
        return;
    const bool uniform = array->IsUniform() && index->IsUniform();
    AddInBlock(uniform ? SlcDetailNode::AUniform() : SlcDetailNode::AVarying(),
               MakeShared<SlcCheckValidArrayIndexICode>(ident->GetName(), index, Length(array),
                                                        node->GetNoLine(), node->GetFileParsed()));
}

void SlcGenInterCode::GenElementRead(SlcArrayRefExprNode* node, const SlcOperand& array,
                                     const SlcOperand& index)
{
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    const SlcOperand copy = GetResultVar(node, ElementType(array), varying);
    AddBeginBlock(varying);
    const SlcOperand ref = GenElementRef(array, index, varying);
    AddICode(MakeShared<SlcAssignICode>(copy, ref));
    AddEndBlock(varying);
    if (!(copy == SlcPossibleTypes::Of(node)->GetOperandHint()))
        RememberCopy(copy, array, index);
    Push(copy);
}

void SlcGenInterCode::RememberCopy(const SlcOperand& copy, const SlcOperand& array,
                                   const SlcOperand& index)
{
    m_elementCopies.push_back({copy, array, index, m_list->m_icodes.size()});
}

void SlcGenInterCode::WriteBackElement(const SlcOperand& argument)
{
    const auto found =
        std::find_if(m_elementCopies.rbegin(), m_elementCopies.rend(),
                     [&](const ElementCopy& element) { return element.copy == argument; });
    if (found == m_elementCopies.rend())
        return;
    const SlcOperand array = found->array;
    const SlcOperand index =
        WrittenSince(found->index, found->mark) ? CopyAt(found->index, found->mark) : found->index;
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    AddBeginBlock(varying);
    const SlcOperand ref = GenElementRef(array, index, varying);
    AddICode(MakeShared<SlcAssignICode>(ref, argument));
    AddEndBlock(varying);
}

void SlcGenInterCode::GenArrayInit(const SlcOperand& array, SlcDetailNode* detail,
                                   std::size_t valuesBefore)
{
    if (m_values.size() == valuesBefore + 1 && m_values.back().operand->GetType()->IsArrayType()) {
        GenArrayCopy(array, PopReference());
        return;
    }
    while (m_values.size() > valuesBefore) {
        const SlcOperand value = Pop();
        const auto place = static_cast<double>(m_values.size() - valuesBefore);
        GenPlainAssignment(GenElementRef(array, SlcLexType::Float(place), detail), value);
    }
}

void SlcGenInterCode::GenArrayFill(const SlcOperand& array, const SlcOperand& value)
{
    for (int i = 0; i < Length(array); ++i)
        GenPlainAssignment(GenElementRef(array, SlcLexType::Float(i), array->GetDetail()), value);
}

void SlcGenInterCode::GenArrayCopy(const SlcOperand& array, const SlcOperand& source)
{
    const int length = std::min(Length(array), Length(source));
    for (int i = 0; i < length; ++i) {
        const SlcOperand index = SlcLexType::Float(i);
        const SlcOperand from = GenElementRef(source, index, source->GetDetail());
        GenPlainAssignment(GenElementRef(array, index, array->GetDetail()), from);
    }
}

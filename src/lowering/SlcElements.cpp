// Lowering of arrays and their elements.
//
//     w[i] with a uniform i:   R = &w[i]; ... R ...         R is used for reads and writes
//     w[i] with a varying i:   { R = &w[i]; T = R }         a read; after f(w[i]), which writes T:
//                              { R = &w[i]; R = T }
//
// The write-back uses the index of the read, since the call may have changed the variable i. Tested
// by tests/lowering/SlcElementsTest.cpp.

#include "lowering/SlcElements.h"

#include <algorithm>

#include "frontend/SlcSyntaxNode.h"
#include "icode/SlcArrayICode.h"
#include "icode/SlcAssignICode.h"

namespace {

int Length(const SlcOperand& array)
{
    return static_cast<SlcArrayTypeNode*>(array->GetType())->GetLength();
}

}  // namespace

SlcTypeNode* SlcElements::ElementType(const SlcOperand& array)
{
    return static_cast<SlcArrayTypeNode*>(array->GetType())->GetElementType();
}

SlcTypeNode* SlcElements::ValueType(const SlcOperand& operand)
{
    SlcTypeNode* type = operand->GetType();
    return type->IsArrayRefType() ? static_cast<SlcArrayRefTypeNode*>(type)->GetElementType()
                                  : type;
}

SlcOperand SlcElements::GenElementRef(const SlcOperand& array, const SlcOperand& index,
                                      const SlcDetailNode* detail)
{
    const SlcOperand ref = MakeElementRef(array, detail);
    m_list.AddICode(MakeShared<SlcArrayRefICode>(ref, array, index));
    return ref;
}

/// Makes only the reference variable; the caller adds the instruction that binds it to an element.
SlcOperand SlcElements::MakeElementRef(const SlcOperand& array, const SlcDetailNode* detail)
{
    SlcDetailNode* refDetail =
        detail->IsUniform() ? SlcDetailNode::AUniform() : SlcDetailNode::AVarying();
    SlcOperand ref =
        m_list.GenTempVar(SlcTypeNode::CreateArrayRefType(ElementType(array)), refDetail);
    m_values.NoteReference(ref, array);
    return ref;
}

void SlcElements::GenIndexCheck(const SlcSyntaxNode* node, const std::string& arrayName,
                                const SlcOperand& array, const SlcOperand& index)
{
    if (!m_options.m_checkArrayBounds)
        return;
    m_conditions.AddInBlock(
        SlcConditions::UniformIfAll({array, index}),
        MakeShared<SlcCheckValidArrayIndexICode>(arrayName, index, Length(array), node->GetNoLine(),
                                                 node->GetFileParsed()));
}

void SlcElements::GenElementRead(const SlcOperand& copy, const SlcOperand& array,
                                 const SlcOperand& index)
{
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    m_conditions.AddBeginBlock(varying);
    const SlcOperand ref = GenElementRef(array, index, varying);
    m_list.AddICode(MakeShared<SlcAssignICode>(copy, ref));
    m_conditions.AddEndBlock(varying);
}

void SlcElements::RememberCopy(const SlcOperand& copy, const SlcOperand& array,
                               const SlcOperand& index)
{
    m_copies.push_back({copy, array, index, m_list.Place()});
}

void SlcElements::WriteBackElement(const SlcOperand& argument)
{
    const auto found =
        std::find_if(m_copies.rbegin(), m_copies.rend(),
                     [&](const ElementCopy& element) { return element.copy == argument; });
    if (found == m_copies.rend())
        return;
    const SlcOperand index = m_values.AsOf(found->index, found->mark);
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    m_conditions.AddBeginBlock(varying);
    const SlcOperand ref = GenElementRef(found->array, index, varying);
    m_list.AddICode(MakeShared<SlcAssignICode>(ref, argument));
    m_conditions.AddEndBlock(varying);
}

void SlcElements::GenArrayInit(const SlcOperand& array, std::size_t valuesBefore)
{
    if (m_values.Size() == valuesBefore + 1 && m_values.Last()->GetType()->IsArrayType()) {
        GenArrayCopy(array, m_values.PopReference());
        return;
    }
    while (m_values.Size() > valuesBefore) {
        const SlcOperand value = m_values.Pop();
        // Values are popped from the last element to the first.
        const auto place = static_cast<double>(m_values.Size() - valuesBefore);
        m_conditions.GenPlainAssignment(
            GenElementRef(array, SlcLexType::Float(place), array->GetDetail()), value);
    }
}

SlcOperand SlcElements::GenArrayValue(const std::deque<SlcOperand>& elements, SlcTypeNode* type)
{
    SlcDetailNode* detail = SlcConditions::UniformIfAll(elements);
    const SlcOperand array = m_list.GenTempVar(type, detail);
    // One reference suffices for all elements, since they are assigned one after another.
    const SlcOperand ref = MakeElementRef(array, detail);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const SlcOperand index = SlcLexType::Float(static_cast<double>(i));
        m_list.AddICode(MakeShared<SlcArrayRefICode>(ref, array, index));
        m_conditions.GenPlainAssignment(ref, elements[i]);
    }
    return array;
}

void SlcElements::GenArrayFill(const SlcOperand& array, const SlcOperand& value)
{
    for (int i = 0; i < Length(array); ++i)
        m_conditions.GenPlainAssignment(
            GenElementRef(array, SlcLexType::Float(i), array->GetDetail()), value);
}

void SlcElements::GenArrayCopy(const SlcOperand& array, const SlcOperand& source)
{
    const int length = std::min(Length(array), Length(source));
    for (int i = 0; i < length; ++i) {
        const SlcOperand index = SlcLexType::Float(i);
        const SlcOperand from = GenElementRef(source, index, source->GetDetail());
        m_conditions.GenPlainAssignment(GenElementRef(array, index, array->GetDetail()), from);
    }
}

// Pops each value as it was at the time of its push.
//
//     y = x + (x = 2)        push x; [x = 2]; push x; pop, pop
// becomes
//     T = x; x = 2; y = T + x
//
// Each value records the length of the list when it was pushed. When a value that can change is
// popped, the stack checks whether later code has written it. Writes are recorded only then, since
// most values are temporaries and constants, which are never written while they are on the stack.
// Each instruction is scanned only once. Tested by tests/lowering/SlcValueStackTest.cpp.

#include "lowering/SlcValueStack.h"

#include <algorithm>

#include "icode/SlcAssignICode.h"
#include "icode/SlcOperandWalker.h"

namespace {

/// The names of temporaries end in an underscore, those of declared locals in a number. A temporary
/// is never assigned while its value is on the stack.
bool IsTemporary(const SlcLexType& operand)
{
    return operand.GetStorage()->IsLocal() && operand.IsIdent() && operand.GetName().back() == '_';
}

/// True for a value that may be overwritten before it is read: a variable, or a reference into an
/// array. False for a whole array, since arrays are passed only by reference.
bool CanChange(const SlcLexType& operand)
{
    if (operand.IsConst())
        return false;
    const SlcTypeNode* type = operand.GetType();
    return type->IsArrayRefType() || (!type->IsArrayType() && !IsTemporary(operand));
}

/// Records the variables and references that an instruction writes, and the arrays of these
/// references, with the index after the instruction. Ignores temporaries that are not references.
class NoteWritesOf : public SlcOperandWalker {
public:
    NoteWritesOf(std::unordered_map<const SlcLexType*, std::size_t>& writes,
                 const std::unordered_map<const SlcLexType*, SlcOperand>& arrayOfRef)
        : m_writes(writes),
          m_arrayOfRef(arrayOfRef)
    {
    }
    void Visit(const SlcPtr<SlcICode>& code, std::size_t place)
    {
        m_place = place;
        SlcOperandWalker::Visit(code);
    }

private:
    using SlcOperandWalker::Case;
    // Making a reference does not write the element.
    void Case(SlcPtr<SlcArrayRefICode>) override {}
    void Read(SlcOperand&) override {}
    void Write(SlcOperand& operand) override
    {
        if (IsTemporary(*operand) && !operand->GetType()->IsArrayRefType())
            return;
        m_writes[&*operand] = m_place;
        const auto array = m_arrayOfRef.find(&*operand);
        if (array != m_arrayOfRef.end())
            m_writes[&*array->second] = m_place;
    }

    std::unordered_map<const SlcLexType*, std::size_t>& m_writes;
    const std::unordered_map<const SlcLexType*, SlcOperand>& m_arrayOfRef;
    std::size_t m_place = 0;
};

}  // namespace

void SlcValueStack::Start()
{
    m_values.clear();
    m_lateCopies.clear();
    m_arrayOfRef = {};
    ForgetWrites();
}

void SlcValueStack::Push(SlcOperand value)
{
    m_values.push_back({std::move(value), m_list.Place()});
}

SlcOperand SlcValueStack::Pop()
{
    const std::size_t mark = m_values.back().mark;
    return AsOf(PopReference(), mark);
}

SlcOperand SlcValueStack::PopReference()
{
    SlcOperand operand = std::move(m_values.back().operand);
    m_values.pop_back();
    return operand;
}

SlcOperand SlcValueStack::AsOf(const SlcOperand& operand, std::size_t mark)
{
    return WrittenSince(operand, mark) ? CopyAt(operand, mark) : operand;
}

void SlcValueStack::NoteReference(const SlcOperand& ref, const SlcOperand& array)
{
    m_arrayOfRef[&*ref] = array;
}

SlcOperand SlcValueStack::VariableOf(const SlcOperand& operand) const
{
    const auto array = m_arrayOfRef.find(&*operand);
    return array == m_arrayOfRef.end() ? operand : array->second;
}

bool SlcValueStack::WrittenSince(const SlcOperand& operand, std::size_t mark)
{
    if (mark == m_list.Place() || !CanChange(*operand))
        return false;
    NoteWrites();
    const auto write = m_lastWrites.find(&*VariableOf(operand));
    return write != m_lastWrites.end() && write->second > mark;
}

void SlcValueStack::NoteWrites()
{
    const auto& codes = m_list.Codes();
    NoteWritesOf note(m_lastWrites, m_arrayOfRef);
    for (; m_noted < codes.size(); ++m_noted)
        note.Visit(codes[m_noted], m_noted + 1);
}

/// The copy must precede code that is already in the list; it is inserted later, with all other
/// copies.
SlcOperand SlcValueStack::CopyAt(const SlcOperand& operand, std::size_t mark)
{
    SlcTypeNode* type = operand->GetType();
    if (type->IsArrayRefType())
        type = static_cast<SlcArrayRefTypeNode*>(type)->GetElementType();
    // Not from the pool: a function expanded after the mark may already have used that temporary.
    SlcOperand copy = m_list.MakeTempVar(type, operand->GetDetail());

    auto& codes = m_list.Codes();
    const auto end = static_cast<std::ptrdiff_t>(codes.size());
    m_conditions.AddInBlock(operand->GetDetail(), MakeShared<SlcAssignICode>(copy, operand));
    m_lateCopies.push_back({mark, {codes.begin() + end, codes.end()}});
    codes.erase(codes.begin() + end, codes.end());
    return copy;
}

/// Inserts all copies in one pass, since each single insertion would move all later instructions.
void SlcValueStack::InsertLateCopies()
{
    if (m_lateCopies.empty())
        return;
    std::stable_sort(m_lateCopies.begin(), m_lateCopies.end(),
                     [](const LateCopy& a, const LateCopy& b) { return a.mark < b.mark; });
    auto& codes = m_list.Codes();
    std::size_t place = m_lateCopies.front().mark;
    const auto first = codes.begin() + static_cast<std::ptrdiff_t>(place);
    const std::vector<SlcPtr<SlcICode>> rest(first, codes.end());
    codes.erase(first, codes.end());
    auto next = rest.begin();
    for (const LateCopy& copy : m_lateCopies) {
        for (; place < copy.mark; ++place)
            codes.push_back(*next++);
        codes.insert(codes.end(), copy.codes.begin(), copy.codes.end());
    }
    codes.insert(codes.end(), next, rest.end());
    m_lateCopies.clear();
}

void SlcValueStack::ForgetWrites()
{
    InsertLateCopies();
    m_noted = m_list.Place();
    // Clearing a map costs time for all its buckets, and one long statement leaves many.
    if (!m_lastWrites.empty())
        m_lastWrites = {};
}

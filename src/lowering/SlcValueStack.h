#pragma once

#include <deque>
#include <unordered_map>
#include <vector>

#include "lowering/SlcConditions.h"

/// The operands that expressions have left for their parents, each as it was when it was pushed.
///
/// An operand is the variable itself, not its value: in `x + (x = 2)` the left side's is written
/// before the sum reads it. Who pops it then gets a copy, made in front of the write.
class SlcValueStack {
public:
    /// Both outlive it.
    SlcValueStack(SlcListBuilder& list, SlcConditions& conditions)
        : m_list(list),
          m_conditions(conditions)
    {
    }

    /// With a new list.
    void Start();
    /// Leaves a value for the parent, as it is at this place of the list.
    void Push(SlcOperand value);
    /// The last value as it was when it was pushed. Costs next to nothing for temporaries and
    /// constants; for a variable, the instructions since the last look at it.
    [[nodiscard]] SlcOperand Pop();
    /// The last value for one who writes to it, such as an output argument: never a copy.
    [[nodiscard]] SlcOperand PopReference();
    /// The last value, which stays.
    [[nodiscard]] const SlcOperand& Last() const { return m_values.back().operand; }
    [[nodiscard]] std::size_t Size() const { return m_values.size(); }
    [[nodiscard]] bool IsEmpty() const { return m_values.empty(); }

    /// `operand` as it was at the place `mark` of the list, which lies behind the last
    /// `ForgetWrites`: a copy if it has been written since.
    [[nodiscard]] SlcOperand AsOf(const SlcOperand& operand, std::size_t mark);
    /// The reference `ref` has been made for elements of `array`: to write it is to write the
    /// array.
    void NoteReference(const SlcOperand& ref, const SlcOperand& array);
    /// The array of a reference to an element; any other operand is its own variable.
    [[nodiscard]] SlcOperand VariableOf(const SlcOperand& operand) const;

    /// No value or mark is waiting any more: copies go into the list, beside which they have stood
    /// so that no place in it moved. References are remembered, since the formal of a function that
    /// is being expanded may be one.
    void ForgetWrites();

private:
    struct Value {
        SlcOperand operand;
        std::size_t mark;  // length of the list when it was pushed
    };
    /// Code that takes a copy of a value in time, with its place in the list as it is.
    struct LateCopy {
        std::size_t mark;
        std::vector<SlcPtr<SlcICode>> codes;
    };

    /// Code behind `mark` writes the operand, or the array that it refers to.
    [[nodiscard]] bool WrittenSince(const SlcOperand& operand, std::size_t mark);
    /// A copy of the operand, made at the place `mark`.
    [[nodiscard]] SlcOperand CopyAt(const SlcOperand& operand, std::size_t mark);
    /// Of all code since the last look.
    void NoteWrites();
    /// Puts the copies into the list, each at its place.
    void InsertLateCopies();

    SlcListBuilder& m_list;
    SlcConditions& m_conditions;
    std::vector<Value> m_values;
    std::vector<LateCopy> m_lateCopies;  // not yet in the list
    // By operand, the place in the list behind its last write, for all code up to `m_noted`.
    std::unordered_map<const SlcLexType*, std::size_t> m_lastWrites;
    std::size_t m_noted = 0;
    std::unordered_map<const SlcLexType*, SlcOperand> m_arrayOfRef;  // of element references
};

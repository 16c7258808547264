#pragma once

#include <deque>
#include <unordered_map>
#include <vector>

#include "lowering/SlcConditions.h"

/// The stack of operands that expressions leave for their parents. `Pop` returns the value at the
/// time of the push.
///
/// An operand is a variable, not its value: in `x + (x = 2)` the variable on the left side is
/// written before the sum reads it. Popping it then returns a copy that is made before the write.
class SlcValueStack {
public:
    /// Both must outlive this object.
    SlcValueStack(SlcListBuilder& list, SlcConditions& conditions)
        : m_list(list),
          m_conditions(conditions)
    {
    }

    /// Call it for each new list.
    void Start();
    /// Pushes a value as of the current end of the list.
    void Push(SlcOperand value);
    /// Pops the last value as it was when it was pushed; a whole array as it is now. Constant time
    /// for temporaries, constants and whole arrays; otherwise at most linear in the instructions
    /// since the last scan for writes.
    [[nodiscard]] SlcOperand Pop();
    /// Pops the last value for writing, such as an output argument: never returns a copy.
    [[nodiscard]] SlcOperand PopReference();
    /// Returns the last value, which stays on the stack.
    [[nodiscard]] const SlcOperand& Last() const { return m_values.back().operand; }
    [[nodiscard]] std::size_t Size() const { return m_values.size(); }
    [[nodiscard]] bool IsEmpty() const { return m_values.empty(); }

    /// Returns `operand` as it was when the list had the length `mark`: a copy if the operand has
    /// been written since. `ForgetWrites` must not have been called since.
    [[nodiscard]] SlcOperand AsOf(const SlcOperand& operand, std::size_t mark);
    /// Notes that `ref` refers to elements of `array`, so that a write to `ref` counts as a write
    /// to the array.
    void NoteReference(const SlcOperand& ref, const SlcOperand& array);
    /// Returns the array that a reference refers to; for other operands, the operand itself.
    [[nodiscard]] SlcOperand VariableOf(const SlcOperand& operand) const;

    /// Forgets the recorded writes, and inserts the code of the copies that `Pop` and `AsOf` have
    /// returned into the list. Call it only when no value or mark is pending, since the insertion
    /// changes indices. The records of `NoteReference` are kept, since the formal of a function
    /// being expanded may be a reference.
    void ForgetWrites();

private:
    struct Value {
        SlcOperand operand;
        std::size_t mark;  // length of the list when it was pushed
    };
    /// Code that copies a value before it is overwritten, with its index in the list.
    struct LateCopy {
        std::size_t mark;
        std::vector<SlcPtr<SlcICode>> codes;
    };

    /// True if code after `mark` writes the operand or, for a reference, any element of its array.
    /// False for constants, temporaries and whole arrays, which are not copied.
    [[nodiscard]] bool WrittenSince(const SlcOperand& operand, std::size_t mark);
    /// Returns a copy of the operand, which `InsertLateCopies` will insert at the index `mark`.
    [[nodiscard]] SlcOperand CopyAt(const SlcOperand& operand, std::size_t mark);
    /// Records the writes of all code since the last call.
    void NoteWrites();
    /// Inserts the copies into the list, each at its index.
    void InsertLateCopies();

    SlcListBuilder& m_list;
    SlcConditions& m_conditions;
    std::vector<Value> m_values;
    std::vector<LateCopy> m_lateCopies;  // not yet in the list
    // By operand: the index after its last write, for all code up to `m_noted`.
    std::unordered_map<const SlcLexType*, std::size_t> m_lastWrites;
    std::size_t m_noted = 0;
    std::unordered_map<const SlcLexType*, SlcOperand> m_arrayOfRef;  // of element references
};

#pragma once

#include <deque>
#include <string>
#include <vector>

#include "lowering/SlcValueStack.h"

class SlcSyntaxNode;

/// Lowers accesses to array elements (references, bounds checks, and copies that are written back)
/// and operations on whole arrays.
///
/// With a varying index, a reference differs from point to point and is valid only in the block
/// that contains it, so it must be in the same block as its access. A read copies the element to a
/// temporary or to the target of the enclosing assignment. If the temporary is an output argument
/// of a call, it is written back to the array after the call.
class SlcElements {
public:
    /// All must outlive this object.
    SlcElements(SlcListBuilder& list, SlcConditions& conditions, SlcValueStack& values,
                const SlcOptionsControl& options)
        : m_list(list),
          m_conditions(conditions),
          m_values(values),
          m_options(options)
    {
    }

    /// Makes a new reference to the element at the current `index` of `array`. Adds the instruction
    /// to the open block, or outside blocks if none is open; with a varying index a block must be
    /// open, since the reference is valid only there. `detail` is the detail of the element:
    /// varying if the index is varying, otherwise that of the array.
    [[nodiscard]] SlcOperand GenElementRef(const SlcOperand& array, const SlcOperand& index,
                                           const SlcDetailNode* detail);
    /// Emits a bounds check if the options require checks; `node` is the position for its report.
    /// The check has a separate block, so call this before opening the block of the access.
    void GenIndexCheck(const SlcSyntaxNode* node, const std::string& arrayName,
                       const SlcOperand& array, const SlcOperand& index);
    /// Copies the element at the varying `index` to `copy`, in a separate block.
    void GenElementRead(const SlcOperand& copy, const SlcOperand& array, const SlcOperand& index);

    /// Records that `copy` holds the element, so that it can be written back. Keeps the current
    /// value of `index`, since a call may change the variable.
    void RememberCopy(const SlcOperand& copy, const SlcOperand& array, const SlcOperand& index);
    /// If `argument` is a remembered copy, assigns it to its element; otherwise does nothing. Call
    /// it after each call, for each output argument.
    void WriteBackElement(const SlcOperand& argument);
    /// Returns the number of remembered copies; pass it to `ForgetCopies` to drop those made since.
    [[nodiscard]] std::size_t CountCopies() const { return m_copies.size(); }
    void ForgetCopies(std::size_t kept) { m_copies.resize(kept); }

    // Whole arrays.
    /// Initializes `array` with the values on the stack above the lowest `valuesBefore`, and pops
    /// them: an array, or one value per element.
    void GenArrayInit(const SlcOperand& array, std::size_t valuesBefore);
    /// Makes a new array of `type` with these elements.
    [[nodiscard]] SlcOperand GenArrayValue(const std::deque<SlcOperand>& elements,
                                           SlcTypeNode* type);
    /// Copies element by element, up to the length of the shorter array.
    void GenArrayCopy(const SlcOperand& array, const SlcOperand& source);
    /// Assigns `value` to all elements.
    void GenArrayFill(const SlcOperand& array, const SlcOperand& value);

    /// Returns the type of a value; for a reference, the type of the element.
    [[nodiscard]] static SlcTypeNode* ValueType(const SlcOperand& operand);
    /// Returns the element type of an array.
    [[nodiscard]] static SlcTypeNode* ElementType(const SlcOperand& array);

private:
    /// A temporary copy of an element whose index varies.
    struct ElementCopy {
        SlcOperand copy;
        SlcOperand array;
        SlcOperand index;
        std::size_t mark;  // length of the list when the copy was remembered
    };

    [[nodiscard]] SlcOperand MakeElementRef(const SlcOperand& array, const SlcDetailNode* detail);

    SlcListBuilder& m_list;
    SlcConditions& m_conditions;
    SlcValueStack& m_values;
    const SlcOptionsControl& m_options;
    std::vector<ElementCopy> m_copies;  // of the statements being lowered
};

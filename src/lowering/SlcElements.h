#pragma once

#include <deque>
#include <string>
#include <vector>

#include "lowering/SlcValueStack.h"

class SlcSyntaxNode;

/// Elements of arrays as operands: references, index checks, and copies that are written back.
///
/// One reference cannot serve all points if the index varies: it stands in one block with its
/// access. A read copies the element into a temporary; who writes to such a copy, as a call with
/// an output argument does, writes it back afterwards.
class SlcElements {
public:
    SlcElements(SlcListBuilder& list, SlcConditions& conditions, SlcValueStack& values,
                const SlcOptionsControl& options)
        : m_list(list),
          m_conditions(conditions),
          m_values(values),
          m_options(options)
    {
    }

    /// A new reference to the element at `index` of `array`, both as they are now. Adds its
    /// instruction outside of blocks, or to the one that is open; a varying one needs that, since
    /// it holds only there. `detail` is that of the element: of the array, or varying if the index
    /// is.
    [[nodiscard]] SlcOperand GenElementRef(const SlcOperand& array, const SlcOperand& index,
                                           const SlcDetailNode* detail);
    /// If that is asked for; `node` is where the report is to stand. In a block of its own, so call
    /// it in front of the block of the access.
    void GenIndexCheck(const SlcSyntaxNode* node, const std::string& arrayName,
                       const SlcOperand& array, const SlcOperand& index);
    /// copy = the element at the varying `index`.
    void GenElementRead(const SlcOperand& copy, const SlcOperand& array, const SlcOperand& index);

    /// `copy` holds the element, for who may write to it. `index` is kept as it is at this place of
    /// the list, for a call may change the variable that it came from.
    void RememberCopy(const SlcOperand& copy, const SlcOperand& array, const SlcOperand& index);
    /// After each call, for each output argument: does nothing unless `argument` is such a copy.
    void WriteBackElement(const SlcOperand& argument);
    /// Those that are remembered; who began with fewer forgets the rest.
    [[nodiscard]] std::size_t CountCopies() const { return m_copies.size(); }
    void ForgetCopies(std::size_t kept) { m_copies.resize(kept); }

    // Whole arrays.
    /// Takes the values above the lowest `valuesBefore` from the stack: an array, or one value for
    /// each element.
    void GenArrayInit(const SlcOperand& array, std::size_t valuesBefore);
    /// A new array of `type` with these elements.
    [[nodiscard]] SlcOperand GenArrayValue(const std::deque<SlcOperand>& elements,
                                           SlcTypeNode* type);
    /// Element by element, as many as the shorter one has.
    void GenArrayCopy(const SlcOperand& array, const SlcOperand& source);
    /// One value for all elements.
    void GenArrayFill(const SlcOperand& array, const SlcOperand& value);

    /// The type of a value; that of the element for a reference.
    [[nodiscard]] static SlcTypeNode* ValueType(const SlcOperand& operand);
    /// Of the elements of an array.
    [[nodiscard]] static SlcTypeNode* ElementType(const SlcOperand& array);

private:
    /// A temporary that stands for an element whose index varies.
    struct ElementCopy {
        SlcOperand copy;
        SlcOperand array;
        SlcOperand index;
        std::size_t mark;  // length of the list when the index was read
    };

    [[nodiscard]] SlcOperand MakeElementRef(const SlcOperand& array, const SlcDetailNode* detail);

    SlcListBuilder& m_list;
    SlcConditions& m_conditions;
    SlcValueStack& m_values;
    const SlcOptionsControl& m_options;
    std::vector<ElementCopy> m_copies;  // of the statements being lowered
};

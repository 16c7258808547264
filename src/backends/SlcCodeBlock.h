#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "icode/SlcJumpICode.h"
#include "icode/SlcLexType.h"
#include "sqx/SqxPrimitive.h"

/// One code block: 16-bit values, the positions of its labels, and the jumps whose labels have no
/// position yet.
///
/// A value that does not fit into 16 bits is reported, once per kind of value even across blocks;
/// the code is then invalid.
class SlcCodeBlock {
public:
    using Report = std::function<void(std::string_view text)>;

    /// `report` gets the text of each report; an arbitrary value replaces the one at fault.
    explicit SlcCodeBlock(Report report) : m_report(std::move(report)) {}

    /// Removes the contents, to begin another block.
    void Reset();

    void AddInstrNumber(short number) { m_values.push_back(number); }
    /// Adds the number of the instruction with this name. A name without a number is fatal.
    void AddInstr(std::string_view name);
    /// Adds a form of a primitive. A form without a number is a fault of the compiler, and fatal.
    void AddInstr(SqxPrimitive primitive, SqxForm form = SqxForm::Plain);
    /// Adds a literal, -1 or not negative. `what` names it in the report if it does not fit.
    void AddConst(int value, std::string_view what);
    /// Adds the number of a variable or constant; reports one that no section of the file has
    /// declared.
    void AddVar(const SlcOperand& operand);
    /// Adds each of the operands; `AddVarIfSet` adds nothing for a null operand.
    void AddVars(const std::deque<SlcOperand>& operands);
    void AddVarIfSet(const SlcOperand& operand);
    /// Adds the position of a label, which may be placed later.
    void AddGotoLabel(const SlcLabel& label);
    /// Places the label, which must outlive the block, at the current position.
    void AddLabelRef(const SlcLabel& label);

    /// Fills in the forward jumps; call it after all labels have been placed. Returns the name of
    /// the first label that a jump refers to but that was not placed; empty if there is none.
    [[nodiscard]] std::string ResolveUnknownLabels();
    [[nodiscard]] const std::vector<std::int16_t>& Values() const { return m_values; }

private:
    struct Label {
        const SlcLabelICode* label;
        std::size_t position;
    };

    /// True if the label has been placed in this block.
    [[nodiscard]] bool IsKnown(const SlcLabelICode& label) const;
    /// Returns the position of a known label as a value.
    [[nodiscard]] std::int16_t JumpTo(const SlcLabelICode& label);
    void ReportUnnumbered(const SlcOperand& operand);
    /// Returns `value` as a 16-bit number; reports one that does not fit.
    [[nodiscard]] std::int16_t Fit(std::size_t value, std::string_view what);

    Report m_report;
    std::vector<std::int16_t> m_values;
    std::vector<Label> m_labels;  // indexed by the `m_place` of the label
    std::vector<std::pair<SlcLabel, std::size_t>> m_unknownLabels;  // label, gap of forward jumps
    std::set<std::string, std::less<>> m_reported;                  // kinds that did not fit
};

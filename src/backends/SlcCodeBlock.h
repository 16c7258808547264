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

/// One code block: 16-bit values, and the jumps that wait for their labels.
///
/// Values that do not fit into 16 bits are reported, once for each kind of value also when other
/// blocks follow; the value is then worth nothing.
class SlcCodeBlock {
public:
    using Report = std::function<void(std::string_view text)>;

    /// `report` is called for each fault; the block goes on with some value.
    explicit SlcCodeBlock(Report report) : m_report(std::move(report)) {}

    /// Begins another block.
    void Reset();

    void AddInstrNumber(short number) { m_values.push_back(number); }
    /// The name of a primitive or of another instruction that has a number.
    void AddInstr(std::string_view name);
    /// A form without a number is a fault of the compiler, and fatal.
    void AddInstr(SqxPrimitive primitive, SqxForm form = SqxForm::Plain);
    /// A literal. `what` names it in the report if it does not fit.
    void AddConst(int value, std::string_view what);
    /// The number of a variable or constant, which some section of the file has declared.
    void AddVar(const SlcOperand& operand);
    /// The next two: of each in turn, and nothing for a null operand.
    void AddVars(const std::deque<SlcOperand>& operands);
    void AddVarIfSet(const SlcOperand& operand);
    /// The place of a label, which may still be to come.
    void AddGotoLabel(const SlcLabel& label);
    /// Places the label, which must outlive the block, here.
    void AddLabelRef(const SlcLabel& label);

    /// Fills the jumps ahead, once all labels have been added. Gives the name of a label that has
    /// not; empty if there is none.
    [[nodiscard]] std::string ResolveUnknownLabels();
    [[nodiscard]] const std::vector<std::int16_t>& Values() const { return m_values; }

private:
    struct Label {
        const SlcLabelICode* label;
        std::size_t position;
    };

    /// The block has come to the label.
    [[nodiscard]] bool IsKnown(const SlcLabelICode& label) const;
    /// The place of a known label as a value.
    [[nodiscard]] std::int16_t JumpTo(const SlcLabelICode& label);
    void ReportUnnumbered(const SlcOperand& operand);
    /// `value` as a 16-bit number; reports one that does not fit.
    [[nodiscard]] std::int16_t Fit(std::size_t value, std::string_view what);

    Report m_report;
    std::vector<std::int16_t> m_values;
    std::vector<Label> m_labels;  // their `m_place` says which one
    std::vector<std::pair<SlcLabel, std::size_t>> m_unknownLabels;  // jumps ahead, by position
    std::set<std::string, std::less<>> m_reported;                  // kinds that did not fit
};

#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "icode/SlcICodeNames.h"
#include "icode/SlcListICode.h"
#include "icode/SlcOperandWalker.h"

/// Checks the invariants of a list of instructions, which hold after the lowering and after every
/// pass:
///
/// - parallel runs do not nest, guards nest, a guard that opens in a run closes in it, and all
///   brackets close;
/// - labels and jumps are outside runs, each label occurs once, and the target of every jump is in
///   the list;
/// - whole-grid instructions are outside runs; other instructions that only compute a varying value
///   are inside;
/// - in a list that has just been lowered, a temporary is written before it is read, in textual
///   order, which is also the order on every path; optimized lists are not checked for this, since
///   folding removes writes that no point would execute;
/// - flags are booleans, jumps and guards outside runs test uniform flags, and of the instructions
///   that only compute a value, only an assignment or `any` turns a varying value into a uniform
///   one.
class SlcICodeValidator : private SlcOperandWalker {
public:
    enum class Stage { Lowered, Optimized };

    /// Returns the text of the first instruction of `list` that violates a rule, and what is wrong;
    /// empty if there is none. If a bracket is not closed, "the end" replaces the instruction.
    /// O(n log n) for n instructions.
    [[nodiscard]] static std::string FirstFault(const SlcListICode& list, Stage stage);
    /// Ends the compile with a fatal report if the list violates a rule.
    static void Require(const SlcListICode& list, Stage stage);

private:
    SlcICodeValidator(const SlcListICode& list, Stage stage);

    using SlcOperandWalker::Case;
    void Read(SlcOperand& operand) override;
    void Write(SlcOperand& operand) override;
    void Case(SlcPtr<SlcBeginParallelICode> code) override;
    void Case(SlcPtr<SlcEndParallelICode> code) override;
    void Case(SlcPtr<SlcIfICode> code) override;
    void Case(SlcPtr<SlcEndIfICode> code) override;
    void Case(SlcPtr<SlcLabelICode> code) override;
    void Case(SlcPtr<SlcGotoICode> code) override;
    void Case(SlcPtr<SlcIfTrueGotoICode> code) override;
    void Case(SlcPtr<SlcIfFalseGotoICode> code) override;
    void Case(SlcPtr<SlcBeginIlluminanceICode> code) override;
    void Case(SlcPtr<SlcEndIlluminanceICode> code) override;
    void Case(SlcPtr<SlcSetUniformBoolFlagICode> code) override;
    void Case(SlcPtr<SlcAssignICode> code) override;
    void Case(SlcPtr<SlcOrBoolFlagICode> code) override;
    void Case(SlcPtr<SlcArrayRefICode> code) override;
    void Case(SlcPtr<SlcCallICode> code) override { CheckForm(code); }
    void Case(SlcPtr<SlcTransformSpaceICode> code) override { CheckForm(code); }
    void Case(SlcPtr<SlcIlluminateICode> code) override { CheckForm(code); }
    void Case(SlcPtr<SlcSolarICode> code) override { CheckForm(code); }
    void Case(SlcPtr<SlcCheckIlluminanceICode> code) override { CheckForm(code); }
    template <class Code>
    void CheckForm(const SlcPtr<Code>& code);

    void Check(SlcPtr<SlcICode> code);
    void CheckPlace(const SlcICode& code);
    void CheckFlag(const SlcOperand& flag, bool mustBeUniform);
    void CheckTarget(const SlcLabel& label);
    void Fail(const char* rule);

    const Stage m_stage;
    std::map<std::string, int> m_labels;    // how often each is in the list
    std::set<const SlcLexType*> m_written;  // operands, so far
    std::vector<std::string> m_guards;      // labels of the open ones
    std::size_t m_guardsOutside = 0;        // how many of them opened before the current run
    bool m_isInRun = false;
    bool m_isWholeGrid = false;   // the current instruction is a whole-grid instruction
    bool m_readsVarying = false;  // of the current instruction
    bool m_writesVarying = false;
    bool m_writesUniform = false;
    bool m_joinsPoints = false;  // turns a varying value into a uniform one
    const char* m_fault = nullptr;
};

#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "icode/SlcICodeNames.h"
#include "icode/SlcListICode.h"
#include "icode/SlcOperandWalker.h"

/// Checks what every list of instructions keeps, whatever passes have rewritten it:
///
/// - parallel runs do not nest, guards nest, and a guard that opens in a run closes in it;
/// - labels are outside of runs, each once, and jumps name one that is there;
/// - what works on the whole grid is outside of runs, and what computes varying values otherwise is
///   inside;
/// - a temporary of a list that has just been lowered is written before it is read, in the order of
///   the text, which is that of every path; folding then drops writes that no point would do;
/// - flags are booleans, jumps test uniform ones, and nothing but an assignment makes a uniform
///   value of a varying one.
class SlcICodeValidator : private SlcOperandWalker {
public:
    enum class Stage { Lowered, Optimized };

    /// The first instruction of `list` that breaks a rule, as text, with the rule; empty if there
    /// is none. O(n log n).
    [[nodiscard]] static std::string FirstFault(const SlcListICode& list, Stage stage);
    /// Ends the program with a fatal report if there is a fault.
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
    std::set<const SlcLexType*> m_written;  // temporaries, so far
    std::vector<std::string> m_guards;      // labels of those that are open
    std::size_t m_guardsOutside = 0;        // how many of them opened before the present run
    bool m_isInRun = false;
    bool m_isWholeGrid = false;   // the present instruction works on the grid by itself
    bool m_readsVarying = false;  // of the present instruction
    bool m_writesVarying = false;
    bool m_writesUniform = false;
    bool m_joinsPoints = false;  // makes a uniform value of a varying one
    const char* m_fault = nullptr;
};

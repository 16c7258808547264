#pragma once

#include <deque>
#include <vector>

#include "icode/SlcBlockICode.h"
#include "icode/SlcOperandWalker.h"
#include "optimizer/SlcICodeOptimizer.h"

/// Joins adjacent guards of one class with the same flag. Linear.
///
/// A guard is not joined with the next one if its body writes its own flag, since the next guard
/// must test the new value, if its body ends in a `break` or `continue`, or if its body contains a
/// guard or a parallel run.
class SlcRegroupParallelIfs : public SlcICodeOptimizer {
public:
    /// Rewrites `list`; needs no graph.
    void Optimize(SlcPtr<SlcListICode>& list) override;

private:
    using SlcAllICodeWalker::Case;
    void Case(SlcPtr<SlcBeginParallelICode> code) override;
    void Case(SlcPtr<SlcEndParallelICode> code) override;
    void Case(SlcPtr<SlcIfICode> code) override;
    void Case(SlcPtr<SlcEndIfICode> code) override;
    void Case(SlcPtr<SlcBreakICode> code) override;
    void Case(SlcPtr<SlcContinueICode> code) override;
    void Default(SlcPtr<SlcICode> code) override;

    struct Guard {
        SlcPtr<SlcIfICode> code;
        bool flagWritten = false;  // its body writes its flag
    };

    /// Handles the begin or end of a run. A guard around it is not joined with the next guard.
    void CloseAtMark(const SlcPtr<SlcICode>& mark);
    /// True if the next instruction opens a guard that can be joined with the innermost open one.
    [[nodiscard]] bool NextGuardJoins() const;

    std::deque<SlcPtr<SlcICode>> m_output;
    const SlcListICode* m_list = nullptr;
    std::size_t m_position = 0;  // index of the current instruction
    std::vector<Guard> m_open;   // of the current run, the innermost last
    bool m_lastWasJump = false;  // the previous instruction but ends is a `break` or `continue`
};

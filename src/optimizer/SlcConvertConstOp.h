#pragma once

#include <optional>

#include "icode/SlcArithICode.h"
#include "icode/SlcBlockICode.h"
#include "icode/SlcBoolICode.h"
#include "icode/SlcCallICode.h"
#include "icode/SlcListICode.h"

/// Constant folding: replaces operations on constants by assignments and divisions by constants by
/// products, applies identities such as x + 0 and x == x, evaluates calls of foldable built-ins,
/// decides jumps and guards on constant flags, and removes guarded code that can never run.
///
/// Arithmetic and comparisons use the single-precision values of the run time, and each new
/// constant is rounded to single precision. Computed constants that are not finite, and whole
/// numbers that the back ends cannot print exactly, are not folded. Instructions are passed in
/// order, one by one, so that constant propagation can run in the same walk.
class SlcConvertConstOp : public SlcAllICodeWalker {
public:
    /// Folds a whole list in place; true if it changed.
    [[nodiscard]] bool Convert(SlcListICode& list);

    /// Starts a walk over a list.
    void Begin();
    /// Folds the next instruction. Returns it unchanged, or a new instruction, or null to remove
    /// it. If `IsDropping` is then true, the caller must remove the instruction in any case. `code`
    /// itself is not modified.
    [[nodiscard]] SlcPtr<SlcICode> Fold(const SlcPtr<SlcICode>& code);
    /// True if `code`, a replacement that `Fold` has returned, is an assignment other than x = x:
    /// it cannot be folded again, and leaves the flow graph unchanged.
    [[nodiscard]] static bool IsSettled(const SlcICode& code);
    /// True if the instruction last folded opens a guard whose code can never run, or is in it.
    [[nodiscard]] bool IsDropping() const { return m_dropping; }
    /// True if an instruction has been replaced or removed since `Begin`.
    [[nodiscard]] bool HasChanged() const { return m_changed; }

private:
    using SlcAllICodeWalker::Case;
    void Case(SlcPtr<SlcAddICode> code) override;
    void Case(SlcPtr<SlcSubICode> code) override;
    void Case(SlcPtr<SlcMultICode> code) override;
    void Case(SlcPtr<SlcDivICode> code) override;
    void Case(SlcPtr<SlcDotProdICode> code) override;
    void Case(SlcPtr<SlcCrossProdICode> code) override;
    void Case(SlcPtr<SlcUnaryMinusICode> code) override;
    void Case(SlcPtr<SlcLessThenICode> code) override;
    void Case(SlcPtr<SlcLessEqualICode> code) override;
    void Case(SlcPtr<SlcGreaterThenICode> code) override;
    void Case(SlcPtr<SlcGreaterEqualICode> code) override;
    void Case(SlcPtr<SlcEqualICode> code) override;
    void Case(SlcPtr<SlcNotEqualICode> code) override;
    void Case(SlcPtr<SlcIfTrueGotoICode> code) override;
    void Case(SlcPtr<SlcIfFalseGotoICode> code) override;
    void Case(SlcPtr<SlcIfTrueICode> code) override;
    void Case(SlcPtr<SlcIfFalseICode> code) override;
    void Case(SlcPtr<SlcEndIfICode> code) override;
    void Case(SlcPtr<SlcCallICode> code) override;
    void Default(SlcPtr<SlcICode> code) override;

    /// Replaces the current instruction by `code`; null removes it.
    void Replace(SlcPtr<SlcICode> code);
    void ConvertAsAssignment(const SlcOperand& dest, const SlcOperand& source);
    /// Returns false and replaces nothing if the value cannot be folded.
    bool ConvertAsAssignment(const SlcOperand& dest, float value);
    /// Folds a product with a zero factor; true if it did.
    bool FoldZeroFactor(const SlcArithExprICode& code);
    /// Folds a comparison of two float constants; `compare` receives their run-time values.
    template <class Compare>
    void FoldComparison(const SlcPtr<SlcBinOpBoolExprICode>& code, Compare compare);
    /// Folds a jump that is taken if `flag` has the value `jumpsIf`.
    void FoldJump(const SlcPtr<SlcGotoICode>& code, const SlcOperand& flag, bool jumpsIf);
    /// Folds a guard whose code runs if its flag has the value `runsIf`.
    void FoldGuard(const SlcPtr<SlcIfICode>& code, bool runsIf);

    bool m_changed = false;
    int m_ifDepth = 0;        // number of open guards from the folded one inward; 0 outside of it
    bool m_dropping = false;  // in guarded code that can never run
    SlcPtr<SlcICode> m_new;   // replacement of the current instruction; null removes it
};

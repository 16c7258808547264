#pragma once

#include <optional>

#include "icode/SlcArithICode.h"
#include "icode/SlcBlockICode.h"
#include "icode/SlcBoolICode.h"
#include "icode/SlcCallICode.h"
#include "icode/SlcListICode.h"

/// Constant folding: replaces operations on constants by assignments, applies identities with 0
/// and 1, evaluates foldable built-ins, decides jumps and guards on constant flags, and removes
/// the branch that can never run.
///
/// Arithmetic and comparisons see the single-precision values that the run time has, and each
/// constant that is made is rounded to one. What is not finite, and what the writers have too few
/// digits for, stays in the code and is left to run time. Instructions are fed in order, one by
/// one, so that constant propagation can run in the same walk.
class SlcConvertConstOp : public SlcAllICodeWalker {
public:
    /// Folds a whole list in place; true if it changed.
    [[nodiscard]] bool Convert(SlcListICode& list);

    /// Starts a walk over a list.
    void Begin();
    /// What takes the place of the next instruction: the same one, a new one, or null. The
    /// instruction itself is not changed.
    [[nodiscard]] SlcPtr<SlcICode> Fold(const SlcPtr<SlcICode>& code);
    /// The instruction last folded stands in a branch that can never run.
    [[nodiscard]] bool IsDropping() const { return m_dropping; }
    /// Something has been replaced or removed since `Begin`.
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

    /// `code` takes the place of the instruction at hand; null removes it.
    void Replace(SlcPtr<SlcICode> code);
    void ConvertAsAssignment(const SlcOperand& dest, const SlcOperand& source);
    /// False if the value is left to run time; nothing is replaced then.
    bool ConvertAsAssignment(const SlcOperand& dest, float value);
    /// Zero on either side decides; true if it did.
    bool FoldZeroFactor(const SlcArithExprICode& code);
    /// Of two float constants; `compare` takes them as the run time has them.
    template <class Compare>
    void FoldComparison(const SlcPtr<SlcBinOpBoolExprICode>& code, Compare compare);
    /// A jump that is taken if `flag` has the value `jumpsIf`.
    void FoldJump(const SlcPtr<SlcGotoICode>& code, const SlcOperand& flag, bool jumpsIf);
    /// A guard whose code runs if its flag has the value `runsIf`.
    void FoldGuard(const SlcPtr<SlcIfICode>& code, bool runsIf);

    bool m_changed = false;
    int m_ifDepth = 0;        // open guards since the folded one, itself included; 0 outside
    bool m_dropping = false;  // in a branch that can never run
    SlcPtr<SlcICode> m_new;   // what the current instruction becomes; null for nothing
};

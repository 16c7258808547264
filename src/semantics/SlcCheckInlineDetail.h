#pragma once

#include <functional>
#include <unordered_set>
#include <vector>

#include "frontend/SlcCodeWalker.h"
#include "semantics/SlcCallPlace.h"
#include "semantics/SlcInlineJournal.h"
#include "support/SlcPtr.h"
#include "support/reports/SlcSemanticError.h"

/// Thrown by value if a body that is evaluated inside a light statement calls a function with
/// another light statement. Caught where the evaluation was started.
struct SlcAlreadyInLightControlStmt {};

/// Evaluates the body of a user function for one call. The inline detail of a variable or node is
/// its detail in this evaluation; that of a formal starts as the detail of its argument. Computes
/// the detail of the result, and reports faults that this call causes. Needs the details that
/// `SlcCheckDetail` has stored.
///
/// A body is walked in source order. The body of a `for`, `while` or `illuminance` is walked
/// repeatedly, without reports, until the details are final; one more iteration then reports.
class SlcCheckInlineDetail : public SlcCodeWalker {
public:
    /// Thrown by value by an unconditional `return`, to end the evaluation.
    struct EndCheckInline {
        SlcDetailNode* detail;
    };

    /// `around` is the evaluation of the body that contains the call, and must outlive this one;
    /// null if the call is in a statement that `SlcCheckDetail` is checking.
    explicit SlcCheckInlineDetail(SlcPtr<SlcSemanticError> errors,
                                  const SlcCheckInlineDetail* around = nullptr);

    /// The maximum depth of calls; a deeper call is reported by the rules of user functions.
    static constexpr int k_maxLevels = 10'000;

    /// Evaluates `body` and returns the detail of the result; varying if it has no `return`.
    /// `place` is that of the call, one level deeper. Throws `SlcAlreadyInLightControlStmt`, also
    /// for a function that the body calls through others.
    [[nodiscard]] SlcDetailNode* operator()(SlcSyntaxNode* body, const SlcCallPlace& place);

    // Accessors for the rules of calls.
    [[nodiscard]] SlcPtr<SlcSemanticError>& Errors() { return m_errors; }
    [[nodiscard]] const SlcCallPlace& Place() const { return m_place; }

    // Operations that record writes and declarations of variables.
    enum class Extent { Whole, Part };
    /// Records that a value of this detail was written to `variable` and, if that is `extern`, to
    /// the variable that it refers to. Does nothing for a variable with a declared detail. The new
    /// detail includes those of the conditions around the write. It also includes the old detail
    /// if part of the old value may remain (under a condition, or if only a part was written), and
    /// for each variable that is declared outside the body.
    void Written(const SlcPtr<SlcVarSymbolEntry>& variable, SlcDetailNode* detail, Extent extent);
    /// Records that a call writes a value of this detail to `argument`; does nothing if that is
    /// neither a variable nor an element.
    void Written(const SlcExprNode* argument, SlcDetailNode* detail);
    /// Records the detail of the first value of `variable`, which a declaration gives to a local
    /// and a call to a formal.
    void Defined(SlcVarSymbolEntry& variable, SlcDetailNode* detail);
    /// Declares that each call of the body has its own copy of the variable.
    void Owns(const SlcVarSymbolEntry& variable) { m_own.insert(&variable); }

private:
    using SlcCodeWalker::Case;
    // SlcCheckInlineDetail.cpp: declarations, statements and loops.
    void Case(SlcFuncDefStmtNode* node) override;
    void Case(SlcDefExprNode* node) override;
    void Case(SlcReturnStmtNode* node) override;
    void Case(SlcIfThenStmtNode* node) override;
    void Case(SlcIfThenElseStmtNode* node) override;
    void Case(SlcLoopStmtNode* node) override;
    void Case(SlcWhileStmtNode* node) override;
    void Case(SlcForStmtNode* node) override;
    void Case(SlcIlluminanceStmtNode* node) override;
    void Case(SlcLoopModStmtNode* node) override;
    // SlcCheckInlineDetailExpressions.cpp: expressions, except for the last two functions.
    void Case(SlcConstExprNode* node) override;
    void Case(SlcIdentExprNode* node) override;
    void Case(SlcArrayRefExprNode* node) override;
    void Case(SlcIdentLValueNode* node) override;
    void Case(SlcArrayRefLValueNode* node) override;
    void Case(SlcAssignExprNode* node) override;
    void Case(SlcCastExprNode* node) override;
    void Case(SlcUMinusExprNode* node) override;
    void Case(SlcPointExprNode* node) override;
    void Case(SlcMatrixExprNode* node) override;
    void Case(SlcArrayExprNode* node) override;
    void Case(SlcBinOpExprNode* node) override;
    void Case(SlcCondExprNode* node) override;
    void Case(SlcProcCallExprNode* node) override;
    void Case(SlcTextureExprNode* node) override;
    void Case(SlcCompOpNode* node) override;
    void Case(SlcLogOpNode* node) override;
    void Case(SlcExprNode* node) override;
    void Default(SlcSyntaxNode* node) override;

    /// Whether a loop is one of the levels of `break` and `continue`, which light statements are
    /// not.
    enum class Levels { Counted, NotCounted };

    /// The body or a loop.
    struct Left {
        // Combined, of the guards of jumps that have left it or a loop around it; null if there are
        // none.
        SlcDetailNode* detail;
        Levels levels;
    };

    /// Walks the elements and returns their combined detail.
    template <class Elements>
    [[nodiscard]] SlcDetailNode* WalkElements(const Elements& elements);
    /// Walks a condition and returns the combined detail of its operands.
    [[nodiscard]] SlcDetailNode* WalkCondition(SlcSyntaxNode* condition);
    /// Walks code that is guarded by a condition whose detail is `guard`.
    void WalkGuarded(SlcSyntaxNode* node, SlcDetailNode* guard);
    /// Walks iterations of a loop without reports until the details are final, and then one with
    /// reports, unless reports are off anyway. Reports loops that are nested too deep.
    void WalkLoop(const SlcLoopStmtNode* node, Levels levels,
                  const std::function<void()>& walkRound);
    /// Walks one iteration without reports; true if another one is needed. `makesVarying` makes
    /// each variable varying that the iteration writes but does not declare, so that one more
    /// iteration suffices.
    [[nodiscard]] bool WalkQuietRound(bool makesVarying, const std::function<void()>& walkRound);
    /// Records that some points leave the `loops` innermost `for` and `while` loops here, and the
    /// light statements in them; the body counts as the outermost loop.
    void Leave(std::size_t loops);
    /// Returns the combined detail of the conditions and earlier jumps in the body that guard the
    /// current code; null if there are none.
    [[nodiscard]] SlcDetailNode* Guard() const;

    SlcPtr<SlcSemanticError> m_errors;
    SlcCallPlace m_place;                  // of the node being walked
    SlcDetailNode* m_wanted = nullptr;     // requested of the result; may be null
    SlcDetailNode* m_condition = nullptr;  // of all comparisons so far in the current condition
    SlcDetailNode* m_guard =
        nullptr;                  // of the enclosing conditions and loops; null if there are none
    SlcDetailNode* m_outerGuard;  // the same in the bodies that contain the call; null if none
    std::vector<Left> m_left;     // the body and the loops around the current code, outermost first
    SlcDetailNode* m_result = nullptr;                   // of a guarded `return`; null if none
    std::unordered_set<const SlcVarSymbolEntry*> m_own;  // formals and locals so far
    SlcInlineJournal m_ownJournal;
    SlcInlineJournal* m_journal;  // that of the outermost evaluation
};

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

/// Evaluates the body of a user function for one call, with the details of the arguments as the
/// inline details of the formals. Computes the detail of the result, and reports faults that only
/// this call causes. Needs the details that `SlcCheckDetail` has stored.
///
/// A body is walked in source order. A loop is walked repeatedly, without reports, until an
/// iteration changes no detail; a final iteration then reports.
class SlcCheckInlineDetail : public SlcCodeWalker {
public:
    /// Thrown by value by an unconditional `return`, to end the evaluation.
    struct EndCheckInline {
        SlcDetailNode* detail;
    };

    /// `around` is the evaluation of the body that contains the call; null if the call is in a
    /// statement that `SlcCheckDetail` is checking.
    explicit SlcCheckInlineDetail(SlcPtr<SlcSemanticError> errors,
                                  const SlcCheckInlineDetail* around = nullptr);

    /// The maximum depth of calls.
    static constexpr int k_maxLevels = 10'000;

    /// Evaluates `body` and returns the detail of the result; varying if it has no `return`.
    /// `place` is that of the call, one level deeper. Throws `SlcAlreadyInLightControlStmt`.
    [[nodiscard]] SlcDetailNode* operator()(SlcSyntaxNode* body, const SlcCallPlace& place);

    // Accessors for the rules of calls.
    [[nodiscard]] SlcPtr<SlcSemanticError>& Errors() { return m_errors; }
    [[nodiscard]] const SlcCallPlace& Place() const { return m_place; }

    // Functions that change the inline detail of a variable.
    enum class Extent { Whole, Part };
    /// Records that a value of this detail was written to `variable` and, if that is `extern`, to
    /// the variable that it refers to. Under a condition, or if only a part was written, part of
    /// the old value remains, so the old detail is combined with the new one.
    void Written(const SlcPtr<SlcVarSymbolEntry>& variable, SlcDetailNode* detail, Extent extent);
    /// Records that a call writes `argument`, if that is a variable or an element.
    void Written(const SlcExprNode* argument, SlcDetailNode* detail);
    /// Records the first value of `variable`: of a local by its declaration, of a formal by a call.
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
    // SlcCheckInlineDetailExpressions.cpp.
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
        SlcDetailNode* detail;  // combined, of the jumps that have left it; null if there are none
        Levels levels;
    };

    template <class Elements>
    [[nodiscard]] SlcDetailNode* WalkElements(const Elements& elements);
    /// Walks a condition and returns the combined detail of its operands.
    [[nodiscard]] SlcDetailNode* WalkCondition(SlcSyntaxNode* condition);
    /// Walks code that is guarded by a condition of that detail.
    void WalkGuarded(SlcSyntaxNode* node, SlcDetailNode* guard);
    /// Walks iterations of a loop until nothing changes.
    void WalkLoop(const SlcLoopStmtNode* node, Levels levels,
                  const std::function<void()>& walkRound);
    /// Walks one iteration; true if another one is needed. `makesVarying` makes all variables
    /// varying that the iteration writes, so that one more iteration suffices.
    [[nodiscard]] bool WalkQuietRound(bool makesVarying, const std::function<void()>& walkRound);
    /// Records that some points leave the `loops` innermost `for` and `while` loops here, and the
    /// light statements in them.
    void Leave(std::size_t loops);
    /// Returns the combined detail of the conditions in the body that guard the current code; null
    /// if there are none.
    [[nodiscard]] SlcDetailNode* Guard() const;

    SlcPtr<SlcSemanticError> m_errors;
    SlcCallPlace m_place;                  // of the node being walked
    SlcDetailNode* m_wanted = nullptr;     // of the result
    SlcDetailNode* m_condition = nullptr;  // of the current condition's comparisons so far
    SlcDetailNode* m_guard =
        nullptr;                  // of the enclosing conditions and loops; null if there are none
    SlcDetailNode* m_outerGuard;  // of the conditions and loops around the call; null if none
    std::vector<Left> m_left;     // the body and the loops around the current code, outermost first
    SlcDetailNode* m_result = nullptr;                   // of a guarded `return`
    std::unordered_set<const SlcVarSymbolEntry*> m_own;  // formals and locals so far
    SlcInlineJournal m_ownJournal;
    SlcInlineJournal* m_journal;  // that of the outermost evaluation
};

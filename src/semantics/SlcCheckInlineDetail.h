#pragma once

#include <functional>
#include <unordered_set>
#include <vector>

#include "frontend/SlcCodeWalker.h"
#include "semantics/SlcCallPlace.h"
#include "semantics/SlcInlineJournal.h"
#include "support/SlcPtr.h"
#include "support/reports/SlcSemanticError.h"

/// A call, met while a body is evaluated inside a light statement, reaches another light
/// statement. Thrown by value, caught where the evaluation was started.
struct SlcAlreadyInLightControlStmt {};

/// Evaluates the body of a user function for one call: the formals have the details of its
/// arguments as their inline details. Gives the detail of the call's result, and reports what
/// only this call makes wrong. Needs the details that `SlcCheckDetail` has left.
///
/// A body is walked in the order of the source; a loop again and again, quietly, until what a round
/// leaves changes nothing of what it has found. Then a last round reports.
class SlcCheckInlineDetail : public SlcCodeWalker {
public:
    /// The evaluation is complete. Thrown by value by a `return` after which nothing runs.
    struct EndCheckInline {
        SlcDetailNode* detail;
    };

    /// `around`: the evaluation of the body that contains the call; null in the shader's code.
    explicit SlcCheckInlineDetail(SlcPtr<SlcSemanticError> errors,
                                  const SlcCheckInlineDetail* around = nullptr);

    /// The deepest nesting of calls that is followed.
    static constexpr int k_maxLevels = 10'000;

    /// `place` is that of the call, one level deeper. Throws `SlcAlreadyInLightControlStmt`.
    [[nodiscard]] SlcDetailNode* operator()(SlcSyntaxNode* body, const SlcCallPlace& place);

    // Accessors for the rules of calls.
    [[nodiscard]] SlcPtr<SlcSemanticError>& Errors() { return m_errors; }
    [[nodiscard]] const SlcCallPlace& Place() const { return m_place; }

    // All that changes the inline detail of a variable.
    enum class Extent { Whole, Part };
    /// `variable` has been written with a value of this detail; so has the variable that it refers
    /// to if it is `extern`. Under a condition, or if only a part was written, it keeps some of its
    /// old value.
    void Written(const SlcPtr<SlcVarSymbolEntry>& variable, SlcDetailNode* detail, Extent extent);
    /// The same for a variable or element that a call writes to.
    void Written(const SlcExprNode* argument, SlcDetailNode* detail);
    /// A declaration, or a call, has given `variable` its first value.
    void Defined(SlcVarSymbolEntry& variable, SlcDetailNode* detail);
    /// Each call of the body has its own copy of the variable.
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

    template <class Elements>
    [[nodiscard]] SlcDetailNode* WalkElements(const Elements& elements);
    /// Walks a condition and gives the combination of what it compares.
    [[nodiscard]] SlcDetailNode* WalkCondition(SlcSyntaxNode* condition);
    /// Walks what runs only where a guard of that detail lets it.
    void WalkGuarded(SlcSyntaxNode* node, SlcDetailNode* guard);
    /// Walks rounds of a loop until nothing changes.
    void WalkLoop(const SlcLoopStmtNode* node, const std::function<void()>& walkRound);
    /// True if another one is needed. `makesVarying`: then it changes nothing.
    [[nodiscard]] bool WalkQuietRound(bool makesVarying, const std::function<void()>& walkRound);
    /// From here on the innermost loops, so many of them, go on without some points.
    void Leave(std::size_t loops);
    /// The detail of the conditions that decide whether the current code runs, as far as the body
    /// knows; null if nothing does.
    [[nodiscard]] SlcDetailNode* Guard() const;

    SlcPtr<SlcSemanticError> m_errors;
    SlcCallPlace m_place;                  // of what is being walked
    SlcDetailNode* m_wanted = nullptr;     // of the result
    SlcDetailNode* m_condition = nullptr;  // of the comparisons walked since the condition began
    SlcDetailNode* m_guard = nullptr;      // of the conditions and loops around; null at the top
    SlcDetailNode* m_outerGuard;           // of those around the call
    std::vector<SlcDetailNode*> m_left;  // by loop, the body first: of what left it; null: nothing
    SlcDetailNode* m_result = nullptr;   // of the `return` that has been met under a guard
    std::unordered_set<const SlcVarSymbolEntry*> m_own;  // formals and locals so far
    SlcInlineJournal m_ownJournal;
    SlcInlineJournal* m_journal;  // that of the outermost evaluation
};

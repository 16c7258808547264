#pragma once

#include "frontend/SlcCodeWalker.h"
#include "support/SlcPtr.h"
#include "support/reports/SlcSemanticError.h"

class SlcSymbolEntry;
class SlcVarSymbolEntry;

/// A call, met while a body is evaluated inside a light statement, reaches another light
/// statement. Thrown by value, caught where the evaluation was started.
struct SlcAlreadyInLightControlStmt {};

/// Evaluates the body of a user function for one call: the formals have the details of its
/// arguments as their inline details. Gives the detail of the call's result, and reports what
/// only this call makes wrong. Needs the details that `SlcCheckDetail` has left.
///
/// A body is walked once, in the order of the source. So what a variable holds in a loop may
/// change behind a use of it; the result of a `return` in a loop counts as varying for that.
class SlcCheckInlineDetail : public SlcCodeWalker {
public:
    /// The evaluation is complete. Thrown by value by a `return` behind which nothing runs.
    struct EndCheckInline {
        SlcDetailNode* detail;
    };

    explicit SlcCheckInlineDetail(SlcPtr<SlcSemanticError> errors);

    /// How many calls inside each other are followed.
    static constexpr int k_maxLevels = 10'000;

    /// `wanted` is the detail that the context of the call wants; may be null. `level` counts the
    /// calls around the body. Throws `SlcAlreadyInLightControlStmt`.
    [[nodiscard]] SlcDetailNode* operator()(SlcSyntaxNode* body, SlcShaderTypeNode* shaderType,
                                            bool inLightStatement, bool notInFunction,
                                            SlcDetailNode* wanted, int level);

    // What the rules of calls need to know.
    [[nodiscard]] SlcPtr<SlcSemanticError>& Errors() { return m_errors; }
    [[nodiscard]] SlcShaderTypeNode* ShaderType() const { return m_shaderType; }
    [[nodiscard]] bool IsInLightStatement() const { return m_inLightStatement; }
    [[nodiscard]] bool IsNotInFunction() const { return m_notInFunction; }
    /// Null where the context wants none.
    [[nodiscard]] SlcDetailNode* ExpectedDetail() const { return m_expected; }
    [[nodiscard]] int Level() const { return m_level; }
    /// What the conditions and loops around make of a variable that is written here: at some
    /// points it keeps what it had.
    [[nodiscard]] SlcDetailNode* DetailOfWrite(const SlcPtr<SlcVarSymbolEntry>& variable,
                                               SlcDetailNode* written) const;

private:
    using SlcCodeWalker::Case;
    void Case(SlcFuncDefStmtNode* node) override;
    void Case(SlcDefExprNode* node) override;
    void Case(SlcReturnStmtNode* node) override;
    void Case(SlcIfThenStmtNode* node) override;
    void Case(SlcIfThenElseStmtNode* node) override;
    void Case(SlcLoopStmtNode* node) override;
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
    void Case(SlcExprNode* node) override;
    void Default(SlcSyntaxNode* node) override;

    template <class Elements>
    [[nodiscard]] SlcDetailNode* WalkElements(const Elements& elements);
    /// Walks a condition and gives the combination of what it compares.
    [[nodiscard]] SlcDetailNode* WalkCondition(SlcSyntaxNode* condition);
    /// Walks what runs only where a guard of that detail lets it.
    void WalkGuarded(SlcSyntaxNode* node, SlcDetailNode* guard);

    SlcPtr<SlcSemanticError> m_errors;
    bool m_inLightStatement = false;
    SlcDetailNode* m_expected = nullptr;
    SlcDetailNode* m_wanted = nullptr;  // of the result
    SlcShaderTypeNode* m_shaderType = nullptr;
    bool m_notInFunction = false;
    int m_level = 0;
    SlcDetailNode* m_condition = nullptr;  // of the comparisons walked since the condition began
    SlcDetailNode* m_guard = nullptr;      // of the conditions and loops around; null at the top
    SlcDetailNode* m_result = nullptr;     // of the `return` that has been met under a guard
};

#pragma once

#include <cstddef>
#include <set>

#include "frontend/SlcCodeWalker.h"
#include "support/SlcPtr.h"

class SlcVarSymbolEntry;

/// Accesses of a function, or of one that it calls, to variables that it does not own.
struct SlcBodyFacts {
    /// A variable of unknown detail that is neither a formal nor a local: what the function
    /// evaluates to depends on more than its arguments.
    bool accessesOuterVariables = false;
    /// The light of a light loop that is not its own.
    bool needsLightLoop = false;
    /// Operations and calls in the body, each called function with all of its operations: what one
    /// expansion of the body makes instructions for. Known before any is made, since a chain of
    /// functions that each call the one before twice doubles it at each link. Never overflows.
    std::size_t expandedOperations = 0;
};

/// Collects the facts of a function whose body has been checked. Linear in the body.
class SlcGetBodyFacts : public SlcCodeWalker {
public:
    /// `shaderType`: of the file's shader. What the function calls has been checked before it.
    [[nodiscard]] SlcBodyFacts operator()(SlcFuncDefNode* function, SlcShaderTypeNode* shaderType);

private:
    using SlcCodeWalker::Case;
    void Case(SlcFuncDefStmtNode* node) override;
    void Case(SlcDefExprNode* node) override;
    void Case(SlcIlluminanceStmtNode* node) override;
    void Case(SlcBinOpExprNode* node) override;
    void Case(SlcAssignExprNode* node) override;
    void Case(SlcIdentExprNode* node) override;
    void Case(SlcArrayRefExprNode* node) override;
    void Case(SlcLValueNode* node) override;
    void Case(SlcProcCallExprNode* node) override;
    void Default(SlcSyntaxNode* node) override;

    /// Up to a limit that no expansion reaches.
    void AddOperations(std::size_t count);
    /// The body reads or writes the variable; null is passed over.
    void RecordAccess(const SlcPtr<SlcVarSymbolEntry>& variable);

    SlcBodyFacts m_facts;
    std::set<const SlcVarSymbolEntry*> m_own;  // looked up, never listed
    bool m_isLightShader = false;
    bool m_inLightLoop = false;  // of the function itself
};

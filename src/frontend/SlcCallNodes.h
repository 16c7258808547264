#pragma once

// Calls. The overload is found by SlcResolveCall; lowered in SlcGenInterCodeCalls.cpp, those of
// built-ins by SlcBuiltInLowering, those of shadeops by SlcShadeopLowering.

#include <memory>
#include <utility>
#include <vector>

#include "frontend/SlcExprNodes.h"

class SlcFuncSymbolEntry;
class SlcFuncVarArgLeaf;

/// The arguments of a call, in the order of the source; there may be none.
class SlcProcArgsNode : public SlcVisitable<SlcProcArgsNode, SlcSyntaxNode> {
public:
    using SlcVisitable::SlcVisitable;
    void AddArg(std::unique_ptr<SlcExprNode> argument);
    [[nodiscard]] const std::vector<std::unique_ptr<SlcExprNode>>& GetArgs() const;
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::vector<std::unique_ptr<SlcExprNode>> m_arguments;
};

/// `name(arguments)`: a user function, a built-in or a shadeop; which one the name means is known
/// once its arguments are typed. Texture accesses have a separate node.
class SlcProcCallExprNode : public SlcVisitable<SlcProcCallExprNode, SlcExprNode> {
public:
    SlcProcCallExprNode(const SlcPosition& position, SlcIdentNode* ident,
                        std::unique_ptr<SlcProcArgsNode> arguments);
    ~SlcProcCallExprNode() override;
    /// All arguments are.
    [[nodiscard]] bool IsConstExpr() const override;
    [[nodiscard]] SlcIdentNode* GetIdent() const { return m_ident; }
    [[nodiscard]] SlcProcArgsNode* GetArguments() const { return m_arguments.get(); }
    /// Null until the semantic pass has chosen an overload, and after a reported error.
    [[nodiscard]] const SlcPtr<SlcFuncSymbolEntry>& GetSymbolEntry() const { return m_entry; }
    void SetSymbolEntry(SlcPtr<SlcFuncSymbolEntry> entry);
    /// The part of the overload's variable tail that took each argument after the fixed ones. Null
    /// for an argument that only the function itself can judge.
    [[nodiscard]] const std::vector<SlcFuncVarArgLeaf*>& GetTailLeaves() const { return m_leaves; }
    void SetTailLeaves(std::vector<SlcFuncVarArgLeaf*> leaves) { m_leaves = std::move(leaves); }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    SlcIdentNode* m_ident;
    std::unique_ptr<SlcProcArgsNode> m_arguments;
    SlcPtr<SlcFuncSymbolEntry> m_entry;
    std::vector<SlcFuncVarArgLeaf*> m_leaves;  // the entry owns them
};

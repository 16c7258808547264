#pragma once

// Calls. SlcResolveCall finds the overload. They are lowered in SlcGenInterCodeCalls.cpp, built-ins
// by SlcBuiltInLowering, shadeops by SlcShadeopLowering.

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

/// `name(arguments)`: a call of a user function, a built-in or a shadeop, which is resolved once
/// the arguments have types. Texture accesses have a separate node.
class SlcProcCallExprNode : public SlcVisitable<SlcProcCallExprNode, SlcExprNode> {
public:
    SlcProcCallExprNode(const SlcPosition& position, SlcIdentNode* ident,
                        std::unique_ptr<SlcProcArgsNode> arguments);
    ~SlcProcCallExprNode() override;
    /// True if all arguments are constant, or if there are none.
    [[nodiscard]] bool IsConstExpr() const override;
    [[nodiscard]] SlcIdentNode* GetIdent() const { return m_ident; }
    [[nodiscard]] SlcProcArgsNode* GetArguments() const { return m_arguments.get(); }
    /// Null until the semantic pass has chosen an overload, and after a reported error.
    [[nodiscard]] const SlcPtr<SlcFuncSymbolEntry>& GetSymbolEntry() const { return m_entry; }
    void SetSymbolEntry(SlcPtr<SlcFuncSymbolEntry> entry);
    /// Returns, for each argument after the fixed ones, the part of the overload's variable tail
    /// that accepted it. Null for an argument that only the function itself can check.
    [[nodiscard]] const std::vector<SlcFuncVarArgLeaf*>& GetTailLeaves() const { return m_leaves; }
    void SetTailLeaves(std::vector<SlcFuncVarArgLeaf*> leaves) { m_leaves = std::move(leaves); }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    SlcIdentNode* m_ident;
    std::unique_ptr<SlcProcArgsNode> m_arguments;
    SlcPtr<SlcFuncSymbolEntry> m_entry;
    std::vector<SlcFuncVarArgLeaf*> m_leaves;  // the entry owns them
};

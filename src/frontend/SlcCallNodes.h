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

/// `name(arguments)`: a call of a user function, a built-in or a shadeop. The checks select the
/// function once they know the possible types of the arguments. Calls of `texture`, `environment`
/// and `shadow` have a separate node.
class SlcProcCallExprNode : public SlcVisitable<SlcProcCallExprNode, SlcExprNode> {
public:
    SlcProcCallExprNode(const SlcPosition& position, SlcIdentNode* ident,
                        std::unique_ptr<SlcProcArgsNode> arguments);
    ~SlcProcCallExprNode() override;
    /// True if all arguments are constant, or if there are none.
    [[nodiscard]] bool IsConstExpr() const override;
    [[nodiscard]] SlcIdentNode* GetIdent() const { return m_ident; }
    [[nodiscard]] SlcProcArgsNode* GetArguments() const { return m_arguments.get(); }
    /// Null until the semantic pass has chosen an overload; it stays null after a report that
    /// prevents the choice. `SlcDeleteTree` resets it.
    [[nodiscard]] const SlcPtr<SlcFuncSymbolEntry>& GetSymbolEntry() const { return m_entry; }
    void SetSymbolEntry(SlcPtr<SlcFuncSymbolEntry> entry);
    /// For an overload that accepts more arguments than it has formals, such as `printf`: returns,
    /// for each additional argument, the part of the overload's signature that accepted it. A part
    /// is null if only the function itself can check the argument.
    [[nodiscard]] const std::vector<SlcFuncVarArgLeaf*>& GetTailLeaves() const { return m_leaves; }
    void SetTailLeaves(std::vector<SlcFuncVarArgLeaf*> leaves) { m_leaves = std::move(leaves); }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    SlcIdentNode* m_ident;
    std::unique_ptr<SlcProcArgsNode> m_arguments;
    SlcPtr<SlcFuncSymbolEntry> m_entry;
    std::vector<SlcFuncVarArgLeaf*> m_leaves;  // the entry owns them
};

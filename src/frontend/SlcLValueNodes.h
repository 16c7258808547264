#pragma once

// The targets of assignments, lowered in SlcGenInterCodeAssignments.cpp.

#include <memory>
#include <string>

#include "frontend/SlcExprNodes.h"

/// Base of the targets of assignments. The checks annotate each target with a
/// `SlcLValueType`.
class SlcLValueNode : public SlcSyntaxNode {
public:
    SlcLValueNode(const SlcPosition& position, SlcIdentNode* ident);
    ~SlcLValueNode() override;
    [[nodiscard]] virtual bool IsIdentLValue() const { return false; }
    [[nodiscard]] virtual bool IsArrayRefLValue() const { return false; }
    /// Returns the text of the target for reports, with "..." for an index.
    [[nodiscard]] virtual std::string ToString() const = 0;
    [[nodiscard]] SlcIdentNode* GetIdent() const { return m_ident; }
    /// Null before the semantic pass.
    [[nodiscard]] const SlcPtr<SlcVarSymbolEntry>& GetSymbolEntry() const { return m_entry; }
    void SetSymbolEntry(SlcPtr<SlcVarSymbolEntry> entry);
    [[nodiscard]] SlcLValueNode* AsLValue() final { return this; }

private:
    SlcIdentNode* m_ident;
    SlcPtr<SlcVarSymbolEntry> m_entry;  // set by the semantic pass
};

/// `name` on the left of an assignment.
class SlcIdentLValueNode : public SlcVisitable<SlcIdentLValueNode, SlcLValueNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsIdentLValue() const override { return true; }
    [[nodiscard]] std::string ToString() const override { return GetIdent()->GetName(); }
    void WalkIn(SlcCodeWalker* walker) override;
};

/// `name[index]` on the left of an assignment.
class SlcArrayRefLValueNode : public SlcVisitable<SlcArrayRefLValueNode, SlcLValueNode> {
public:
    SlcArrayRefLValueNode(const SlcPosition& position, SlcIdentNode* ident,
                          std::unique_ptr<SlcExprNode> index);
    [[nodiscard]] bool IsArrayRefLValue() const override { return true; }
    [[nodiscard]] std::string ToString() const override { return GetIdent()->GetName() + "[...]"; }
    [[nodiscard]] SlcExprNode* GetIndex() const { return m_index.get(); }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::unique_ptr<SlcExprNode> m_index;
};

#pragma once

// Assignments. SlcCalculateTypesSets checks the target, SlcResolveUniqueType the type of the value,
// and SlcCheckDetail the detail. They are lowered in SlcGenInterCodeAssignments.cpp.

#include <memory>
#include <string_view>

#include "frontend/SlcLValueNodes.h"

/// Base of the assignment operators. An assignment is an expression: its value is the new value of
/// the variable or element, and it can be an output argument. The right side is evaluated after the
/// index of an element, and before the write.
class SlcAssignExprNode : public SlcVisitable<SlcAssignExprNode, SlcReferenceExprNode> {
public:
    /// Takes the position of the left side.
    SlcAssignExprNode(std::unique_ptr<SlcLValueNode> lvalue, std::unique_ptr<SlcExprNode> value);
    [[nodiscard]] SlcAssignExprNode* AsAssignExpr() final { return this; }
    [[nodiscard]] virtual bool IsEqAssign() const { return false; }
    [[nodiscard]] virtual bool IsAddEqAssign() const { return false; }
    [[nodiscard]] virtual bool IsSubEqAssign() const { return false; }
    [[nodiscard]] virtual bool IsMultEqAssign() const { return false; }
    [[nodiscard]] virtual bool IsDivEqAssign() const { return false; }
    /// Returns the operator, as written in the source.
    [[nodiscard]] virtual std::string_view ToString() const = 0;
    /// Return the name and the entry of the assigned variable.
    [[nodiscard]] SlcIdentNode* GetIdent() const override { return m_lvalue->GetIdent(); }
    [[nodiscard]] const SlcPtr<SlcVarSymbolEntry>& GetSymbolEntry() const override;
    [[nodiscard]] SlcLValueNode* GetLValue() const { return m_lvalue.get(); }
    [[nodiscard]] SlcExprNode* GetValue() const { return m_value.get(); }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::unique_ptr<SlcLValueNode> m_lvalue;
    std::unique_ptr<SlcExprNode> m_value;
};

/// `x = value`, `x[i] = value`
class SlcEqAssignExprNode : public SlcVisitable<SlcEqAssignExprNode, SlcAssignExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsEqAssign() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "="; }
};

/// `x += value`
class SlcAddAssignExprNode : public SlcVisitable<SlcAddAssignExprNode, SlcAssignExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsAddEqAssign() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "+="; }
};

/// `x -= value`
class SlcSubAssignExprNode : public SlcVisitable<SlcSubAssignExprNode, SlcAssignExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsSubEqAssign() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "-="; }
};

/// `x *= value`
class SlcMultAssignExprNode : public SlcVisitable<SlcMultAssignExprNode, SlcAssignExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsMultEqAssign() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "*="; }
};

/// `x /= value`
class SlcDivAssignExprNode : public SlcVisitable<SlcDivAssignExprNode, SlcAssignExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsDivEqAssign() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "/="; }
};

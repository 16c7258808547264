#pragma once

// Conditions. SlcResolveOperator determines the types of their operands, and
// SlcGenInterCodeRelations.cpp lowers them; the instructions are in SlcBoolICode.h.

#include <memory>
#include <string_view>

#include "frontend/SlcExprNodes.h"

/// Base of conditions. A relation is not an expression: it has no type, and its value is a flag.
class SlcRelationNode : public SlcSyntaxNode {
public:
    using SlcSyntaxNode::SlcSyntaxNode;
    [[nodiscard]] SlcRelationNode* AsRelation() final { return this; }
    /// Returns the operator, as written in the source.
    [[nodiscard]] virtual std::string_view ToString() const = 0;
};

/// Base of comparisons of two values.
class SlcCompOpNode : public SlcVisitable<SlcCompOpNode, SlcRelationNode> {
public:
    /// Takes the position of its left operand.
    SlcCompOpNode(std::unique_ptr<SlcExprNode> left, std::unique_ptr<SlcExprNode> right);
    [[nodiscard]] virtual bool IsLessThen() const { return false; }
    [[nodiscard]] virtual bool IsLessEqual() const { return false; }
    [[nodiscard]] virtual bool IsGreaterThen() const { return false; }
    [[nodiscard]] virtual bool IsGreaterEqual() const { return false; }
    [[nodiscard]] virtual bool IsEqual() const { return false; }
    [[nodiscard]] virtual bool IsNotEqual() const { return false; }
    [[nodiscard]] SlcExprNode* GetLeft() const { return m_left.get(); }
    [[nodiscard]] SlcExprNode* GetRight() const { return m_right.get(); }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::unique_ptr<SlcExprNode> m_left;
    std::unique_ptr<SlcExprNode> m_right;
};

/// Base of the orderings, which compare only floats.
class SlcRelOpNode : public SlcVisitable<SlcRelOpNode, SlcCompOpNode> {
public:
    using SlcVisitable::SlcVisitable;
};

/// `a < b`
class SlcLessThenNode : public SlcVisitable<SlcLessThenNode, SlcRelOpNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsLessThen() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "<"; }
};

/// `a <= b`
class SlcLessEqualNode : public SlcVisitable<SlcLessEqualNode, SlcRelOpNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsLessEqual() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "<="; }
};

/// `a > b`
class SlcGreaterThenNode : public SlcVisitable<SlcGreaterThenNode, SlcRelOpNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsGreaterThen() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return ">"; }
};

/// `a >= b`
class SlcGreaterEqualNode : public SlcVisitable<SlcGreaterEqualNode, SlcRelOpNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsGreaterEqual() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return ">="; }
};

/// Base of the tests for equality, which compare values of any type except arrays: two values of
/// the same type, or a value and a float that is promoted to its type.
class SlcEqOpNode : public SlcVisitable<SlcEqOpNode, SlcCompOpNode> {
public:
    using SlcVisitable::SlcVisitable;
};

/// `a == b`
class SlcEqualRelNode : public SlcVisitable<SlcEqualRelNode, SlcEqOpNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsEqual() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "=="; }
};

/// `a != b`
class SlcNotEqualRelNode : public SlcVisitable<SlcNotEqualRelNode, SlcEqOpNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsNotEqual() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "!="; }
};

/// Base of `&&` and `||`. The right side matters only where the left side has not determined the
/// result, and need not be evaluated elsewhere.
class SlcLogOpNode : public SlcVisitable<SlcLogOpNode, SlcRelationNode> {
public:
    /// Takes the position of its left operand.
    SlcLogOpNode(std::unique_ptr<SlcRelationNode> left, std::unique_ptr<SlcRelationNode> right);
    [[nodiscard]] SlcRelationNode* GetLeft() const { return m_left.get(); }
    [[nodiscard]] SlcRelationNode* GetRight() const { return m_right.get(); }
    /// True if the right side must not be evaluated where the left side determines the result: it
    /// contains an assignment, a call of a user function or shadeop, a built-in that writes an
    /// argument or depends on the order of its calls, an element whose index is not uniform, a
    /// `?:`, or another `&&` or `||`. Set by `SlcMarkLeaves`.
    [[nodiscard]] bool RightNeedsGuard() const { return m_rightNeedsGuard; }
    void SetRightNeedsGuard(bool needsGuard) { m_rightNeedsGuard = needsGuard; }
    /// True if the right side reads an element whose index is no literal. Inside a condition, such
    /// a right side also needs a guard: where no point is active, a uniform left side has not been
    /// computed and cannot protect it. Set by `SlcMarkLeaves`.
    [[nodiscard]] bool RightReadsElement() const { return m_rightReadsElement; }
    void SetRightReadsElement(bool readsElement) { m_rightReadsElement = readsElement; }
    [[nodiscard]] virtual bool IsLogAnd() const { return false; }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::unique_ptr<SlcRelationNode> m_left;
    std::unique_ptr<SlcRelationNode> m_right;
    bool m_rightNeedsGuard = false;
    bool m_rightReadsElement = false;
};

/// `relation && relation`, which binds tighter than `||`.
class SlcLogAndNode : public SlcVisitable<SlcLogAndNode, SlcLogOpNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] bool IsLogAnd() const override { return true; }
    [[nodiscard]] std::string_view ToString() const override { return "&&"; }
};

/// `relation || relation`
class SlcLogOrNode : public SlcVisitable<SlcLogOrNode, SlcLogOpNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] std::string_view ToString() const override { return "||"; }
};

/// `!relation`
class SlcNotRelNode : public SlcVisitable<SlcNotRelNode, SlcRelationNode> {
public:
    SlcNotRelNode(const SlcPosition& position, std::unique_ptr<SlcRelationNode> relation);
    [[nodiscard]] std::string_view ToString() const override { return "!"; }
    [[nodiscard]] SlcRelationNode* GetRelation() const { return m_relation.get(); }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::unique_ptr<SlcRelationNode> m_relation;
};

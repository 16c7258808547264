#pragma once

// Expressions other than binary operators, assignments, calls and texture accesses. Typed by
// SlcCalculateTypesSets and SlcResolveUniqueType, lowered in SlcGenInterCodeExpressions.cpp and,
// for `?:`, in SlcGenInterCodeConditions.cpp.

#include <array>
#include <memory>
#include <vector>

#include "frontend/SlcLexicalNode.h"
#include "frontend/SlcTypeNode.h"

class SlcRelationNode;
class SlcVarSymbolEntry;

/// Base of expressions. The checks annotate each with a `SlcPossibleTypes`: its type and detail.
class SlcExprNode : public SlcSyntaxNode {
public:
    using SlcSyntaxNode::SlcSyntaxNode;
    /// True for a literal or `PI`, and for a negation, binary operation, triple, matrix, array
    /// list, cast or call if all its operands are constant. Decided by the form alone: a call of
    /// any function counts.
    [[nodiscard]] virtual bool IsConstExpr() const { return false; }
    /// True for a name, an element or an assignment. Only these can be output arguments.
    [[nodiscard]] virtual bool IsReferenceExpr() const { return false; }
    [[nodiscard]] SlcExprNode* AsExpr() final { return this; }
};

/// Base of expressions that name a variable: a name, an element, an assignment.
class SlcReferenceExprNode : public SlcExprNode {
public:
    using SlcExprNode::SlcExprNode;
    [[nodiscard]] bool IsReferenceExpr() const override { return true; }
    [[nodiscard]] virtual SlcIdentNode* GetIdent() const = 0;
    /// Null before the semantic pass.
    [[nodiscard]] virtual const SlcPtr<SlcVarSymbolEntry>& GetSymbolEntry() const = 0;
};

/// A float or string literal.
class SlcConstExprNode : public SlcVisitable<SlcConstExprNode, SlcExprNode> {
public:
    SlcConstExprNode(const SlcPosition& position, SlcFloatConstNode* constant);
    SlcConstExprNode(const SlcPosition& position, SlcStringLiteralNode* constant);
    [[nodiscard]] bool IsConstExpr() const override { return true; }
    [[nodiscard]] bool IsFloat() const { return m_float != nullptr; }
    [[nodiscard]] SlcLexicalNode* GetConst() const;
    /// Null for a string literal.
    [[nodiscard]] SlcFloatConstNode* GetFloatConst() const { return m_float; }
    /// Null for a float literal.
    [[nodiscard]] SlcStringLiteralNode* GetStringConst() const { return m_string; }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    SlcFloatConstNode* m_float = nullptr;  // exactly one of the two is set
    SlcStringLiteralNode* m_string = nullptr;
};

/// `name` used as a value. The name can also be that of a whole array.
class SlcIdentExprNode : public SlcVisitable<SlcIdentExprNode, SlcReferenceExprNode> {
public:
    SlcIdentExprNode(const SlcPosition& position, SlcIdentNode* ident);
    ~SlcIdentExprNode() override;
    /// Only the name "PI" is constant.
    [[nodiscard]] bool IsConstExpr() const override;
    [[nodiscard]] SlcIdentNode* GetIdent() const override { return m_ident; }
    [[nodiscard]] const SlcPtr<SlcVarSymbolEntry>& GetSymbolEntry() const override;
    void SetSymbolEntry(SlcPtr<SlcVarSymbolEntry> entry);
    void WalkIn(SlcCodeWalker* walker) override;

private:
    SlcIdentNode* m_ident;
    SlcPtr<SlcVarSymbolEntry> m_entry;  // set by the semantic pass
};

/// `name[index]` used as a value. The index is a float, which is truncated to an integer.
class SlcArrayRefExprNode : public SlcVisitable<SlcArrayRefExprNode, SlcReferenceExprNode> {
public:
    SlcArrayRefExprNode(const SlcPosition& position, SlcIdentNode* ident,
                        std::unique_ptr<SlcExprNode> index);
    ~SlcArrayRefExprNode() override;
    [[nodiscard]] SlcIdentNode* GetIdent() const override { return m_ident; }
    [[nodiscard]] const SlcPtr<SlcVarSymbolEntry>& GetSymbolEntry() const override;
    void SetSymbolEntry(SlcPtr<SlcVarSymbolEntry> entry);
    [[nodiscard]] SlcExprNode* GetIndex() const { return m_index.get(); }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    SlcIdentNode* m_ident;
    SlcPtr<SlcVarSymbolEntry> m_entry;  // set by the semantic pass
    std::unique_ptr<SlcExprNode> m_index;
};

/// `-operand`, of floats, colors and the point family (point, vector, normal).
class SlcUMinusExprNode : public SlcVisitable<SlcUMinusExprNode, SlcExprNode> {
public:
    SlcUMinusExprNode(const SlcPosition& position, std::unique_ptr<SlcExprNode> operand);
    [[nodiscard]] bool IsConstExpr() const override { return m_operand->IsConstExpr(); }
    [[nodiscard]] SlcExprNode* GetOperand() const { return m_operand.get(); }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::unique_ptr<SlcExprNode> m_operand;
};

/// `color "hsv" (r, g, b)`: a cast, with the space in which the operand is given. A cast promotes a
/// float, converts between colors and the point family, and determines the type of an operand that
/// could have several, such as a triple. If the type has spaces and the source names none, the
/// parser adds the default: "rgb" for colors, "current" for the other types.
class SlcCastExprNode : public SlcVisitable<SlcCastExprNode, SlcExprNode> {
public:
    /// `space` is null for types without spaces.
    SlcCastExprNode(const SlcPosition& position, SlcTypeNode* type, SlcStringLiteralNode* space,
                    std::unique_ptr<SlcExprNode> operand);
    [[nodiscard]] bool IsConstExpr() const override { return m_operand->IsConstExpr(); }
    [[nodiscard]] SlcTypeNode* GetType() const { return m_type; }
    /// Returns the name of the space with its quotes; null for types without a space.
    [[nodiscard]] SlcStringLiteralNode* GetSpace() const { return m_space; }
    [[nodiscard]] SlcExprNode* GetOperand() const { return m_operand.get(); }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    SlcTypeNode* m_type;
    SlcStringLiteralNode* m_space;
    std::unique_ptr<SlcExprNode> m_operand;
};

/// `condition ? then : else`. Under a uniform condition only one of the two values is evaluated;
/// under a varying condition, each is evaluated for the points that select it.
class SlcCondExprNode : public SlcVisitable<SlcCondExprNode, SlcExprNode> {
public:
    SlcCondExprNode(const SlcPosition& position, std::unique_ptr<SlcRelationNode> condition,
                    std::unique_ptr<SlcExprNode> thenValue, std::unique_ptr<SlcExprNode> elseValue);
    ~SlcCondExprNode() override;
    [[nodiscard]] SlcRelationNode* GetCondition() const { return m_condition.get(); }
    [[nodiscard]] SlcExprNode* GetThen() const { return m_then.get(); }
    [[nodiscard]] SlcExprNode* GetElse() const { return m_else.get(); }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::unique_ptr<SlcRelationNode> m_condition;
    std::unique_ptr<SlcExprNode> m_then;
    std::unique_ptr<SlcExprNode> m_else;
};

/// `(x, y, z)`: a color or a member of the point family, as the context requires.
class SlcPointExprNode : public SlcVisitable<SlcPointExprNode, SlcExprNode> {
public:
    SlcPointExprNode(const SlcPosition& position, std::unique_ptr<SlcExprNode> x,
                     std::unique_ptr<SlcExprNode> y, std::unique_ptr<SlcExprNode> z);
    [[nodiscard]] bool IsConstExpr() const override;
    [[nodiscard]] SlcExprNode* GetX() const { return m_coordinates[0].get(); }
    [[nodiscard]] SlcExprNode* GetY() const { return m_coordinates[1].get(); }
    [[nodiscard]] SlcExprNode* GetZ() const { return m_coordinates[2].get(); }
    [[nodiscard]] const std::array<std::unique_ptr<SlcExprNode>, 3>& GetCoordinates() const;
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::array<std::unique_ptr<SlcExprNode>, 3> m_coordinates;
};

/// Sixteen values in parentheses, row by row: a matrix.
class SlcMatrixExprNode : public SlcVisitable<SlcMatrixExprNode, SlcExprNode> {
public:
    SlcMatrixExprNode(const SlcPosition& position,
                      std::array<std::unique_ptr<SlcExprNode>, 16> values);
    [[nodiscard]] bool IsConstExpr() const override;
    [[nodiscard]] const std::array<std::unique_ptr<SlcExprNode>, 16>& GetValues() const;
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::array<std::unique_ptr<SlcExprNode>, 16> m_values;
};

/// The brace list that initializes an array: `{1, 2, 3}`. It occurs nowhere else.
class SlcArrayExprNode : public SlcVisitable<SlcArrayExprNode, SlcExprNode> {
public:
    using SlcVisitable::SlcVisitable;
    void AddExpr(std::unique_ptr<SlcExprNode> element);
    [[nodiscard]] bool IsConstExpr() const override;
    [[nodiscard]] const std::vector<std::unique_ptr<SlcExprNode>>& GetExprs() const;
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::vector<std::unique_ptr<SlcExprNode>> m_elements;
};

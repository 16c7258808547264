// `WalkIn` passes the children in the order of the source, except in `name[index]`, where it passes
// the index before the name.
//
// Whether an expression is constant (`IsConstExpr`) is a property of the source; the optimizer
// determines which values are known after folding.
//
// Tested by tests/frontend/TreeShapeTest.cpp.

#include "frontend/SlcExprNodes.h"

#include <algorithm>
#include <utility>

#include "frontend/SlcRelationNodes.h"
#include "sqx/SqxPredefined.h"

namespace {

constexpr auto k_isConst = [](const auto& expr) { return expr->IsConstExpr(); };

}  // namespace

SlcConstExprNode::SlcConstExprNode(const SlcPosition& position, SlcFloatConstNode* constant)
    : SlcVisitable(position),
      m_float(constant)
{
}

SlcConstExprNode::SlcConstExprNode(const SlcPosition& position, SlcStringLiteralNode* constant)
    : SlcVisitable(position),
      m_string(constant)
{
}

SlcLexicalNode* SlcConstExprNode::GetConst() const
{
    return IsFloat() ? static_cast<SlcLexicalNode*>(m_float) : m_string;
}

void SlcConstExprNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(GetConst(), walker);
}

SlcIdentExprNode::SlcIdentExprNode(const SlcPosition& position, SlcIdentNode* ident)
    : SlcVisitable(position),
      m_ident(ident)
{
}

SlcIdentExprNode::~SlcIdentExprNode() = default;

bool SlcIdentExprNode::IsConstExpr() const
{
    return m_ident->GetName() == k_sqxPi.name;
}

const SlcPtr<SlcVarSymbolEntry>& SlcIdentExprNode::GetSymbolEntry() const
{
    return m_entry;
}

void SlcIdentExprNode::SetSymbolEntry(SlcPtr<SlcVarSymbolEntry> entry)
{
    m_entry = std::move(entry);
}

void SlcIdentExprNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_ident, walker);
}

SlcArrayRefExprNode::SlcArrayRefExprNode(const SlcPosition& position, SlcIdentNode* ident,
                                         std::unique_ptr<SlcExprNode> index)
    : SlcVisitable(position),
      m_ident(ident),
      m_index(std::move(index))
{
    Adopt(m_index.get());
}

SlcArrayRefExprNode::~SlcArrayRefExprNode() = default;

const SlcPtr<SlcVarSymbolEntry>& SlcArrayRefExprNode::GetSymbolEntry() const
{
    return m_entry;
}

void SlcArrayRefExprNode::SetSymbolEntry(SlcPtr<SlcVarSymbolEntry> entry)
{
    m_entry = std::move(entry);
}

void SlcArrayRefExprNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_index.get(), walker);
    Walk(m_ident, walker);
}

SlcUMinusExprNode::SlcUMinusExprNode(const SlcPosition& position,
                                     std::unique_ptr<SlcExprNode> operand)
    : SlcVisitable(position),
      m_operand(std::move(operand))
{
    Adopt(m_operand.get());
}

void SlcUMinusExprNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_operand.get(), walker);
}

SlcCastExprNode::SlcCastExprNode(const SlcPosition& position, SlcTypeNode* type,
                                 SlcStringLiteralNode* space, std::unique_ptr<SlcExprNode> operand)
    : SlcVisitable(position),
      m_type(type),
      m_space(space),
      m_operand(std::move(operand))
{
    Adopt(m_operand.get());
}

void SlcCastExprNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_type, walker);
    Walk(m_space, walker);
    Walk(m_operand.get(), walker);
}

SlcCondExprNode::SlcCondExprNode(const SlcPosition& position,
                                 std::unique_ptr<SlcRelationNode> condition,
                                 std::unique_ptr<SlcExprNode> thenValue,
                                 std::unique_ptr<SlcExprNode> elseValue)
    : SlcVisitable(position),
      m_condition(std::move(condition)),
      m_then(std::move(thenValue)),
      m_else(std::move(elseValue))
{
    Adopt(m_condition.get());
    Adopt(m_then.get());
    Adopt(m_else.get());
}

SlcCondExprNode::~SlcCondExprNode() = default;

void SlcCondExprNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_condition.get(), walker);
    Walk(m_then.get(), walker);
    Walk(m_else.get(), walker);
}

SlcPointExprNode::SlcPointExprNode(const SlcPosition& position, std::unique_ptr<SlcExprNode> x,
                                   std::unique_ptr<SlcExprNode> y, std::unique_ptr<SlcExprNode> z)
    : SlcVisitable(position),
      m_coordinates{std::move(x), std::move(y), std::move(z)}
{
    for (const auto& coordinate : m_coordinates)
        Adopt(coordinate.get());
}

bool SlcPointExprNode::IsConstExpr() const
{
    return std::all_of(m_coordinates.begin(), m_coordinates.end(), k_isConst);
}

const std::array<std::unique_ptr<SlcExprNode>, 3>& SlcPointExprNode::GetCoordinates() const
{
    return m_coordinates;
}

void SlcPointExprNode::WalkIn(SlcCodeWalker* walker)
{
    for (const auto& coordinate : m_coordinates)
        Walk(coordinate.get(), walker);
}

SlcMatrixExprNode::SlcMatrixExprNode(const SlcPosition& position,
                                     std::array<std::unique_ptr<SlcExprNode>, 16> values)
    : SlcVisitable(position),
      m_values(std::move(values))
{
    for (const auto& value : m_values)
        Adopt(value.get());
}

bool SlcMatrixExprNode::IsConstExpr() const
{
    return std::all_of(m_values.begin(), m_values.end(), k_isConst);
}

const std::array<std::unique_ptr<SlcExprNode>, 16>& SlcMatrixExprNode::GetValues() const
{
    return m_values;
}

void SlcMatrixExprNode::WalkIn(SlcCodeWalker* walker)
{
    for (const auto& value : m_values)
        Walk(value.get(), walker);
}

void SlcArrayExprNode::AddExpr(std::unique_ptr<SlcExprNode> element)
{
    Adopt(element.get());
    m_elements.push_back(std::move(element));
}

bool SlcArrayExprNode::IsConstExpr() const
{
    return std::all_of(m_elements.begin(), m_elements.end(), k_isConst);
}

const std::vector<std::unique_ptr<SlcExprNode>>& SlcArrayExprNode::GetExprs() const
{
    return m_elements;
}

void SlcArrayExprNode::WalkIn(SlcCodeWalker* walker)
{
    for (const auto& element : m_elements)
        Walk(element.get(), walker);
}

#pragma once

#include <vector>

#include "symbols/SlcPossibleTypes.h"

/// Short forms for the questions that the typing passes ask of an expression with a set of types.
namespace SlcTypedExpr {

/// The member of the set that is the same type, in its exact kind; null if there is none.
[[nodiscard]] inline SlcTypeNode* Find(const SlcExprNode* expr, SlcTypeNode* type)
{
    return SlcPossibleTypes::Of(expr)->IsInTypes(type, false);
}

/// The set holds the type, or of the point family one of its kind.
[[nodiscard]] inline bool HasType(const SlcExprNode* expr, SlcTypeNode* type)
{
    return Find(expr, type) != nullptr;
}

/// Holds the type, or one that is promoted to it, or one that it is promoted to.
[[nodiscard]] inline bool Fits(const SlcExprNode* expr, SlcTypeNode* type)
{
    return SlcPossibleTypes::Of(expr)->IsInTypes(type, true) != nullptr;
}

/// All that the expression can be; empty if nothing suits.
[[nodiscard]] inline const std::vector<SlcTypeNode*>& TypesOf(const SlcExprNode* expr)
{
    return SlcPossibleTypes::Of(expr)->GetTypes();
}

/// No type matches the expression; its rule has reported why.
[[nodiscard]] inline bool IsUntyped(const SlcExprNode* expr)
{
    return TypesOf(expr).empty();
}

/// A fault of the expression has been reported.
[[nodiscard]] inline bool IsFaulty(const SlcExprNode* expr)
{
    const auto& types = TypesOf(expr);
    return !types.empty() && types.front()->IsErrorType();
}

/// The expression has its own report: a context that requires a type that it lacks stays silent.
[[nodiscard]] inline bool HasOwnReport(const SlcExprNode* expr)
{
    return IsUntyped(expr) || IsFaulty(expr);
}

/// Error if it has none.
[[nodiscard]] inline SlcTypeNode* FirstType(const SlcExprNode* expr)
{
    return IsUntyped(expr) ? SlcTypeNode::AError() : TypesOf(expr).front();
}

/// Decides the type; the expression's own pass reads it when it comes there.
inline void SetUnique(const SlcExprNode* expr, SlcTypeNode* type)
{
    SlcPossibleTypes::Of(expr)->SetUniqueType(type);
}

/// The expression takes the first of its types, for want of a better reason to choose.
inline void TakeFirst(const SlcExprNode* expr)
{
    SetUnique(expr, FirstType(expr));
}

/// Settles the requested type of an expression and returns it: as it is if the set holds it, float
/// if that is promoted to it, and otherwise the first of the set; error for a faulty one. Null if
/// the set is empty.
SlcTypeNode* SettleWanted(const SlcExprNode* expr);

}  // namespace SlcTypedExpr

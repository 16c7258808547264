#pragma once

#include <vector>

#include "symbols/SlcPossibleTypes.h"

/// Short forms for the questions that the typing passes ask of an expression with a set of types.
namespace SlcTypedExpr {

/// Returns the member of the set that is this type, of this kind exactly; null if there is none.
[[nodiscard]] inline SlcTypeNode* Find(const SlcExprNode* expr, SlcTypeNode* type)
{
    return SlcPossibleTypes::Of(expr)->IsInTypes(type, false);
}

/// True if the set contains the type; any kind of the point family counts as the same type.
[[nodiscard]] inline bool HasType(const SlcExprNode* expr, SlcTypeNode* type)
{
    return Find(expr, type) != nullptr;
}

/// True if the set contains the type, one that is promoted to it, or one that it is promoted to.
[[nodiscard]] inline bool Fits(const SlcExprNode* expr, SlcTypeNode* type)
{
    return SlcPossibleTypes::Of(expr)->IsInTypes(type, true) != nullptr;
}

/// Returns all types that the expression can have; empty if none matches.
[[nodiscard]] inline const std::vector<SlcTypeNode*>& TypesOf(const SlcExprNode* expr)
{
    return SlcPossibleTypes::Of(expr)->GetTypes();
}

/// Records that no type matches the expression; its rule has reported why.
[[nodiscard]] inline bool IsUntyped(const SlcExprNode* expr)
{
    return TypesOf(expr).empty();
}

/// True if a fault of the expression has been reported.
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

/// Returns the type that was decided; `error` if none was.
[[nodiscard]] inline SlcTypeNode* FirstType(const SlcExprNode* expr)
{
    return IsUntyped(expr) ? SlcTypeNode::AError() : TypesOf(expr).front();
}

/// Decides the type. The walk over the expression reads it when it gets there.
inline void SetUnique(const SlcExprNode* expr, SlcTypeNode* type)
{
    SlcPossibleTypes::Of(expr)->SetUniqueType(type);
}

/// Decides on the first type of the set, when the context gives no reason to choose another.
inline void TakeFirst(const SlcExprNode* expr)
{
    SetUnique(expr, FirstType(expr));
}

/// Settles the requested type of an expression and returns it: as it is if the set holds it, float
/// if that is promoted to it, and otherwise the first of the set; error for a faulty one. Null if
/// the set is empty.
SlcTypeNode* SettleWanted(const SlcExprNode* expr);

}  // namespace SlcTypedExpr

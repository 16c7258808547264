#pragma once

#include <vector>

#include "symbols/SlcPossibleTypes.h"

/// Short forms for queries of the typing passes on an expression with a set of types.
namespace SlcTypedExpr {

/// Returns the first member of the set that is the same type as `type`, or is error; null if there
/// is none.
[[nodiscard]] inline SlcTypeNode* Find(const SlcExprNode* expr, SlcTypeNode* type)
{
    return SlcPossibleTypes::Of(expr)->IsInTypes(type, false);
}

/// True if the set contains `type`, or error; the point family counts as one type.
[[nodiscard]] inline bool HasType(const SlcExprNode* expr, SlcTypeNode* type)
{
    return Find(expr, type) != nullptr;
}

/// True if the set contains the type, one that is promoted to it, or one that it is promoted to.
[[nodiscard]] inline bool Matches(const SlcExprNode* expr, SlcTypeNode* type)
{
    return SlcPossibleTypes::Of(expr)->IsInTypes(type, true) != nullptr;
}

/// Returns all types that the expression can have; empty if there is none.
[[nodiscard]] inline const std::vector<SlcTypeNode*>& TypesOf(const SlcExprNode* expr)
{
    return SlcPossibleTypes::Of(expr)->GetTypes();
}

/// True if the expression can have no type; its own rule reports why.
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

/// True if the expression has its own report, so that a context must not report a missing type.
[[nodiscard]] inline bool HasOwnReport(const SlcExprNode* expr)
{
    return IsUntyped(expr) || IsFaulty(expr);
}

/// Returns the first type of the set; `error` if the set is empty.
[[nodiscard]] inline SlcTypeNode* FirstType(const SlcExprNode* expr)
{
    return IsUntyped(expr) ? SlcTypeNode::AError() : TypesOf(expr).front();
}

/// Selects the type, which the walk reads when it visits the expression.
inline void SetUnique(const SlcExprNode* expr, SlcTypeNode* type)
{
    SlcPossibleTypes::Of(expr)->SetUniqueType(type);
}

/// Selects the first type of the set, if the context gives no reason to choose another.
inline void SelectFirst(const SlcExprNode* expr)
{
    SetUnique(expr, FirstType(expr));
}

/// Sets the requested type of an expression to one of its set, and returns it: the requested type
/// if the set contains it, float if that is promoted to it, otherwise the first of the set; error
/// for a faulty expression. Null if the set is empty.
SlcTypeNode* ResolveRequestedType(const SlcExprNode* expr);

}  // namespace SlcTypedExpr

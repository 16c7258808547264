#pragma once

#include <vector>

#include "symbols/SlcPossibleTypes.h"

/// Short forms for the queries and selections of the typing passes, on an expression that has its
/// set of types.
namespace SlcTypedExpr {

/// Returns the first member of the set that is the same type as `type` or, unless `type` is void,
/// is error; null if there is none. The point family counts as one type.
[[nodiscard]] inline SlcTypeNode* Find(const SlcExprNode* expr, SlcTypeNode* type)
{
    return SlcPossibleTypes::Of(expr)->IsInTypes(type, false);
}

/// True if the set contains `type` or error, as compared by `Find`.
[[nodiscard]] inline bool HasType(const SlcExprNode* expr, SlcTypeNode* type)
{
    return Find(expr, type) != nullptr;
}

/// True if the set contains `type` or error, as compared by `Find`, or a type that is promoted to
/// `type` or to which `type` is promoted.
[[nodiscard]] inline bool Matches(const SlcExprNode* expr, SlcTypeNode* type)
{
    return SlcPossibleTypes::Of(expr)->IsInTypes(type, true) != nullptr;
}

/// Returns all types that the expression can have; empty if there is none.
[[nodiscard]] inline const std::vector<SlcTypeNode*>& TypesOf(const SlcExprNode* expr)
{
    return SlcPossibleTypes::Of(expr)->GetTypes();
}

/// True if the expression can have no type; its own rule, or that of one of its parts, reports why.
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

/// True if the expression has or gets its own report, so that a context must not report that a type
/// is missing.
[[nodiscard]] inline bool HasOwnReport(const SlcExprNode* expr)
{
    return IsUntyped(expr) || IsFaulty(expr);
}

/// Returns the first type of the set; `error` if the set is empty.
[[nodiscard]] inline SlcTypeNode* FirstType(const SlcExprNode* expr)
{
    return IsUntyped(expr) ? SlcTypeNode::AError() : TypesOf(expr).front();
}

/// Selects the type, which `SlcResolveUniqueType` reads when it visits the expression.
inline void SetUnique(const SlcExprNode* expr, SlcTypeNode* type)
{
    SlcPossibleTypes::Of(expr)->SetUniqueType(type);
}

/// Selects the first type of the set, or error if the set is empty. For a context that gives no
/// reason to choose another type.
inline void SelectFirst(const SlcExprNode* expr)
{
    SetUnique(expr, FirstType(expr));
}

/// Replaces the requested type, the unique type of the expression, unless the set contains it. The
/// replacement is float if the set contains float and a float is promoted to the requested type,
/// otherwise the first type of the set, which is error for a faulty expression. Returns the unique
/// type. If the set is empty, returns null and changes nothing.
SlcTypeNode* ResolveRequestedType(const SlcExprNode* expr);

}  // namespace SlcTypedExpr

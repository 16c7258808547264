#pragma once

#include "icode/SlcLexType.h"

// Properties of the type of a local or parameter on which generated declarations depend.

/// True for an array. False for a reference to an element, which is treated like its element.
[[nodiscard]] inline bool IsArray(const SlcOperand& local)
{
    return local->GetType()->IsArrayType();
}

/// Returns the element's type for an array, otherwise the type itself.
[[nodiscard]] inline const SlcTypeNode* ElementType(const SlcOperand& local)
{
    const SlcTypeNode* type = local->GetType();
    return IsArray(local) ? static_cast<const SlcArrayTypeNode*>(type)->GetElementType() : type;
}

/// Returns the number of elements; 1 for a local that is not an array.
[[nodiscard]] inline int ElementCount(const SlcOperand& local)
{
    return IsArray(local) ? static_cast<const SlcArrayTypeNode*>(local->GetType())->GetLength() : 1;
}

/// True for a string or an array of strings, but not for a reference to an element.
[[nodiscard]] inline bool OwnsStrings(const SlcOperand& local)
{
    return !local->GetType()->IsArrayRefType() && ElementType(local)->IsStringType();
}

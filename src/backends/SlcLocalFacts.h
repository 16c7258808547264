#pragma once

#include "icode/SlcLexType.h"

// Facts on the type of a local that its declarations depend on.

/// False for a reference to an element, which counts as its element.
[[nodiscard]] inline bool IsArray(const SlcOperand& local)
{
    return local->GetType()->IsArrayType();
}

/// The element's type for an array, else the type itself.
[[nodiscard]] inline const SlcTypeNode* ElementType(const SlcOperand& local)
{
    const SlcTypeNode* type = local->GetType();
    return IsArray(local) ? static_cast<const SlcArrayTypeNode*>(type)->GetElementType() : type;
}

/// The number of elements; 1 for a local that is not an array.
[[nodiscard]] inline int ElementCount(const SlcOperand& local)
{
    return IsArray(local) ? static_cast<const SlcArrayTypeNode*>(local->GetType())->GetLength() : 1;
}

/// A string or an array of them; a reference to one owns nothing.
[[nodiscard]] inline bool OwnsStrings(const SlcOperand& local)
{
    return !local->GetType()->IsArrayRefType() && ElementType(local)->IsStringType();
}

#pragma once

#include "icode/SlcLexType.h"

// What declarations of a local need to know of its type.

/// False of a reference to an element, which answers as its element does.
[[nodiscard]] inline bool IsArray(const SlcOperand& local)
{
    return local->GetType()->IsArrayType();
}

/// Of an array its element's type, of any other local its own.
[[nodiscard]] inline const SlcTypeNode* ElementType(const SlcOperand& local)
{
    const SlcTypeNode* type = local->GetType();
    return IsArray(local) ? static_cast<const SlcArrayTypeNode*>(type)->GetElementType() : type;
}

/// Elements of an array, 1 for any other local.
[[nodiscard]] inline int ElementCount(const SlcOperand& local)
{
    return IsArray(local) ? static_cast<const SlcArrayTypeNode*>(local->GetType())->GetLength() : 1;
}

/// A string or an array of them; a reference to one owns nothing.
[[nodiscard]] inline bool OwnsStrings(const SlcOperand& local)
{
    return !local->GetType()->IsArrayRefType() && ElementType(local)->IsStringType();
}

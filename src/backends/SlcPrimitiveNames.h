#pragma once

#include <string>
#include <string_view>

#include "icode/SlcTransformICode.h"
#include "sqx/SqxPrimitive.h"

// Names of primitives, which generated C++ and byte-code share, and the words for types in them.

/// Returns the word for a type in the names of primitives; empty if there is none, as for arrays
/// and integers. The point family has one word. A reference to an element has that of the element.
[[nodiscard]] std::string_view SlcTypeWord(const SlcTypeNode* type);

/// Returns the name of the primitive that assigns a value of type `source` to a variable of type
/// `dest`, which must allow this; empty if one of the types has no word.
[[nodiscard]] std::string SlcAssignName(const SlcTypeNode* dest, const SlcTypeNode* source);

enum class SlcTransformDirection { FromSpace, ToSpace };

/// Returns the primitive of a transform. Primitives are named from the opposite end: a value from a
/// named space is transformed to the current one, or to RGB.
[[nodiscard]] SqxPrimitive SlcTransformPrimitive(const SlcTransformSpaceICode& code,
                                                 SlcTransformDirection direction);

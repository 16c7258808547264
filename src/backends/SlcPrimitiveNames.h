#pragma once

#include <string>
#include <string_view>

#include "icode/SlcTransformICode.h"
#include "sqx/SqxPrimitive.h"

// The parts of names that generated C++ and byte-code share.

/// Returns the word for a type in the names of primitives; empty if no primitive has operands of
/// the type. The point family has one word. A reference to an element has that of the element.
[[nodiscard]] std::string_view SlcTypeWord(const SlcTypeNode* type);

/// Returns the primitive that assigns a value of one type to a variable of another; empty if there
/// is none.
[[nodiscard]] std::string SlcAssignName(const SlcTypeNode* dest, const SlcTypeNode* source);

enum class SlcTransformDirection { FromSpace, ToSpace };

/// Returns the primitive of a transform. Primitives are named from the opposite end: a value from a
/// named space is transformed to the current one, or to RGB.
[[nodiscard]] SqxPrimitive SlcTransformPrimitive(const SlcTransformSpaceICode& code,
                                                 SlcTransformDirection direction);

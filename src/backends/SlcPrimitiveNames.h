#pragma once

#include <string>
#include <string_view>

#include "icode/SlcTransformICode.h"
#include "sqx/SqxPrimitive.h"

// The parts of names that generated C++ and byte-code share.

/// The word of a type in the names of primitives; empty for a type that none takes. The point
/// family has one word. A reference to an element has that of the element.
[[nodiscard]] std::string_view SlcTypeWord(const SlcTypeNode* type);

/// The primitive that assigns a value of one type to a variable of another; empty for a type that
/// has none.
[[nodiscard]] std::string SlcAssignName(const SlcTypeNode* dest, const SlcTypeNode* source);

enum class SlcTransformDirection { FromSpace, ToSpace };

/// The primitive of a transform. They are named from the other end: what comes from a named space
/// goes to the current one, or to RGB.
[[nodiscard]] SqxPrimitive SlcTransformPrimitive(const SlcTransformSpaceICode& code,
                                                 SlcTransformDirection direction);

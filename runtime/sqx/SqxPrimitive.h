#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

/// The primitives: the operations of byte-code instructions, of macros in generated C++ and of the
/// machine. An enumerator has the name of the instruction or macro, without the suffix of a form.
enum class SqxPrimitive : unsigned short {
#define SQX_CARD(primitive, text) primitive,
#include "sqx/SqxCards.def"
};

/// The forms of a primitive. Each form that byte-code can contain has a separate number.
enum class SqxForm : unsigned char {
    Plain,      // for a point or for the grid, see `SqxRun`: no suffix
    Grid,       // loops over all points itself: "_SIMD"
    GridWhere,  // for the points whose flag is set: "_SIMD_IF_TRUE"
    Where,      // the same for a primitive without a form `GridWhere`: "_IF_TRUE"
};

inline constexpr std::string_view k_sqxFormSuffixes[] = {"", "_SIMD", "_SIMD_IF_TRUE", "_IF_TRUE"};

inline constexpr std::size_t k_sqxPrimitiveCount = 0
#define SQX_CARD(primitive, text) +1
#include "sqx/SqxCards.def"
    ;

/// Returns the name of a primitive, for reports and generated C++.
[[nodiscard]] std::string_view SqxPrimitiveName(SqxPrimitive primitive);
/// Returns the name with the suffix of a form, as in byte-code and generated C++.
[[nodiscard]] std::string_view SqxFormName(SqxPrimitive primitive, SqxForm form);
/// Returns the primitive with this name, which has no suffix of a form; none if there is none. O(n)
/// for n cards.
[[nodiscard]] std::optional<SqxPrimitive> SqxPrimitiveNamed(std::string_view name);

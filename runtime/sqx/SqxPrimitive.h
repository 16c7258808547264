#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

/// The primitives: the operations of byte-code instructions and of macros in generated C++. Each
/// enumerator has the name that both use, without the suffix of a form.
enum class SqxPrimitive : unsigned short {
#define SQX_CARD(primitive, text) primitive,
#include "sqx/SqxCards.def"
};

/// The forms of a primitive, each with its own number.
enum class SqxForm : unsigned char {
    Plain,      // for a point, or once for the grid
    Grid,       // loops over all points itself: the name ends in "_SIMD"
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
/// Returns the primitive with a name; nothing if there is none. Linear in the number of primitives.
[[nodiscard]] std::optional<SqxPrimitive> SqxPrimitiveNamed(std::string_view name);

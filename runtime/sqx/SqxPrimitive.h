#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

/// The primitives: what an instruction of byte-code does, and a macro of generated C++. The values
/// have the names of both, without the suffix of a form.
enum class SqxPrimitive : unsigned short {
#define SQX_CARD(primitive, text) primitive,
#include "sqx/SqxCards.def"
};

/// The forms of a primitive, each with its own number.
enum class SqxForm : unsigned char {
    Plain,      // at a point, or once for the grid
    Grid,       // at all points by itself: the name ends in "_SIMD"
    GridWhere,  // where a flag is true: "_SIMD_IF_TRUE"
    Where,      // the same of a primitive without a plain form at a point: "_IF_TRUE"
};

inline constexpr std::string_view k_sqxFormSuffixes[] = {"", "_SIMD", "_SIMD_IF_TRUE", "_IF_TRUE"};

inline constexpr std::size_t k_sqxPrimitiveCount = 0
#define SQX_CARD(primitive, text) +1
#include "sqx/SqxCards.def"
    ;

/// The name of a primitive, as text of reports and of generated C++.
[[nodiscard]] std::string_view SqxPrimitiveName(SqxPrimitive primitive);
/// The same with the suffix of a form, as the form is named in byte-code and generated C++.
[[nodiscard]] std::string_view SqxFormName(SqxPrimitive primitive, SqxForm form);
/// The primitive of a name; nothing if there is none. Linear in the primitives.
[[nodiscard]] std::optional<SqxPrimitive> SqxPrimitiveNamed(std::string_view name);

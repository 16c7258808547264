#pragma once

#include <array>
#include <span>
#include <string_view>

/// The predefined variables that a function or a texture access reads although they are not
/// arguments.
///
/// This is the only list of them: the shader's facts announce the variables to the renderer,
/// liveness keeps assignments to them, and the lowering evaluates the lights. If a row is missing
/// here, an assignment before the call may be removed as dead.
struct SlcImplicitReads {
    std::string_view primitive;  // without the suffix of a grid form; `*` matches any text
    bool looksAtLights;          // the lights must have been evaluated for `P`
    std::array<std::string_view, 4> variables;  // empty ones last

    /// Null for a primitive that reads only its arguments. Linear in the rows, which are few.
    [[nodiscard]] static const SlcImplicitReads* Of(std::string_view primitive);
    /// All rows.
    [[nodiscard]] static std::span<const SlcImplicitReads> All();
};

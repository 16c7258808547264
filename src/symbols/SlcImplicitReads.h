#pragma once

#include <array>
#include <span>
#include <string_view>

/// The predefined variables that a function or an access reads without having them as arguments.
///
/// The one list of them: the shader's facts make the variables known to the renderer, liveness
/// keeps what has been assigned to them, and the lowering has the lights run. A row that is
/// missing here lets a value be dropped in front of the call.
struct SlcImplicitReads {
    std::string_view primitive;  // without suffixes of forms; `*` stands for any text
    bool looksAtLights;          // the lights must have run for `P`
    std::array<std::string_view, 4> variables;  // empty ones last

    /// Null for a primitive that reads its arguments alone. Linear in the rows, which are few.
    [[nodiscard]] static const SlcImplicitReads* Of(std::string_view primitive);
    /// All rows.
    [[nodiscard]] static std::span<const SlcImplicitReads> All();
};

#pragma once

#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

// Values as JSON (RFC 8259).

/// Members keep the order in which they are set. Numbers have single precision and are written with
/// the fewest digits that read back to the same value.
using SqxOrderedJson = nlohmann::basic_json<nlohmann::ordered_map, std::vector, std::string, bool,
                                            std::int64_t, std::uint64_t, float>;

/// Whole numbers are written without a point. A number must be finite.
[[nodiscard]] inline SqxOrderedJson SqxJsonNumber(float number)
{
    constexpr float k_mostExact = 1U << 24U;
    if (std::abs(number) < k_mostExact && number == std::trunc(number) &&
        !(number == 0 && std::signbit(number)))
        return static_cast<std::int64_t>(number);
    return number;
}

/// Returns the text on one line. Invalid UTF-8 becomes the replacement character.
[[nodiscard]] inline std::string SqxJsonLine(const SqxOrderedJson& json)
{
    return json.dump(-1, ' ', false, SqxOrderedJson::error_handler_t::replace);
}

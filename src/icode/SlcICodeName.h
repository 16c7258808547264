#pragma once

#include <string_view>

class SlcICode;

/// Returns the name of the instruction's class, as spelled in the source, for dumps and internal
/// errors. It is static text.
[[nodiscard]] std::string_view SlcICodeName(SlcICode& code);

#pragma once

#include <string_view>

class SlcICode;

/// The name of the instruction's class, as the source spells it.
[[nodiscard]] std::string_view SlcICodeName(SlcICode& code);

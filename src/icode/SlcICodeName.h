#pragma once

#include <string_view>

class SlcICode;

/// The name of the instruction's class, as the source spells it: for dumps and reports of our own
/// faults. It points to static text.
[[nodiscard]] std::string_view SlcICodeName(SlcICode& code);

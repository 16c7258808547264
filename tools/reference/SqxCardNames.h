#pragma once

#include <string>

/// The text of runtime/shading/QxCardNames.h: the macros by which generated C++ calls the functions
/// that cards name. A preprocessor cannot make macros of the cards, so a tool does.
[[nodiscard]] std::string SqxCardNames();

#pragma once

#include <string>

/// Returns the text of runtime/shading/QxCardNames.h: the macros by which generated C++ calls the
/// functions that cards name. A tool writes them, since the preprocessor cannot generate macros
/// from the cards.
[[nodiscard]] std::string SqxCardNames();

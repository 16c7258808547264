#pragma once

#include <string>

/// Returns the text of runtime/shading/QxCardNames.h: the macros by which generated C++ calls the
/// functions, and computes the expressions, that cards contain. A tool writes these macros, since
/// the preprocessor cannot generate macros from the cards.
[[nodiscard]] std::string SqxCardNames();

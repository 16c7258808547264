#pragma once

#include <string>

/// Returns the text of runtime/shading/QxCardNames.h: the macros by which generated C++ calls the
/// functions, and computes the expressions, in the cards of `runtime/sqx/SqxCards.def`. A tool
/// writes these macros, since the preprocessor cannot generate macros from the cards.
[[nodiscard]] std::string SqxCardNames();

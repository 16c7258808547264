#pragma once

#include <string>
#include <vector>

#include "compiler/QxCompiler.h"
#include "sqxls/SqxLsText.h"

/// Keeps one report of a string without an end, and moves it to the quote that most likely lacks
/// its partner. `path` is that of the text, as `SqxLsNormalPath` writes it.
void SqxLsKeepOneOfOpenString(std::vector<QxCompileReport>& reports, const std::string& path,
                              const SqxLsText& text);

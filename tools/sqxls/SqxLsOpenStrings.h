#pragma once

#include <string>
#include <vector>

#include "compiler/QxCompiler.h"
#include "sqxls/SqxLsText.h"

/// If the text contains an unclosed string, replaces the reports that it causes in the text by a
/// single one, at the quote that is most likely unclosed. `path` is the path of the text, as
/// `SqxLsNormalPath` returns it.
void SqxLsKeepOneOfOpenString(std::vector<QxCompileReport>& reports, const std::string& path,
                              const SqxLsText& text);

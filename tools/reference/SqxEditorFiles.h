#pragma once

#include <string>

/// The syntax file by which Vim colors shaders.
[[nodiscard]] std::string SqxVimSyntax();

/// A grammar in the form of TextMate, as JSON, which several editors read.
[[nodiscard]] std::string SqxTextMateGrammar();

#pragma once

#include <string>

// Keywords, types, predefined variables and functions are those of the compiler's tables: an editor
// colors what the compiler knows.

/// The syntax file by which Vim colors shaders.
[[nodiscard]] std::string SqxVimSyntax();

/// A grammar in the form of TextMate, as JSON, which several editors read.
[[nodiscard]] std::string SqxTextMateGrammar();

/// The syntax file by which Kate knows shaders and colors them, as XML.
[[nodiscard]] std::string SqxKateSyntax();

#pragma once

#include <string>

// Keywords, types, predefined variables and functions come from the compiler's tables, so that
// editors know the same words as the compiler.

/// Returns the syntax file for Vim.
[[nodiscard]] std::string SqxVimSyntax();

/// Returns a TextMate grammar as JSON, which several editors read.
[[nodiscard]] std::string SqxTextMateGrammar();

/// Returns the syntax file for Kate, as XML.
[[nodiscard]] std::string SqxKateSyntax();

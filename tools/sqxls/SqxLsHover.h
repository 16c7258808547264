#pragma once

#include <string>

#include "compiler/QxSourceIndex.h"
#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/hover`: declaration, type, detail and default of a name, the overloads and the
/// meaning of a built-in, the kinds of shader that know a predefined variable, the expansion of a
/// macro.
[[nodiscard]] SqxJson SqxLsHover(SqxLsWorkspace& workspace, const SqxJson& params);

/// The declarations of all overloads of a built-in with what it does, as Markdown; empty for a word
/// that is none. `chosen` is a declaration that is marked, or empty.
[[nodiscard]] std::string SqxLsBuiltInText(const std::string& name, const std::string& chosen);
/// The same of a predefined variable.
[[nodiscard]] std::string SqxLsPredefinedText(const std::string& name);
/// "uniform", "varying", or empty.
[[nodiscard]] std::string SqxLsDetailWord(QxDetail detail);

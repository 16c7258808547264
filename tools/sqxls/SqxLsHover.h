#pragma once

#include <string>

#include "compiler/QxSourceIndex.h"
#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/hover`: returns the declaration, type, detail and default of a name; the overloads
/// and the meaning of a built-in; the shader types that have a predefined variable; or the
/// expansion of a macro. Returns null if there is no name at the position.
[[nodiscard]] SqxJson SqxLsHover(SqxLsWorkspace& workspace, const SqxJson& params);

/// Returns the declarations and the meaning of a built-in, as Markdown; empty for any other word.
/// `chosen` is the declaration to mark, or empty.
[[nodiscard]] std::string SqxLsBuiltInText(const std::string& name, const std::string& chosen);
/// Returns the declaration, the meaning and the shader types of a predefined variable or constant,
/// as Markdown; empty for any other word.
[[nodiscard]] std::string SqxLsPredefinedText(const std::string& name);
/// Returns "uniform", "varying", or an empty text.
[[nodiscard]] std::string SqxLsDetailWord(QxDetail detail);

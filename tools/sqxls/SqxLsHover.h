#pragma once

#include <string>

#include "compiler/QxSourceIndex.h"
#include "sqxls/SqxLsWorkspace.h"

/// `textDocument/hover`: returns the declaration of a name, the shader or function to which it
/// belongs, and its derived detail; for a built-in or a predefined variable, the texts of the
/// functions below; for a macro, its definition and the expansion of this use. Returns null if
/// there is no name at the position.
[[nodiscard]] SqxJson SqxLsHover(SqxLsWorkspace& workspace, const SqxJson& params);

/// Returns the declarations and the meaning of a built-in function, as Markdown, with a link to its
/// documentation if that is found; empty for any other word. `chosen` is the declaration to
/// mark, or empty.
[[nodiscard]] std::string SqxLsBuiltInText(const std::string& name, const std::string& chosen);
/// Returns the declaration and the meaning of a predefined variable or `PI`, and for a variable the
/// types of shaders that have it, as Markdown; empty for any other word.
[[nodiscard]] std::string SqxLsPredefinedText(const std::string& name);
/// Returns "uniform" or "varying"; an empty text for any other detail.
[[nodiscard]] std::string SqxLsDetailWord(QxDetail detail);

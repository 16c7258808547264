#pragma once

#include <string>
#include <string_view>

#include "support/SlcPtr.h"

class SlcSemanticError;

/// Writes `text` under `path`, whole or not at all. A file that cannot be opened is fatal, "Cannot
/// open `path` for `purpose`"; one that cannot be finished throws `SlcCompilationError`.
void SlcWriteWholeFile(const SlcPtr<SlcSemanticError>& errors, const std::string& path,
                       std::string_view text, std::string_view purpose);

#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "frontend/SlcDefinitionNodes.h"

/// Returns the name of the last parsed shader, which determines the names of output files. The
/// grammar sets it.
[[nodiscard]] std::string& SlcShaderName();

/// Parses a preprocessed source. `strict` does not affect the accepted language. Throws
/// `SlcCompilationError` if an error was reported; the tree is then deleted.
[[nodiscard]] std::unique_ptr<SlcDefinitionsNode> ParseCode(std::FILE* file, bool strict);
/// Does the same for a text in memory.
[[nodiscard]] std::unique_ptr<SlcDefinitionsNode> ParseCode(std::string_view text, bool strict);
/// Does the same, but for a text with faults returns the tree of what could be parsed; null if
/// there is none. `NbErrors` says whether there were faults.
[[nodiscard]] std::unique_ptr<SlcDefinitionsNode> ParseFaultyCode(std::string_view text);
/// Does the same as `ParseFaultyCode`, but parses more of a text with faults; later reports may be
/// consequences of earlier ones.
[[nodiscard]] std::unique_ptr<SlcDefinitionsNode> ParseForIndex(std::string_view text);

#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "frontend/SlcDefinitionNodes.h"

/// The name of the shader that was parsed last; it names the output files. Set by the grammar.
[[nodiscard]] std::string& SlcShaderName();

/// Parses a preprocessed source. `strict` changes nothing in the language that is accepted.
/// Throws `SlcCompilationError` if anything was reported as an error; there is no tree then.
[[nodiscard]] std::unique_ptr<SlcDefinitionsNode> ParseCode(std::FILE* file, bool strict);
/// The same of a text in memory.
[[nodiscard]] std::unique_ptr<SlcDefinitionsNode> ParseCode(std::string_view text, bool strict);
/// The same, but of a text with faults it gives the tree of what could be read; null if there is
/// none. `NbErrors` says whether there were faults.
[[nodiscard]] std::unique_ptr<SlcDefinitionsNode> ParseFaultyCode(std::string_view text);
/// Reads more of a text with faults, whose reports may follow from each other.
[[nodiscard]] std::unique_ptr<SlcDefinitionsNode> ParseForIndex(std::string_view text);

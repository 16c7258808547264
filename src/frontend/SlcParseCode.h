#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "frontend/SlcDefinitionNodes.h"

/// Returns the name of the last shader that this compilation has parsed; empty if there is none. It
/// determines the names of output files. The grammar sets it.
[[nodiscard]] std::string& SlcShaderName();

/// Parses a preprocessed source and returns its tree. Resets the counts of errors and warnings.
/// `strict` does not affect the accepted language. Throws `SlcCompilationError` if an error was
/// reported; the tree is then deleted. Ends the compilation with status 2 (`EndCompilation`) if a
/// token or a line is too long.
[[nodiscard]] std::unique_ptr<SlcDefinitionsNode> ParseCode(std::FILE* file, bool strict);
/// Does the same for a text in memory.
[[nodiscard]] std::unique_ptr<SlcDefinitionsNode> ParseCode(std::string_view text, bool strict);
/// Does the same, but for a text with faults returns the tree of what could be parsed; null if
/// there is none. `NbErrors` says whether there were faults.
[[nodiscard]] std::unique_ptr<SlcDefinitionsNode> ParseFaultyCode(std::string_view text);
/// Does the same as `ParseFaultyCode`, but parses more of a text with faults: if the parser gives
/// up, the text is repaired and parsed again, at most 12 times. Each parse makes its reports again,
/// and later reports may be consequences of earlier ones.
[[nodiscard]] std::unique_ptr<SlcDefinitionsNode> ParseForIndex(std::string_view text);

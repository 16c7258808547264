#pragma once

#include <string>
#include <string_view>

#include "sqx/SqxShader.h"

/// Prints a byte-code file as text: the sections, then one instruction a line.
///
/// Predefined variables and parameters stand under their names, locals as "%" and their number,
/// constants as their value. Of a file that could not be read whole this is what was read.
[[nodiscard]] std::string SqxDump(const SqxShader& shader);

/// The main block, under "main", or the initializer of a parameter, under its name. Empty if there
/// is none.
[[nodiscard]] std::string SqxDumpSection(const SqxShader& shader, std::string_view section);

/// The instructions of a block, with their positions, set in by the brackets around them.
[[nodiscard]] std::string SqxDumpBlock(const SqxShader& shader, const SqxBlock& block);

/// A variable as it stands in instructions: "Kd", "%12", "0.5". A number that the file lacks is "?"
/// and the number.
[[nodiscard]] std::string SqxVariableText(const SqxShader& shader, std::size_t number);

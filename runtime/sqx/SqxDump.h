#pragma once

#include <string>
#include <string_view>

#include "sqx/SqxShader.h"

/// Prints a byte-code file as text: the sections, then one instruction per line.
///
/// Predefined variables and parameters are printed by name, locals as "%" and their number,
/// constants as their value. If a file could not be read completely, the part that was read is
/// printed.
[[nodiscard]] std::string SqxDump(const SqxShader& shader);

/// Prints the block of a section: "main", or the name of a parameter for its initializer. Empty if
/// there is none.
[[nodiscard]] std::string SqxDumpSection(const SqxShader& shader, std::string_view section);

/// Prints the instructions of a block with their positions, indented by brackets.
[[nodiscard]] std::string SqxDumpBlock(const SqxShader& shader, const SqxBlock& block);

/// Prints a variable as in instructions: "Kd", "%12", "0.5". An invalid number is printed as "?"
/// and the number.
[[nodiscard]] std::string SqxVariableText(const SqxShader& shader, std::size_t number);

#pragma once

#include <string>
#include <string_view>

#include "sqx/SqxShader.h"

/// Returns a byte-code file as text: the type of the shader, variables, spaces, initializers,
/// shadeops, whether it traces rays and modifies `P`, and main. Each variable and instruction is on
/// a separate line. If the file could not be read completely, the text contains the part that was
/// read; it is empty if not even the head could be read.
///
/// Predefined variables and parameters are shown by name, locals as "%" and their number, constants
/// as their value.
[[nodiscard]] std::string SqxDump(const SqxShader& shader);

/// Returns the block of a section as text, with a heading. The section is "main", or the name of a
/// parameter for its initializer. Empty if there is no such section, or if it was not read.
[[nodiscard]] std::string SqxDumpSection(const SqxShader& shader, std::string_view section);

/// Returns the instructions of a block as text, with their positions, indented by brackets.
[[nodiscard]] std::string SqxDumpBlock(const SqxShader& shader, const SqxBlock& block);

/// Returns a variable as shown in instructions: "Kd", "%12", "0.5". For an invalid number, returns
/// "?" and the number.
[[nodiscard]] std::string SqxVariableText(const SqxShader& shader, std::size_t number);

#pragma once

#include <string>

#include "sqx/SqxShader.h"

/// Prints a byte-code file as text: the sections, then one instruction a line.
///
/// Predefined variables and parameters stand under their names, locals as "%" and their number,
/// constants as their value.
[[nodiscard]] std::string SqxDump(const SqxShader& shader);

/// The kind of shader, then one parameter a line: name, detail and type, the coordinate or color
/// space of its default value if it has one, and "output" if the shader hands it back.
[[nodiscard]] std::string SqxDumpParameters(const SqxShader& shader);

/// The instructions of a block, with their positions, set in by the brackets around them.
[[nodiscard]] std::string SqxDumpBlock(const SqxShader& shader, const SqxBlock& block);

/// A variable as it stands in instructions.
[[nodiscard]] std::string SqxVariableText(const SqxShader& shader, std::size_t number);

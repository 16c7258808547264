#pragma once

#include <string>
#include <vector>

#include "sqxshade/SqxShadeOptions.h"

/// Returns words from which `SqxReadShadeOptions` reads these options, without defaults and without
/// the output file.
[[nodiscard]] std::vector<std::string> SqxShadeWords(const SqxShadeOptions& options);

/// Returns these words as a command line for the shell, after the name of the program.
[[nodiscard]] std::string SqxShadeCommand(const SqxShadeOptions& options);

// Values as written in options; floats have the fewest digits that read back to the same value.

/// Returns the numbers, separated by commas.
[[nodiscard]] std::string SqxNumbersText(const std::vector<float>& numbers);
[[nodiscard]] std::string SqxColorText(const QxRGBColor& color);
[[nodiscard]] std::string SqxShapeWord(SqxShapeKind shape);
[[nodiscard]] std::string SqxLightKindWord(SqxPictureLight::Kind kind);

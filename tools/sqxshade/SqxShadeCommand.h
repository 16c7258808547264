#pragma once

#include <string>
#include <vector>

#include "sqxshade/SqxShadeOptions.h"

/// Returns words from which `SqxReadShadeOptions` reads these options, without the output file and,
/// except for positions of lights, without defaults.
[[nodiscard]] std::vector<std::string> SqxShadeWords(const SqxShadeOptions& options);

/// Returns a command line for the shell: "sqxshade" and these words, quoted where necessary.
[[nodiscard]] std::string SqxShadeCommand(const SqxShadeOptions& options);

// Values as written in options; floats have the fewest digits that read back to the same value.

/// Returns the numbers, separated by commas.
[[nodiscard]] std::string SqxNumbersText(const std::vector<float>& numbers);
[[nodiscard]] std::string SqxColorText(const QxRGBColor& color);
[[nodiscard]] std::string SqxShapeWord(SqxShapeKind shape);
[[nodiscard]] std::string SqxLightKindWord(SqxPictureLight::Kind kind);

#pragma once

#include <string>
#include <vector>

#include "sqxshade/SqxShadeOptions.h"

/// The words that `SqxReadShadeOptions` reads these options from; defaults are left out. The output
/// file is left to the default.
[[nodiscard]] std::vector<std::string> SqxShadeWords(const SqxShadeOptions& options);

/// The same as a line for the shell, with the program in front.
[[nodiscard]] std::string SqxShadeCommand(const SqxShadeOptions& options);

// Values as written in options: floats in the fewest digits that give them back.

/// Numbers between commas.
[[nodiscard]] std::string SqxNumbersText(const std::vector<float>& numbers);
[[nodiscard]] std::string SqxColorText(const QxRGBColor& color);
[[nodiscard]] std::string SqxShapeWord(SqxShapeKind shape);
[[nodiscard]] std::string SqxLightKindWord(SqxPictureLight::Kind kind);

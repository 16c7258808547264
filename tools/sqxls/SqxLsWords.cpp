// The words are listed here since the compiler's tables do not contain their meanings.
//
// Tested by tests/sqxls/SqxLsCompletionTest.cpp.

#include "sqxls/SqxLsWords.h"

namespace {

// clang-format off
//   word         meaning
constexpr SqxLsWord k_spaces[] = {
    {"current",   "the space in which a shader computes"},
    {"shader",    "the space of the shader, as it was placed in the scene"},
    {"object",    "the space of the object"},
    {"world",     "the space of the scene"},
    {"camera",    "the space of the camera"},
    {"screen",    "across the picture, with perspective"},
    {"NDC",       "across the picture, 0 to 1"},
    {"raster",    "across the picture, in pixels"},
};

constexpr SqxLsWord k_colorSpaces[] = {
    {"rgb",       "red, green, blue: the space in which a shader computes"},
    {"hsv",       "hue, saturation, value"},
    {"hsl",       "hue, saturation, lightness"},
    {"xyz",       "CIE tristimulus values"},
    {"XYZ",       "CIE tristimulus values"},
    {"xyY",       "chromaticity x and y, luminance Y"},
    {"YIQ",       "luma and the two chroma signals of NTSC"},
};

constexpr SqxLsWord k_textureArguments[] = {
    {"blur",      "float: width of a blur, as a fraction of the texture"},
    {"sblur",     "float: the blur along s"},
    {"tblur",     "float: the blur along t"},
    {"width",     "float: factor for the size of the area"},
    {"swidth",    "float: the factor along s"},
    {"twidth",    "float: the factor along t"},
    {"filter",    "string: name of the filter"},
    {"samples",   "float: number of samples"},
    {"fidelity",  "float: quality"},
    {"lerp",      "float: 1 blends two resolutions of the texture"},
    {"fill",      "float: value of a channel that the texture lacks"},
    {"bias",      "float: distance within which a surface does not shadow itself"},
    {"gapbias",   "float: accepted, but not passed to the renderer"},
    {"source",    "two to four points: corners of the light"},
};

constexpr SqxLsWord k_directives[] = {
    {"include",   "reads another file here"},
    {"define",    "defines a macro"},
    {"undef",     "removes a macro"},
    {"if",        "reads the lines up to the next condition if the value is not 0"},
    {"ifdef",     "reads the lines if the macro is defined"},
    {"ifndef",    "reads the lines if the macro is not defined"},
    {"elif",      "another condition"},
    {"else",      "reads the lines if no condition before it holds"},
    {"endif",     "ends a condition"},
    {"line",      "sets the line and the file of reports"},
    {"error",     "reports an error"},
    {"pragma",    "is ignored"},
};
// clang-format on

}  // namespace

std::span<const SqxLsWord> SqxLsSpaces()
{
    return k_spaces;
}

std::span<const SqxLsWord> SqxLsColorSpaces()
{
    return k_colorSpaces;
}

std::span<const SqxLsWord> SqxLsTextureArguments()
{
    return k_textureArguments;
}

std::span<const SqxLsWord> SqxLsDirectives()
{
    return k_directives;
}

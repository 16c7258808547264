// The words that have a meaning in strings. The compiler's tables do not contain them with their
// meanings.
//
// Tested by tests/sqxls/SqxLsCompletionTest.cpp.

#include "sqxls/SqxLsWords.h"

namespace {

// clang-format off
//   word         meaning
constexpr SqxLsWord k_spaces[] = {
    {"current",   "the space in which a shader computes"},
    {"shader",    "that of the shader, as it was placed in the scene"},
    {"object",    "that of the object"},
    {"world",     "that of the scene"},
    {"camera",    "that of the camera"},
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
    {"blur",      "float: width of a blur as a share of the texture"},
    {"sblur",     "float: that along s"},
    {"tblur",     "float: that along t"},
    {"width",     "float: factor of the size of the area"},
    {"swidth",    "float: that along s"},
    {"twidth",    "float: that along t"},
    {"filter",    "string: name of the filter"},
    {"samples",   "float: number of samples"},
    {"fidelity",  "float: quality"},
    {"lerp",      "float: 1 to blend between two sizes of the texture"},
    {"fill",      "float: value of a channel that the texture lacks"},
    {"bias",      "float: distance within which nothing is in its own shadow"},
    {"gapbias",   "float: accepted, but not handed to the renderer"},
    {"source",    "two to four points: corners of the light"},
};

constexpr SqxLsWord k_directives[] = {
    {"include",   "reads another file here"},
    {"define",    "defines a macro"},
    {"undef",     "forgets a macro"},
    {"if",        "reads the lines up to the next condition if the value is not 0"},
    {"ifdef",     "reads them if there is the macro"},
    {"ifndef",    "reads them if there is no such macro"},
    {"elif",      "another condition"},
    {"else",      "reads the lines if no condition before holds"},
    {"endif",     "ends a condition"},
    {"line",      "sets the line and the file of reports"},
    {"error",     "reports an error"},
    {"pragma",    "is passed over"},
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

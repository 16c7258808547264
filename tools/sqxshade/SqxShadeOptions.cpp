// One table holds each option's name, its argument, how it is read and its text in `--help`.
// Parameters belong to the shader before them, or to the first shader if they come before it.
//
// The size and the numbers of samples and threads are checked here, before anything is compiled, so
// that a picture that would need too much memory is refused at once. The number of pictures in a
// sheet is not limited.
//
// Tested by tests/sqxshade/SqxShadeTest.cpp.

#include "sqxshade/SqxShadeOptions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <string_view>

namespace {

constexpr int k_maxSide = 8192;
constexpr int k_maxSamples = 16;
constexpr int k_maxThreads = 1024;
constexpr double k_maxAllSamples = 64.0e6;  // about 2 GB

using Options = SqxShadeOptions;

unsigned int ReadCount(const std::string& text, int most, const std::string& what)
{
    return static_cast<unsigned int>(SqxReadNumber(text, most, what));
}

[[noreturn]] void RefuseNumbers(const std::string& text, const std::string& what)
{
    throw SqxPictureError("The " + what + " must be made of numbers, but is '" + text + "'");
}

/// Reads three numbers, or one for all three.
QxRGBColor ReadColor(const std::string& text, const std::string& what)
{
    const std::vector<float> numbers = SqxReadNumbers(text, what);
    if (numbers.size() == 1)
        return {numbers[0], numbers[0], numbers[0]};
    if (numbers.size() != 3)
        throw SqxPictureError("The " + what + " must have 3 numbers, but is '" + text + "'");
    return {numbers[0], numbers[1], numbers[2]};
}

float ReadOneNumber(const std::string& text, const std::string& what)
{
    const std::vector<float> numbers = SqxReadNumbers(text, what);
    if (numbers.size() != 1)
        throw SqxPictureError("The " + what + " must be one number, but is '" + text + "'");
    return numbers[0];
}

QxVector3 ReadVector(const std::string& text, const std::string& what)
{
    const std::vector<float> numbers = SqxReadNumbers(text, what);
    if (numbers.size() != 3)
        throw SqxPictureError("The " + what + " must have 3 numbers, but is '" + text + "'");
    return {numbers[0], numbers[1], numbers[2]};
}

std::pair<std::string, std::string> ReadAssignment(const std::string& text, const char* what)
{
    const std::size_t sign = text.find('=');
    if (sign == std::string::npos || sign == 0)
        throw SqxPictureError(std::string(what) + " must be NAME=VALUE, but is '" + text + "'");
    return {text.substr(0, sign), text.substr(sign + 1)};
}

SqxPictureLight::Kind ReadLightKind(const std::string& word)
{
    if (word == "point")
        return SqxPictureLight::Kind::Point;
    if (word == "distant")
        return SqxPictureLight::Kind::Distant;
    if (word == "ambient")
        return SqxPictureLight::Kind::Ambient;
    throw SqxPictureError("A light must be 'point', 'distant' or 'ambient', but is '" + word + "'");
}

SqxPictureLight ReadLight(const std::string& text)
{
    const std::vector<std::string> pieces = SqxSplit(text, ':');
    SqxPictureLight light;
    light.kind = ReadLightKind(pieces[0]);
    if (light.kind != SqxPictureLight::Kind::Ambient)
        light.from = {-2.5F, 3, -4};
    for (std::size_t i = 1; i < pieces.size(); ++i) {
        const auto [name, value] = ReadAssignment(pieces[i], "A setting of a light");
        const std::string what = "light's '" + name + "'";
        if (name == "color")
            light.color = ReadColor(value, what);
        else if (name == "intensity")
            light.intensity = ReadOneNumber(value, what);
        else if (name == "from" && light.kind != SqxPictureLight::Kind::Ambient)
            light.from = ReadVector(value, what);
        else if (name == "to" && light.kind == SqxPictureLight::Kind::Distant)
            light.to = ReadVector(value, what);
        else
            throw SqxPictureError("A light of kind '" + pieces[0] + "' has no '" + name + "'");
    }
    if (light.kind == SqxPictureLight::Kind::Distant && light.from == light.to)
        throw SqxPictureError("A distant light's 'from' and 'to' must differ: '" + text + "'");
    return light;
}

void ReadSize(Options& options, const std::string& text)
{
    const std::size_t sign = text.find('x');
    if (sign == std::string::npos)
        throw SqxPictureError("The size must be WIDTHxHEIGHT, but is '" + text + "'");
    options.picture.width = ReadCount(text.substr(0, sign), k_maxSide, "width");
    options.picture.height = ReadCount(text.substr(sign + 1), k_maxSide, "height");
}

/// Adds a parameter to the last shader; before the first one, to a shader without a path.
void ReadParameter(Options& options, const std::string& text)
{
    if (options.shaders.empty())
        options.shaders.emplace_back();
    options.shaders.back().parameters.push_back(ReadAssignment(text, "A parameter"));
}

/// Adds a shader, or sets the path of one that has only parameters. A path after '--' may start
/// with '-'; "./" keeps the compiler from reading it as an option.
void AddShader(Options& options, const std::string& path)
{
    if (options.shaders.empty() || !options.shaders.back().path.empty())
        options.shaders.emplace_back();
    options.shaders.back().path = path.starts_with('-') ? "./" + path : path;
}

// clang-format off
constexpr std::string_view k_description[] = {
    "Shades a shape with a shader and writes the picture as a PNG file. SHADER is a source, SHADER.sl, which is compiled first, or SHADER.sqx, byte-code or a shared object. A surface shader colors the shape. A displacement shader moves its points; normals follow if the shader leaves them. A light shader lights it from the upper left, in place of the default lights. A volume shader fills the space between the camera and the shape, and an imager shader works on the finished picture. One of each kind, and several lights, can be given together. Where no surface shader is given, the shape is of plain plastic.",
    "In the camera's space, which is 'current', x leads to the right, y up, and z away from the camera; points and vectors in '--param' are meant in it. 'world' has the same directions, but its origin is the middle of the shape, 5 units away; lights are placed in it. 'shader' and 'object' are the shape's own, and 'screen', 'NDC' and 'raster' the picture's. s and u run to the right, t and v down. A light shader is at the origin of its own 'shader' space, from where z leads to the shape.",
    "There are no files and no other things to see: a texture is a check of two colors, environments and traced rays see a sky above a ground.",
};

struct OptionRow {
    SqxOption option;  // with an argument if it takes a value
    void (*read)(Options& options, const std::string& value);
};

//   word, argument and effect; how the option is read
constexpr OptionRow k_options[] = {
    {{"-o", "FILE", "the picture; SHADER.png in the working directory by default"},
     [](Options& o, const std::string& v) { o.output = v; }},
    {{"--sphere", "", "shades a sphere of radius 1; the default"},
     [](Options& o, const std::string&) { o.picture.shape = SqxShapeKind::Sphere; }},
    {{"--square", "", "shades a square of side 2 that faces the camera"},
     [](Options& o, const std::string&) { o.picture.shape = SqxShapeKind::Square; }},
    {{"--torus", "", "shades a torus of outer radius 1"},
     [](Options& o, const std::string&) { o.picture.shape = SqxShapeKind::Torus; }},
    {{"--param", "NAME=VALUE", "sets a parameter of the shader before it: a text, a number, or numbers between commas; a color may be one number"},
     ReadParameter},
    {{"--size", "WIDTHxHEIGHT", "pixels; 256x256 by default"}, ReadSize},
    {{"--samples", "N", "N times N samples smooth each pixel; 3 by default"},
     [](Options& o, const std::string& v) { o.picture.samples = ReadCount(v, k_maxSamples, "number of samples"); }},
    {{"--background", "COLOR", "what is seen beside and through the shape"},
     [](Options& o, const std::string& v) { o.picture.background = ReadColor(v, "background"); }},
    {{"--color", "COLOR", "the surface's color Cs; white by default"},
     [](Options& o, const std::string& v) { o.picture.color = ReadColor(v, "color"); }},
    {{"--opacity", "COLOR", "the surface's opacity Os; 1 by default"},
     [](Options& o, const std::string& v) { o.picture.opacity = ReadColor(v, "opacity"); }},
    {{"--light", "KIND[:SETTING...]", "a light in place of the default ones; can be repeated: 'point:from=X,Y,Z', 'distant:from=X,Y,Z:to=X,Y,Z' or 'ambient', each also with 'color=R,G,B' and 'intensity=N'"},
     [](Options& o, const std::string& v) { o.picture.lights.push_back(ReadLight(v)); }},
    {{"-I", "DIR", "searches DIR for included files and for shadeop libraries"},
     [](Options& o, const std::string& v) { o.build.folders.push_back(std::filesystem::absolute(v).string()); }},
    {{"-D", "NAME[=VALUE]", "defines a preprocessor symbol"},
     [](Options& o, const std::string& v) { o.build.definitions.push_back(v); }},
    {{"--texture", "NAME=FILE.png", "what shaders see as the texture NAME; without one it is a check"},
     [](Options& o, const std::string& v) { o.textures.push_back(ReadAssignment(v, "A texture")); }},
    {{"--sheet", "", "shades each shader by itself, and writes all pictures side by side into one file"},
     [](Options& o, const std::string&) { o.sheet = true; }},
    {{"--dso", "", "builds shared objects of sources in place of byte-code"},
     [](Options& o, const std::string&) { o.build.sharedObject = true; }},
    {{"--linear", "", "writes the values of colors as they are, in place of sRGB"},
     [](Options& o, const std::string&) { o.linear = true; }},
    {{"--threads", "N", "shades on N cores; on all by default"},
     [](Options& o, const std::string& v) { o.picture.threads = ReadCount(v, k_maxThreads, "number of threads"); }},
    {{"-h, --help", "", "prints this text"},
     [](Options& o, const std::string&) { o.information = SqxInformation::Help; }},
    {{"--version", "", "prints the version"},
     [](Options& o, const std::string&) { o.information = SqxInformation::Version; }},
};

constexpr auto k_optionTexts = [] {
    std::array<SqxOption, std::size(k_options)> options;
    std::transform(std::begin(k_options), std::end(k_options), options.begin(),
                   [](const OptionRow& row) { return row.option; });
    return options;
}();

constexpr SqxEntry k_environment[] = {
    {"SLC_CPP_COMMAND", "the preprocess command for sources, as for shaderqx(1)"},
    {"SLC_CC_COMMAND", "the C++ command of '--dso', as for shaderqx(1)"},
};

constexpr SqxEntry k_files[] = {
    {"SHADER.png", "the picture"},
};

constexpr SqxEntry k_statuses[] = {
    {"0", "the picture is written"},
    {"1", "a shader is refused, or the picture could not be made or written"},
    {"2", "an option or an argument is invalid"},
};

constexpr SqxEntry k_examples[] = {
    {"sqxshade marble.sl --param frequency=4 -o marble.png", "shades a sphere, with a value for a parameter"},
    {"sqxshade --square brick.sqx spotlight.sqx", "lights a square by a light shader"},
    {"sqxshade --sheet -o all.png shaders/*.sl", "puts a library on one sheet"},
};
// clang-format on

void ReadOption(SqxOptionWords& words, Options& options)
{
    for (const OptionRow& row : k_options) {
        const SqxOption& option = row.option;
        std::optional<std::string> value;
        if (!option.argument.empty())
            value = words.Value(option.word, option.argument);
        else if (words.Is(option.word))
            value.emplace();
        if (value)
            return row.read(options, *value);
    }
    words.RefuseWord();
}

void ReadWords(const std::vector<std::string>& arguments, Options& options,
               const SqxReadMoreOptions& readMore)
{
    const auto readOption = [&](SqxOptionWords& words) {
        if (!readMore || !readMore(words))
            ReadOption(words, options);
    };
    SqxReadWords(arguments, readOption, [&](const std::string& word) { AddShader(options, word); });
}

void Complete(Options& options)
{
    if (options.information != SqxInformation::None)
        return;
    if (options.shaders.empty() || options.shaders.back().path.empty())
        throw SqxPictureError("No shader is given");
    if (options.output.empty())
        options.output = std::filesystem::path(options.shaders[0].path).stem().string() + ".png";
    const double samples = static_cast<double>(options.picture.width) * options.picture.height *
                           options.picture.samples * options.picture.samples;
    if (samples > k_maxAllSamples)
        throw SqxPictureError("The picture is too large for " +
                              std::to_string(options.picture.samples) +
                              " samples along each edge of a pixel");
}

}  // namespace

std::vector<std::string> SqxSplit(const std::string& text, char separator)
{
    std::vector<std::string> pieces(1);
    for (const char c : text) {
        if (c == separator)
            pieces.emplace_back();
        else
            pieces.back() += c;
    }
    return pieces;
}

std::vector<float> SqxReadNumbers(const std::string& text, const std::string& what)
{
    std::vector<float> numbers;
    for (const std::string& piece : SqxSplit(text, ',')) {
        float number = 0;
        const char* end = piece.data() + piece.size();
        const auto [rest, failure] = std::from_chars(piece.data(), end, number);
        if (failure != std::errc() || rest != end || !std::isfinite(number))
            RefuseNumbers(text, what);
        numbers.push_back(number);
    }
    return numbers;
}

SqxShadeOptions SqxReadShadeOptions(const std::vector<std::string>& arguments,
                                    const SqxReadMoreOptions& readMore)
{
    Options options;
    try {
        ReadWords(arguments, options, readMore);
        Complete(options);
    } catch (const SqxPictureError& error) {
        throw SqxUsageError(error.what());  // so that callers catch one class
    }
    return options;
}

const SqxProgram& SqxShadeProgram()
{
    static constexpr SqxProgram k_program = {
        "sqxshade",
        "makes pictures of shaders",
        "[options] SHADER...",
        k_description,
        k_optionTexts,
        k_environment,
        k_files,
        k_statuses,
        k_examples,
        "sl sqx",
    };
    return k_program;
}

// The inverse of reading options. Defaults are omitted, except positions of lights, so that a
// command shows only what is special about a picture.
//
// Tested by tests/sqxshade.

#include "sqxshade/SqxShadeCommand.h"

#include "process/SqxProcess.h"
#include "sqx/SqxNumberText.h"

namespace {

[[nodiscard]] std::string VectorText(const QxVector3& vector)
{
    return SqxNumbersText({vector.x, vector.y, vector.z});
}

[[nodiscard]] bool IsSame(const QxRGBColor& a, const QxRGBColor& b)
{
    return a.r == b.r && a.g == b.g && a.b == b.b;
}

[[nodiscard]] std::string LightText(const SqxPictureLight& light)
{
    std::string text = SqxLightKindWord(light.kind);
    if (light.kind != SqxPictureLight::Kind::Ambient)
        text += ":from=" + VectorText(light.from);
    if (light.kind == SqxPictureLight::Kind::Distant)
        text += ":to=" + VectorText(light.to);
    if (!IsSame(light.color, {1, 1, 1}))
        text += ":color=" + SqxColorText(light.color);
    if (light.intensity != 1)
        text += ":intensity=" + SqxNumberText(light.intensity);
    return text;
}

/// Collects the words of options and their values.
class Words {
public:
    void Add(const char* option, std::string value)
    {
        words.emplace_back(option);
        words.push_back(std::move(value));
    }
    void AddColor(const char* option, const QxRGBColor& color, const QxRGBColor& usual)
    {
        if (!IsSame(color, usual))
            Add(option, SqxColorText(color));
    }
    void AddCount(const char* option, unsigned int count, unsigned int usual)
    {
        if (count != usual)
            Add(option, std::to_string(count));
    }

    std::vector<std::string> words;
};

void AddPicture(Words& words, const SqxPictureSettings& picture)
{
    const SqxPictureSettings usual;
    if (picture.shape != usual.shape)
        words.words.push_back("--" + SqxShapeWord(picture.shape));
    if (picture.width != usual.width || picture.height != usual.height)
        words.Add("--size", std::to_string(picture.width) + "x" + std::to_string(picture.height));
    words.AddCount("--samples", picture.samples, usual.samples);
    words.AddColor("--background", picture.background, usual.background);
    words.AddColor("--color", picture.color, usual.color);
    words.AddColor("--opacity", picture.opacity, usual.opacity);
    for (const SqxPictureLight& light : picture.lights)
        words.Add("--light", LightText(light));
    words.AddCount("--threads", picture.threads, usual.threads);
}

[[nodiscard]] std::string PlainOrQuoted(const std::string& word)
{
    constexpr auto k_plain =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._+-=,:";
    const bool isPlain = !word.empty() && word.find_first_not_of(k_plain) == std::string::npos;
    return isPlain ? word : SqxShellWord(word);
}

}  // namespace

std::vector<std::string> SqxShadeWords(const SqxShadeOptions& options)
{
    Words words;
    AddPicture(words, options.picture);
    for (const std::string& folder : options.build.folders)
        words.Add("-I", folder);
    for (const std::string& definition : options.build.definitions)
        words.Add("-D", definition);
    for (const auto& [name, file] : options.textures)
        words.Add("--texture", name + "=" + file);
    if (options.sheet)
        words.words.emplace_back("--sheet");
    if (options.build.sharedObject)
        words.words.emplace_back("--dso");
    if (options.linear)
        words.words.emplace_back("--linear");
    for (const SqxShadeOptions::Shader& shader : options.shaders) {
        words.words.push_back(shader.path);
        for (const auto& [name, value] : shader.parameters)
            words.Add("--param", name + "=" + value);
    }
    return words.words;
}

std::string SqxShadeCommand(const SqxShadeOptions& options)
{
    std::string line = "sqxshade";
    for (const std::string& word : SqxShadeWords(options))
        line += " " + PlainOrQuoted(word);
    return line;
}

std::string SqxNumbersText(const std::vector<float>& numbers)
{
    std::string text;
    for (const float number : numbers)
        text += (text.empty() ? "" : ",") + SqxNumberText(number);
    return text;
}

std::string SqxColorText(const QxRGBColor& color)
{
    return SqxNumbersText({color.r, color.g, color.b});
}

std::string SqxShapeWord(SqxShapeKind shape)
{
    switch (shape) {
    case SqxShapeKind::Sphere:
        return "sphere";
    case SqxShapeKind::Square:
        return "square";
    case SqxShapeKind::Torus:
        break;
    }
    return "torus";
}

std::string SqxLightKindWord(SqxPictureLight::Kind kind)
{
    switch (kind) {
    case SqxPictureLight::Kind::Ambient:
        return "ambient";
    case SqxPictureLight::Kind::Point:
        return "point";
    case SqxPictureLight::Kind::Distant:
        break;
    }
    return "distant";
}

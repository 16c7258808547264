// Each line of a scene is a statement: a word that says what it makes, names, and words
// "key=value". The function of its statement takes the words that it knows; what is left over is
// reported.

#include "SceneText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <deque>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "ObjFile.h"
#include "QxMath.h"
#include "Shapes.h"
#include "TextureScene.h"

namespace {

using Error = std::runtime_error;

std::string Quoted(const std::string& text)
{
    return "'" + text + "'";
}

/// Such as "1,0.5,2".
std::vector<float> ReadNumbers(const std::string& key, const std::string& text)
{
    std::vector<float> numbers;
    std::istringstream parts(text + ",");
    for (std::string part; std::getline(parts, part, ',');) {
        const char* const end = part.data() + part.size();
        const auto [rest, failed] = std::from_chars(part.data(), end, numbers.emplace_back());
        if (failed != std::errc() || rest != end || !std::isfinite(numbers.back()))
            throw Error(Quoted(key) + " takes numbers, but is set to " + Quoted(text));
    }
    return numbers;
}

/// The words of one line. Those that a statement knows are taken from it.
class Line {
public:
    explicit Line(const std::string& text)
    {
        std::istringstream words(text.substr(0, text.find('#')));
        words >> m_statement;
        for (std::string word; words >> word;) {
            const std::size_t sign = word.find('=');
            if (sign == std::string::npos)
                m_names.push_back(word);
            else if (!m_values.try_emplace(word.substr(0, sign), word.substr(sign + 1)).second)
                throw Error(Quoted(word.substr(0, sign)) + " is given twice");
        }
    }

    [[nodiscard]] const std::string& Statement() const { return m_statement; }

    /// The next word without a key.
    [[nodiscard]] std::string TakeName(const char* what)
    {
        if (m_names.empty())
            throw Error(Quoted(m_statement) + " needs " + what);
        std::string name = m_names.front();
        m_names.pop_front();
        return name;
    }

    [[nodiscard]] std::string Take(const std::string& key, const std::string& otherwise)
    {
        const auto node = m_values.extract(key);
        return node.empty() ? otherwise : node.mapped();
    }

    /// Three numbers, or one for all three.
    template <class Triple = QxVector3>
    [[nodiscard]] Triple TakeTriple(const std::string& key, const std::string& otherwise)
    {
        const std::vector<float> numbers = ReadNumbers(key, Take(key, otherwise));
        if (numbers.size() == 1)
            return {numbers[0], numbers[0], numbers[0]};
        if (numbers.size() != 3)
            throw Error(Quoted(key) + " takes one number or three");
        return {numbers[0], numbers[1], numbers[2]};
    }

    /// Sets `value`, if the key is there, to a number in that range.
    template <class Number>
    void TakeNumber(const std::string& key, float least, float most, Number& value)
    {
        const std::string text = Take(key, "");
        if (text.empty())
            return;
        const std::vector<float> numbers = ReadNumbers(key, text);
        if (numbers.size() != 1 || numbers[0] < least || numbers[0] > most)
            throw Error((std::ostringstream()
                         << Quoted(key) << " takes a number from " << least << " to " << most
                         << ", but is set to " << Quoted(text))
                            .str());
        value = static_cast<Number>(numbers[0]);
    }

    /// What is scaled, then turned around x, y and z by degrees, then moved.
    [[nodiscard]] QxMatrix44 TakePlace()
    {
        const auto turn = TakeTriple("turn", "0");
        const auto scale = TakeTriple("scale", "1");
        if (scale.x * scale.y * scale.z == 0)
            throw Error("'scale' must not be 0");
        QxMatrix44 place = QxTranslate(QxMatrix44::Identity(), TakeTriple("at", "0"));
        place = QxRotate(place, QxRadians(turn.z), {0, 0, 1});
        place = QxRotate(place, QxRadians(turn.y), {0, 1, 0});
        place = QxRotate(place, QxRadians(turn.x), {1, 0, 0});
        return QxScale(place, scale);
    }

    /// All words with keys that are left.
    [[nodiscard]] std::map<std::string, std::string> TakeRest() { return std::move(m_values); }

    /// Throws if anything is left.
    void Finish() const
    {
        if (!m_names.empty() || !m_values.empty())
            throw Error(Quoted(m_statement) + " has no " +
                        Quoted(m_names.empty() ? m_values.begin()->first : m_names.front()));
    }

private:
    std::string m_statement;
    std::deque<std::string> m_names;
    std::map<std::string, std::string> m_values;
};

class SceneReader {
public:
    SceneReader(std::filesystem::path folder, std::filesystem::path shaderFolder)
        : m_folder(std::move(folder)),
          m_shaderFolder(std::move(shaderFolder))
    {
    }

    void Read(Line line);
    [[nodiscard]] std::unique_ptr<World> Take();

private:
    using Shader = std::shared_ptr<const ShaderSetting>;

    void ReadPicture(Line& line);
    void ReadCamera(Line& line);
    void ReadSky(Line& line);
    void ReadShader(Line& line);
    void ReadLight(Line& line);
    void ReadObject(Line& line);
    [[nodiscard]] Mesh ReadSphere(Line& line, const QxMatrix44& toWorld);
    [[nodiscard]] QxHostValue ReadValue(const QxShader::Parameter& parameter,
                                        const std::string& text);
    [[nodiscard]] Shader FindShader(const std::string& name, QxShaderInterface::QxType type) const;
    [[nodiscard]] const SqxTexture* ReadTexture(const std::string& name);
    /// Beside the scene or, if there is none, among the shaders.
    [[nodiscard]] std::filesystem::path FindFile(const std::string& name) const;

    std::filesystem::path m_folder;
    std::filesystem::path m_shaderFolder;
    std::map<std::string, Shader> m_shaders;
    std::unique_ptr<World> m_world = std::make_unique<World>();
};

void SceneReader::Read(Line line)
{
    static const std::map<std::string, void (SceneReader::*)(Line&)> statements = {
        {"", nullptr},
        {"picture", &SceneReader::ReadPicture},
        {"camera", &SceneReader::ReadCamera},
        {"sky", &SceneReader::ReadSky},
        {"shader", &SceneReader::ReadShader},
        {"light", &SceneReader::ReadLight},
        {"sphere", &SceneReader::ReadObject},
        {"plane", &SceneReader::ReadObject},
        {"mesh", &SceneReader::ReadObject},
    };
    const auto found = statements.find(line.Statement());
    if (found == statements.end())
        throw Error("Unknown statement " + Quoted(line.Statement()));
    if (found->second)
        (this->*found->second)(line);
    line.Finish();
}

std::unique_ptr<World> SceneReader::Take()
{
    m_world->geometry.Commit();
    return std::move(m_world);
}

void SceneReader::ReadPicture(Line& line)
{
    line.TakeNumber("width", 1, 8192, m_world->width);
    line.TakeNumber("height", 1, 8192, m_world->height);
    line.TakeNumber("samples", 1, 8, m_world->samples);
    line.TakeNumber("levels", 0, 30, m_world->rayLevels);
}

void SceneReader::ReadCamera(Line& line)
{
    const QxVector3 at = line.TakeTriple("at", "0,0,-5");
    const QxVector3 z = QxNormalize(line.TakeTriple("to", "0") - at);
    const QxVector3 x = QxNormalize(QxCross({0, 1, 0}, z));
    const QxVector3 y = QxCross(z, x);
    if (QxLength(x) == 0)
        throw Error("The camera must not look straight up or down");
    line.TakeNumber("angle", 1, 170, m_world->camera.angle);
    m_world->camera.toWorld = {
        {{x.x, x.y, x.z, 0}, {y.x, y.y, y.z, 0}, {z.x, z.y, z.z, 0}, {at.x, at.y, at.z, 1}}};
}

void SceneReader::ReadSky(Line& line)
{
    m_world->sky = line.TakeTriple<QxRGBColor>("color", "1");
    const std::string map = line.Take("map", "");
    m_world->skyMap = map.empty() ? nullptr : ReadTexture(map);
}

const SqxTexture* SceneReader::ReadTexture(const std::string& name)
{
    std::shared_ptr<const SqxTexture>& texture = m_world->textures[name];
    if (!texture)
        texture = SqxTexture::Read(FindFile(name));
    return texture.get();
}

std::filesystem::path SceneReader::FindFile(const std::string& name) const
{
    const std::filesystem::path beside = m_folder / name;
    return std::filesystem::exists(beside) ? beside : m_shaderFolder / name;
}

void SceneReader::ReadShader(Line& line)
{
    const std::string name = line.TakeName("a name");
    const std::string file = line.TakeName("the name of a compiled shader") + ".sqx";
    ShaderSetting setting = {QxShader::Open(m_shaderFolder / file), {}};
    const auto& parameters = setting.shader->Parameters();
    for (const auto& [key, text] : line.TakeRest()) {
        const auto found = std::find_if(parameters.begin(), parameters.end(),
                                        [&key = key](const auto& p) { return p.name == key; });
        if (found == parameters.end())
            throw Error("Shader " + Quoted(file) + " has no parameter " + Quoted(key));
        setting.values.emplace_back(key, ReadValue(*found, text));
    }
    // A value that does not fit is reported here rather than where the shader is used.
    QxHostSpaces spaces;
    (void)setting.NewInstance(spaces, QxMatrix44::Identity());
    if (!m_shaders.emplace(name, std::make_shared<const ShaderSetting>(std::move(setting))).second)
        throw Error("There are two shaders " + Quoted(name));
}

/// A text that ends with ".png" names a picture.
QxHostValue SceneReader::ReadValue(const QxShader::Parameter& parameter, const std::string& text)
{
    if (parameter.type == QxValueType::String) {
        if (text.ends_with(".png"))
            (void)ReadTexture(text);
        return text;
    }
    std::vector<float> numbers = ReadNumbers(parameter.name, text);
    if (parameter.type == QxValueType::Color && numbers.size() == 1)
        numbers.resize(3, numbers[0]);
    return {parameter.type, std::move(numbers)};
}

SceneReader::Shader SceneReader::FindShader(const std::string& name,
                                            QxShaderInterface::QxType type) const
{
    const auto found = m_shaders.find(name);
    if (found == m_shaders.end())
        throw Error("There is no shader " + Quoted(name));
    if (found->second->shader->Type() != type)
        throw Error("Shader " + Quoted(name) + " is of another kind than is needed here");
    return found->second;
}

void SceneReader::ReadLight(Line& line)
{
    const std::string name = line.TakeName("the name of a shader");
    m_world->lights.push_back({FindShader(name, QxShaderInterface::e_typeLight), line.TakePlace()});
}

void SceneReader::ReadObject(Line& line)
{
    static const std::map<std::string, ShadowKind> kinds = {
        {"opaque", ShadowKind::Opaque}, {"shader", ShadowKind::Shader}, {"none", ShadowKind::None}};
    const std::string name = line.TakeName("the name of a surface shader");
    const QxMatrix44 toWorld = line.TakePlace();
    const auto kind = kinds.find(line.Take("shadow", "opaque"));
    if (kind == kinds.end())
        throw Error("'shadow' is opaque, shader or none");
    m_world->objects.push_back({FindShader(name, QxShaderInterface::e_typeSurface), toWorld,
                                line.TakeTriple<QxRGBColor>("color", "1"),
                                line.TakeTriple<QxRGBColor>("opacity", "1"), kind->second});
    if (line.Statement() == "plane")
        m_world->geometry.Add(MakePlane(toWorld));
    else if (line.Statement() == "sphere")
        m_world->geometry.Add(ReadSphere(line, toWorld));
    else
        m_world->geometry.Add(ReadObjFile(FindFile(line.TakeName("a file")), toWorld));
}

Mesh SceneReader::ReadSphere(Line& line, const QxMatrix44& toWorld)
{
    unsigned int detail = 100;
    line.TakeNumber("detail", 1, 1000, detail);
    const std::string name = line.Take("displacement", "");
    TextureScene scene(m_world->textures);
    std::unique_ptr<QxShaderInstance> displacement;
    if (!name.empty())
        displacement = FindShader(name, QxShaderInterface::e_typeDisplacement)
                           ->NewInstance(scene.Spaces(), toWorld);
    return MakeSphere(toWorld, detail, displacement.get(), scene);
}

}  // namespace

std::unique_ptr<World> ReadScene(const std::string& path, const std::string& folder)
{
    std::ifstream file(path);
    if (!file)
        throw Error("Cannot read " + Quoted(path));
    SceneReader reader(std::filesystem::path(path).parent_path(), folder);
    int number = 0;
    for (std::string text; std::getline(file, text);) {
        ++number;
        try {
            reader.Read(Line(text));
        } catch (const std::exception& error) {
            throw Error(path + ":" + std::to_string(number) + ": " + error.what());
        }
    }
    return reader.Take();
}

// Each line of a scene is a statement: a word, names, and words "key=value"; or it is empty. A
// statement removes the words that it knows from the line. If words are left, one is reported.

#include "SceneText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "QxMath.h"
#include "Shapes.h"

namespace {

using Error = std::runtime_error;
using Type = QxShaderInterface;

constexpr const char* k_shaderName = "the name of a shader";
constexpr std::string_view k_shadowKinds[] = {"opaque", "shader", "none"};  // as `ShadowKind`

std::string Quoted(const std::string& text)
{
    return "'" + text + "'";
}

/// Reads a list such as "1,0.5,2". `key` is for the error.
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

/// The words of one line that a statement has not read yet.
class Line {
public:
    explicit Line(const std::string& text) : m_names(text.substr(0, text.find('#')))
    {
        m_names >> m_statement;
        std::string names;
        for (std::string word; m_names >> word;) {
            const std::size_t sign = word.find('=');
            if (sign == std::string::npos)
                names += word + " ";
            else if (!m_values.try_emplace(word.substr(0, sign), word.substr(sign + 1)).second)
                throw Error(Quoted(word.substr(0, sign)) + " is given twice");
        }
        m_names = std::istringstream(names);
    }

    [[nodiscard]] const std::string& Statement() const { return m_statement; }

    /// Removes and returns the next word without a key. Throws if there is none; `what` is for the
    /// error.
    [[nodiscard]] std::string TakeName(const char* what)
    {
        std::string name;
        if (!(m_names >> name))
            throw Error(Quoted(m_statement) + " needs " + what);
        return name;
    }

    [[nodiscard]] std::string Take(const std::string& key, const std::string& otherwise)
    {
        const auto node = m_values.extract(key);
        return node.empty() ? otherwise : node.mapped();
    }

    /// Removes a key and reads three numbers, or one for all three. `otherwise` is the text if the
    /// line does not have the key.
    template <class Triple = QxVector3>
    [[nodiscard]] Triple TakeTriple(const std::string& key, const std::string& otherwise)
    {
        std::vector<float> numbers = ReadNumbers(key, Take(key, otherwise));
        if (numbers.size() == 1)
            numbers.resize(3, numbers[0]);
        if (numbers.size() != 3)
            throw Error(Quoted(key) + " takes one number or three");
        return {numbers[0], numbers[1], numbers[2]};
    }

    /// Removes a key and sets `value` to its number, which must be in the range, and whole if
    /// `Number` is an integer. Leaves `value` unchanged if the line does not have the key.
    template <class Number>
    void TakeNumber(const std::string& key, int least, int most, Number& value)
    {
        const auto node = m_values.extract(key);
        if (node.empty())
            return;
        const std::string& text = node.mapped();
        const std::vector<float> numbers = ReadNumbers(key, text);
        if (numbers.size() != 1 || numbers[0] < static_cast<float>(least) ||
            numbers[0] > static_cast<float>(most))
            throw Error(Quoted(key) + " takes a number from " + std::to_string(least) + " to " +
                        std::to_string(most) + ", but is set to " + Quoted(text));
        if (std::is_integral_v<Number> && numbers[0] != std::trunc(numbers[0]))
            throw Error(Quoted(key) + " takes a whole number, but is set to " + Quoted(text));
        value = static_cast<Number>(numbers[0]);
    }

    /// Reads a transform: scales, then rotates around x, then y, then z by degrees, then moves.
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

    /// Removes and returns all remaining words with keys.
    [[nodiscard]] std::map<std::string, std::string> TakeRest() { return std::move(m_values); }

    /// Throws if any word is left.
    void Finish()
    {
        std::string left = m_values.empty() ? "" : m_values.begin()->first;
        if (m_names >> left || !left.empty())
            throw Error(Quoted(m_statement) + " has no " + Quoted(left));
    }

private:
    std::string m_statement;
    std::istringstream m_names;
    std::map<std::string, std::string> m_values;
};

class SceneReader {
public:
    SceneReader(std::filesystem::path folder, std::filesystem::path shaderFolder)
        : m_folder(std::move(folder)),
          m_shaderFolder(std::move(shaderFolder))
    {
    }

    void Read(Line line)
    {
        const std::string& word = line.Statement();
        if (word == "picture") {
            line.TakeNumber("width", 1, 8192, m_world->width);
            line.TakeNumber("height", 1, 8192, m_world->height);
            line.TakeNumber("samples", 1, 8, m_world->samples);
            line.TakeNumber("levels", 0, 30, m_world->rayLevels);
        } else if (word == "camera") {
            ReadCamera(line);
        } else if (word == "sky") {
            m_world->sky = line.TakeTriple<QxRGBColor>("color", "1");
            if (const std::string map = line.Take("map", ""); !map.empty())
                m_world->skyMap = ReadTexture(map);
        } else if (word == "shader") {
            ReadShader(line);
        } else if (word == "light") {
            const Setting shader = FindShader(line.TakeName(k_shaderName), Type::e_typeLight);
            m_world->lights.push_back({shader, line.TakePlace()});
        } else if (word == "plane" || word == "sphere" || word == "mesh") {
            ReadObject(line);
        } else if (!word.empty()) {
            throw Error("Unknown statement " + Quoted(word));
        }
        line.Finish();
    }

    [[nodiscard]] std::unique_ptr<World> Take()
    {
        m_world->geometry.Commit();
        return std::move(m_world);
    }

private:
    using Setting = std::shared_ptr<const ShaderSetting>;

    void ReadCamera(Line& line)
    {
        const QxVector3 at = line.TakeTriple("at", "0,0,-5");
        const QxVector3 z = QxNormalize(line.TakeTriple("to", "0") - at);
        const QxVector3 x = QxNormalize(QxCross({0, 1, 0}, z));
        const QxVector3 y = QxCross(z, x);
        if (QxLength(x) == 0)
            throw Error("The camera must not look straight up or down");
        line.TakeNumber("angle", 1, 170, m_world->cameraAngle);
        m_world->camera = {
            {{x.x, x.y, x.z, 0}, {y.x, y.y, y.z, 0}, {z.x, z.y, z.z, 0}, {at.x, at.y, at.z, 1}}};
    }

    void ReadShader(Line& line)
    {
        const std::string name = line.TakeName("a name");
        const std::string file = line.TakeName("the name of a compiled shader") + ".sqx";
        const auto setting = std::make_shared<ShaderSetting>(QxShader::Open(m_shaderFolder / file));
        for (const auto& [key, text] : line.TakeRest())
            SetParameter(*setting, key, text);
        if (!m_shaders.emplace(name, setting).second)
            throw Error("There are two shaders " + Quoted(name));
    }

    /// Sets a parameter. If it is a string, a text that ends with ".png" names a picture, which is
    /// read.
    void SetParameter(ShaderSetting& setting, const std::string& name, const std::string& text)
    {
        const QxParameterHandle handle = setting.shader->Handle(name);
        const QxValueType type =
            setting.shader->Parameters()[static_cast<std::size_t>(handle)].type;
        if (type == QxValueType::String) {
            if (text.ends_with(".png"))
                (void)ReadTexture(text);
            setting.values.Set(handle, text);
            return;
        }
        std::vector<float> numbers = ReadNumbers(name, text);
        if (type == QxValueType::Color && numbers.size() == 1)
            numbers.resize(3, numbers[0]);
        setting.values.Set(handle, {type, numbers});
    }

    void ReadObject(Line& line)
    {
        const Setting surface = FindShader(line.TakeName(k_shaderName), Type::e_typeSurface);
        const QxMatrix44 toWorld = line.TakePlace();
        const std::string shadow = line.Take("shadow", "opaque");
        const auto kind = std::find(std::begin(k_shadowKinds), std::end(k_shadowKinds), shadow);
        if (kind == std::end(k_shadowKinds))
            throw Error("'shadow' is opaque, shader or none");
        m_world->objects.push_back({surface, toWorld, line.TakeTriple<QxRGBColor>("color", "1"),
                                    line.TakeTriple<QxRGBColor>("opacity", "1"),
                                    static_cast<ShadowKind>(kind - std::begin(k_shadowKinds)),
                                    line.Statement() == "sphere"});
        m_world->geometry.Add(ReadMesh(line, toWorld));
    }

    [[nodiscard]] Mesh ReadMesh(Line& line, const QxMatrix44& toWorld)
    {
        if (line.Statement() == "plane")
            return MakePlane(toWorld);
        if (line.Statement() == "mesh")
            return ReadObjFile(FindFile(line.TakeName("a file")), toWorld);
        unsigned int detail = 100;
        line.TakeNumber("detail", 1, 1000, detail);
        const std::string name = line.Take("displacement", "");
        TextureScene scene(m_world->textures);
        std::unique_ptr<QxShaderInstance> displacement;
        if (!name.empty())
            displacement =
                FindShader(name, Type::e_typeDisplacement)->NewInstance(scene.Spaces(), toWorld);
        return MakeSphere(toWorld, detail, displacement.get(), scene);
    }

    [[nodiscard]] Setting FindShader(const std::string& name, Type::QxType type) const
    {
        const auto found = m_shaders.find(name);
        if (found == m_shaders.end())
            throw Error("There is no shader " + Quoted(name));
        if (found->second->shader->Type() != type)
            throw Error("Shader " + Quoted(name) + " is of another kind than is needed here");
        return found->second;
    }

    [[nodiscard]] const SqxTexture* ReadTexture(const std::string& name)
    {
        std::shared_ptr<const SqxTexture>& texture = m_world->textures[name];
        if (!texture)
            texture = SqxTexture::Read(FindFile(name));
        return texture.get();
    }

    /// Returns the path of a file in the folder of the scene if it exists there, or else in that of
    /// the shaders.
    [[nodiscard]] std::filesystem::path FindFile(const std::string& name) const
    {
        return std::filesystem::exists(m_folder / name) ? m_folder / name : m_shaderFolder / name;
    }

    std::filesystem::path m_folder;
    std::filesystem::path m_shaderFolder;
    std::map<std::string, Setting> m_shaders;
    std::unique_ptr<World> m_world = std::make_unique<World>();
};

}  // namespace

std::unique_ptr<World> ReadScene(const std::string& path, const std::string& folder)
{
    std::ifstream file(path);
    if (!file)
        throw Error("Cannot read " + Quoted(path));
    SceneReader reader(std::filesystem::path(path).parent_path(), folder);
    std::string text;
    for (int number = 1; std::getline(file, text); ++number)
        try {
            reader.Read(Line(text));
        } catch (const std::exception& error) {
            throw Error(path + ":" + std::to_string(number) + ": " + error.what());
        }
    return reader.Take();
}

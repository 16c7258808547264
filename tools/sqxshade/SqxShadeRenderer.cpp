#include "sqxshade/SqxShadeRenderer.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace {

constexpr unsigned int k_cells = 64;       // along an edge of a grid that is drawn
constexpr float k_samplesOfACell = 1.5F;   // how long a cell's edge is on the picture
constexpr unsigned int k_imagerRows = 64;  // of the picture, at a time

/// The value that a text gives a parameter.
QxHostValue ReadValue(const QxShader::Parameter& parameter, const std::string& text)
{
    if (parameter.type == QxValueType::String)
        return parameter.length == 1 ? std::vector{text} : SqxSplit(text, ',');
    std::vector<float> numbers = SqxReadNumbers(text, "value of '" + parameter.name + "'");
    const std::size_t width = QxFloatCount(parameter.type);
    if (width == 3 && parameter.length == 1 && numbers.size() == 1)
        numbers.assign(3, numbers[0]);
    if (numbers.size() != width * parameter.length) {
        const std::string array =
            parameter.length == 1 ? "" : "[" + std::to_string(parameter.length) + "]";
        throw SqxShadeError("Parameter '" + parameter.name + "' is a " +
                            QxTypeName(parameter.type) + array + " and takes " +
                            std::to_string(width * parameter.length) + " numbers, but is set to '" +
                            text + "'");
    }
    return {parameter.type, std::move(numbers)};
}

const char* NameOf(QxShaderInterface::QxType type)
{
    switch (type) {
    case QxShaderInterface::e_typeLight:
        return "light";
    case QxShaderInterface::e_typeSurface:
        return "surface";
    case QxShaderInterface::e_typeVolume:
        return "volume";
    case QxShaderInterface::e_typeDisplacement:
        return "displacement";
    case QxShaderInterface::e_typeImager:
        break;
    }
    return "imager";
}

/// What is no number is black.
unsigned char ByteOf(float value)
{
    return static_cast<unsigned char>(value > 0 ? std::min(value, 1.0F) * 255 + 0.5F : 0);
}

unsigned int CellsFor(float samples)
{
    return std::max(1U, static_cast<unsigned int>(std::ceil(samples / k_samplesOfACell)));
}

}  // namespace

SqxShadeRenderer::SqxShadeRenderer(const SqxShadeOptions& options)
    : m_options(options),
      m_shape(options.square),
      m_scene(m_shape, options.width, options.height)
{
    for (const SqxShadeOptions::Shader& shader : options.shaders)
        Load(shader);
    bool hasLight = !options.lights.empty();
    for (const auto& shader : m_shaders)
        if (shader->Shader().Type() == QxShaderInterface::e_typeLight) {
            m_scene.AddLight(*shader);
            hasLight = true;
        }
    m_scene.AddLights(options.lights);
    if (!hasLight)
        m_scene.AddDefaultLights();
}

void SqxShadeRenderer::Load(const SqxShadeOptions::Shader& shader)
{
    const bool isSource = std::filesystem::path(shader.path).extension() == ".sl";
    const std::string path = isSource ? m_build.Build(shader.path, m_options) : shader.path;
    const auto opened = QxShader::Open(path, m_options.folders);
    const QxShaderInterface::QxType type = opened->Type();
    if (type != QxShaderInterface::e_typeLight && Find(type))
        throw SqxShadeError(std::string("There are two shaders of the kind '") + NameOf(type) +
                            "'");
    auto instance = std::make_unique<QxShaderInstance>(opened, m_scene.Spaces());
    if (type == QxShaderInterface::e_typeLight)
        m_scene.PlaceLight(*instance);
    SetParameters(*instance, shader);
    m_shaders.push_back(std::move(instance));
}

void SqxShadeRenderer::SetParameters(QxShaderInstance& shader,
                                     const SqxShadeOptions::Shader& source)
{
    const auto& parameters = shader.Shader().Parameters();
    for (const auto& [name, text] : source.parameters) {
        const auto found =
            std::find_if(parameters.begin(), parameters.end(),
                         [&name = name](const auto& parameter) { return parameter.name == name; });
        if (found == parameters.end())
            throw SqxShadeError("Shader '" + source.path + "' has no parameter '" + name + "'");
        shader.Set(name, ReadValue(*found, text));
    }
}

QxShaderInstance* SqxShadeRenderer::Find(QxShaderInterface::QxType type) const
{
    for (const auto& shader : m_shaders)
        if (shader->Shader().Type() == type)
            return shader.get();
    return nullptr;
}

std::vector<unsigned char> SqxShadeRenderer::Render()
{
    SqxShadePicture picture(m_options.width, m_options.height, m_options.samples);
    DrawShape(picture);
    picture.Finish();
    if (QxShaderInstance* imager = Find(QxShaderInterface::e_typeImager))
        RunImager(picture, *imager);
    return Bytes(picture);
}

/// Grid by grid; each reaches one point further on all sides than what is drawn of it, so that
/// derivatives and normals have neighbours everywhere and no seam shows.
void SqxShadeRenderer::DrawShape(SqxShadePicture& picture)
{
    const auto edge =
        static_cast<float>(std::min(m_options.width, m_options.height) * m_options.samples);
    const unsigned int columns = CellsFor(m_shape.LengthAlongU() * edge);
    const unsigned int rows = CellsFor(m_shape.LengthAlongV() * edge);
    const float du = 1 / static_cast<float>(columns);
    const float dv = 1 / static_cast<float>(rows);
    for (unsigned int row = 0; row < rows; row += k_cells)
        for (unsigned int column = 0; column < columns; column += k_cells) {
            QxHostGrid grid(std::min(k_cells, columns - column) + 3,
                            std::min(k_cells, rows - row) + 3);
            m_shape.Place(grid, (static_cast<float>(column) - 1) * du,
                          (static_cast<float>(row) - 1) * dv, du, dv);
            ShadeGrid(grid);
            picture.Draw(grid);
        }
}

void SqxShadeRenderer::ShadeGrid(QxHostGrid& grid)
{
    grid.Set("Cs", m_options.color);
    grid.Set("Os", m_options.opacity);
    if (QxShaderInstance* displacement = Find(QxShaderInterface::e_typeDisplacement))
        Displace(grid, *displacement);
    if (QxShaderInstance* surface = Find(QxShaderInterface::e_typeSurface))
        surface->Run(grid, m_scene);
    else
        SqxShadePlastic(grid, m_scene);
    if (QxShaderInstance* volume = Find(QxShaderInterface::e_typeVolume))
        volume->Run(grid, m_scene);
}

void SqxShadeRenderer::Displace(QxHostGrid& grid, QxShaderInstance& shader)
{
    const std::vector<float> normals = grid.Get("N").numbers;
    shader.Run(grid, m_scene);
    SqxDeriveGeometry(grid);
    if (grid.Get("N").numbers == normals)
        grid.Set("N", grid.Get("Ng"));
}

/// Some rows at a time, which need less room.
void SqxShadeRenderer::RunImager(SqxShadePicture& picture, QxShaderInstance& shader)
{
    const unsigned int width = m_options.width;
    for (unsigned int first = 0; first < m_options.height; first += k_imagerRows) {
        const unsigned int rows = std::min(k_imagerRows, m_options.height - first);
        QxHostGrid grid(width, rows);
        const QxHiddenVariables at = grid.Hidden();
        const std::size_t offset = static_cast<std::size_t>(first) * width;
        for (std::size_t i = 0; i < grid.Size(); ++i) {
            at.Ci[i] = picture.colors[offset + i];
            at.Oi[i] = picture.opacities[offset + i];
            at.alpha[i] = (at.Oi[i].r + at.Oi[i].g + at.Oi[i].b) / 3;
            const float x = static_cast<float>(i % width) + 0.5F;
            const std::size_t row = first + i / width;
            const float y = static_cast<float>(row) + 0.5F;
            at.P[i] = {x, y, 0};
            at.u[i] = at.s[i] = x / static_cast<float>(width);
            at.v[i] = at.t[i] = y / static_cast<float>(m_options.height);
        }
        grid.Set("du", 1 / static_cast<float>(width));
        grid.Set("dv", 1 / static_cast<float>(m_options.height));
        shader.Run(grid, m_scene);
        for (std::size_t i = 0; i < grid.Size(); ++i) {
            picture.colors[offset + i] = at.Ci[i];
            picture.opacities[offset + i] = {at.alpha[i], at.alpha[i], at.alpha[i]};
        }
    }
}

std::vector<unsigned char> SqxShadeRenderer::Bytes(const SqxShadePicture& picture) const
{
    std::vector<unsigned char> bytes;
    bytes.reserve(picture.colors.size() * 3);
    for (std::size_t i = 0; i < picture.colors.size(); ++i) {
        const QxRGBColor color =
            picture.colors[i] + (1 - picture.opacities[i]) * m_options.background;
        for (int channel = 0; channel < 3; ++channel)
            bytes.push_back(ByteOf(color[channel]));
    }
    return bytes;
}

// The steps for a grid are displacement, normals of the displaced points, surface, and volume. A
// step without a shader is left out, but without a surface shader the shape is plastic. The imager
// runs on the finished pixels. If a displacement leaves `N` unchanged, the normals of the displaced
// surface are computed, as a renderer would do.
//
// Each thread has its own stage, since an instance shades one grid at a time.
//
// Tested by tests/picture/SqxPictureTest.cpp.

#include "picture/SqxPictureStage.h"

SqxPictureStage::SqxPictureStage(const SqxPictureSettings& settings, const SqxShape& shape)
    : m_settings(settings),
      m_scene(settings, shape)
{
    for (const SqxPictureSettings::Shader& shader : settings.shaders)
        AddInstance(shader);
    AddLights();
}

void SqxPictureStage::AddInstance(const SqxPictureSettings::Shader& shader)
{
    auto instance = std::make_unique<QxShaderInstance>(shader.shader, m_scene.Spaces());
    if (shader.shader->Type() == QxShaderInterface::e_typeLight)
        SqxPictureScene::PlaceLight(*instance);
    for (const auto& [name, value] : shader.values)
        instance->Set(name, value);
    m_shaders.push_back(std::move(instance));
}

void SqxPictureStage::AddLights()
{
    bool hasLight = !m_settings.lights.empty();
    for (const auto& shader : m_shaders)
        if (shader->Shader().Type() == QxShaderInterface::e_typeLight) {
            m_scene.AddLight(*shader);
            hasLight = true;
        }
    m_scene.AddLights(m_settings.lights);
    if (!hasLight)
        m_scene.AddDefaultLights();
}

void SqxPictureStage::SetStopTest(const QxStopTest& test)
{
    for (const auto& shader : m_shaders)
        shader->SetStopTest(test);
}

void SqxPictureStage::SetStepLimit(std::size_t limit)
{
    for (const auto& shader : m_shaders)
        shader->SetStepLimit(limit);
}

QxShaderInstance* SqxPictureStage::Find(QxShaderInterface::QxType type) const
{
    for (const auto& shader : m_shaders)
        if (shader->Shader().Type() == type)
            return shader.get();
    return nullptr;
}

QxHostGrid& SqxPictureStage::Grid(const QxGrid& layout)
{
    if (!m_grid)
        m_grid.emplace(layout.columns, layout.rows);
    else if (m_grid->Layout().columns != layout.columns || m_grid->Layout().rows != layout.rows)
        m_grid->Resize(layout.columns, layout.rows);
    return *m_grid;
}

void SqxPictureStage::Shade(QxHostGrid& grid, unsigned int piece)
{
    m_scene.BeginPiece(piece);
    // `Ci` and `Oi` are cleared in case the surface shader does not assign them.
    grid.Set("Ci", QxRGBColor{0, 0, 0});
    grid.Set("Oi", QxRGBColor{0, 0, 0});
    grid.Set("Cs", m_settings.color);
    grid.Set("Os", m_settings.opacity);
    if (QxShaderInstance* displacement = Find(QxShaderInterface::e_typeDisplacement))
        Displace(grid, *displacement);
    if (QxShaderInstance* surface = Find(QxShaderInterface::e_typeSurface))
        surface->Run(grid, m_scene);
    else
        SqxShadePlastic(grid, m_scene);
    if (QxShaderInstance* volume = Find(QxShaderInterface::e_typeVolume))
        volume->Run(grid, m_scene);
}

void SqxPictureStage::Displace(QxHostGrid& grid, QxShaderInstance& shader)
{
    const std::vector<float> normals = grid.Get("N").numbers;
    shader.Run(grid, m_scene);
    SqxDeriveGeometry(grid);
    if (grid.Get("N").numbers == normals)
        grid.Set("N", grid.Get("Ng"));
}

void SqxPictureStage::RunImager(SqxPixels& pixels, unsigned int firstRow, unsigned int rows,
                                unsigned int piece)
{
    m_scene.BeginPiece(piece);
    const unsigned int width = pixels.width;
    QxHostGrid grid(width, rows);
    const QxHiddenVariables at = grid.Hidden();
    const std::size_t offset = static_cast<std::size_t>(firstRow) * width;
    // `P` of a coarse pixel is its position in the whole picture.
    const float toColumn = static_cast<float>(m_settings.width) / static_cast<float>(width);
    const float toRow = static_cast<float>(m_settings.height) / static_cast<float>(pixels.height);
    for (std::size_t i = 0; i < grid.Size(); ++i) {
        at.Ci[i] = pixels.colors[offset + i];
        at.Oi[i] = pixels.opacities[offset + i];
        at.alpha[i] = (at.Oi[i].r + at.Oi[i].g + at.Oi[i].b) / 3;
        const float x = static_cast<float>(i % width) + 0.5F;
        const std::size_t row = firstRow + i / width;
        const float y = static_cast<float>(row) + 0.5F;
        at.P[i] = {x * toColumn, y * toRow, 0};
        at.u[i] = at.s[i] = x / static_cast<float>(width);
        at.v[i] = at.t[i] = y / static_cast<float>(pixels.height);
    }
    grid.Set("du", 1 / static_cast<float>(width));
    grid.Set("dv", 1 / static_cast<float>(pixels.height));
    Find(QxShaderInterface::e_typeImager)->Run(grid, m_scene);
    for (std::size_t i = 0; i < grid.Size(); ++i) {
        pixels.colors[offset + i] = at.Ci[i];
        pixels.opacities[offset + i] = {at.alpha[i], at.alpha[i], at.alpha[i]};
    }
}

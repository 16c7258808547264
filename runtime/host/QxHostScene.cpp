// A light shader runs on a grid of its own whose `Ps` are the points that ask for light. Its `L`
// leads from the light to the point, the other way round than in the surface.
//
// Lights are told apart once, when they are added: what clears `L` uses neither `illuminate` nor
// `solar` and is ambient. Of those, one that looks at no place gives the same everywhere; it runs
// for one point a grid, and its light is added up beforehand.
//
// Tested by tests/host/HostTest.cpp.

#include "host/QxHostScene.h"

#include <algorithm>

#include "QxHostError.h"
#include "QxMatrixMath.h"
#include "host/QxShaderInstance.h"

namespace {

/// The light that a light shader gives is the same for all points.
bool IsSteady(const QxShaderInstance& light)
{
    for (const char* name : {"P", "Ps", "N", "Ng", "u", "v", "s", "t", "dPdu", "dPdv", "I"})
        if (light.Shader().Uses(name))
            return false;
    return true;
}

/// Keeps what a shader says to itself.
class SilentSupport : public QxShaderSupport {
public:
    void Print(const char*) override {}
    void Report(const char*) override {}
};

/// A light shader without `illuminate` and `solar` clears `L`, all others leave or set it.
bool IsAmbient(QxShaderInstance& light)
{
    QxHostGrid probe(1, 1);
    probe.Set("Ps", QxVector3{0.3F, -7.1F, 5.9F});
    probe.Set("L", QxVector3{1, 1, 1});
    SilentSupport support;
    light.Run(probe, support, 0);
    return probe.Values<QxVector3>("L")[0] == QxVector3{0, 0, 0};
}

}  // namespace

void QxHostScene::AddAmbientLight(const QxRGBColor& color)
{
    m_ambientColor = m_ambientColor + color;
}

void QxHostScene::AddPointLight(const QxVector3& position, const QxRGBColor& color)
{
    m_lights.push_back({position, false, color, nullptr});
}

void QxHostScene::AddDistantLight(const QxVector3& direction, const QxRGBColor& color)
{
    m_lights.push_back({direction, true, color, nullptr});
}

void QxHostScene::AddLight(QxShaderInstance& light)
{
    if (light.Shader().Type() != QxShaderInterface::e_typeLight)
        throw QxHostError("Shader '" + light.Shader().Name() + "' is no light shader");
    if (IsAmbient(light))
        m_ambientShaders.push_back(&light);
    else
        m_lights.push_back({{}, false, {}, &light});
}

unsigned int QxHostScene::LightCount() const
{
    return static_cast<unsigned int>(m_lights.size());
}

void QxHostScene::SetAnswer(QxMessage message, const std::string& name, const QxHostValue& value)
{
    m_answers.insert_or_assign({message, name}, value);
}

void QxHostScene::BeginGrid(const QxHostPoints& points)
{
    m_time = points.variables.time ? *points.variables.time : 0;
    m_eye = points.E;
    const QxGrid& layout = points.layout;
    if (!m_lightGrid || m_lightGrid->Layout().columns != layout.columns ||
        m_lightGrid->Layout().rows != layout.rows)
        m_lightGrid.emplace(layout.columns, layout.rows);
    if (!m_ambientGrid)
        m_ambientGrid.emplace(1, 1);

    m_steadyAmbient = m_ambientColor;
    m_placeAmbient.clear();
    const QxVector3 anywhere = {0, 0, 0};
    for (QxShaderInstance* light : m_ambientShaders) {
        if (!IsSteady(*light)) {
            m_placeAmbient.push_back(light);
            continue;
        }
        Shade(*light, *m_ambientGrid, &anywhere);
        m_steadyAmbient = m_steadyAmbient + m_ambientGrid->Values<QxRGBColor>("Cl")[0];
    }
}

/// Runs a light shader: from the place of its own space it lights the positions.
void QxHostScene::Shade(QxShaderInstance& light, QxHostGrid& grid, const QxVector3* positions)
{
    const QxMatrix44& place = light.Spaces().Find("shader")->toCurrent;
    grid.Set("P", QxVector3{place[3][0], place[3][1], place[3][2]});
    grid.Set("L", QxVector3{0, 0, 0});
    grid.Set("Cl", QxRGBColor{0, 0, 0});
    grid.Set("Ol", QxRGBColor{1, 1, 1});
    grid.Set("E", m_eye);
    grid.Set("time", m_time);
    std::copy(positions, positions + grid.Size(), grid.Values<QxVector3>("Ps").begin());
    light.Run(grid, *this, 0);
}

void QxHostScene::EvaluateLights(const QxVector3* positions, unsigned int points,
                                 QxLightInput* lights, unsigned int count)
{
    for (unsigned int i = 0; i < count && i < m_lights.size(); ++i) {
        const Light& light = m_lights[i];
        if (light.shader) {
            Shade(*light.shader, *m_lightGrid, positions);
            TakeShaded(lights[i]);
            continue;
        }
        QxVector3* L = lights[i].L;
        if (light.distant)
            std::fill_n(L, points, -light.place);
        else
            for (unsigned int point = 0; point < points; ++point)
                L[point] = light.place - positions[point];
        std::fill_n(lights[i].Cl, points, light.color);
        std::fill_n(lights[i].Ol, points, QxRGBColor{1, 1, 1});
    }
}

/// A light's `L` leads away from it, a surface's to it.
void QxHostScene::TakeShaded(const QxLightInput& light)
{
    const auto L = m_lightGrid->Values<QxVector3>("L");
    const auto Cl = m_lightGrid->Values<QxRGBColor>("Cl");
    const auto Ol = m_lightGrid->Values<QxRGBColor>("Ol");
    for (std::size_t i = 0; i < L.size(); ++i)
        light.L[i] = -L[i];
    std::copy(Cl.begin(), Cl.end(), light.Cl);
    std::copy(Ol.begin(), Ol.end(), light.Ol);
}

QxRGBColor QxHostScene::Ambient(const QxVector3& position)
{
    QxRGBColor sum = m_steadyAmbient;
    for (QxShaderInstance* light : m_placeAmbient) {
        Shade(*light, *m_ambientGrid, &position);
        sum = sum + m_ambientGrid->Values<QxRGBColor>("Cl")[0];
    }
    return sum;
}

void QxHostScene::AmbientOverGrid(const QxVector3* positions, unsigned int points,
                                  QxRGBColor* results)
{
    if (m_placeAmbient.empty())
        std::fill_n(results, points, m_steadyAmbient);
    else
        QxShaderSupport::AmbientOverGrid(positions, points, results);
}

bool QxHostScene::Message(QxMessage message, const char*, const char* name,
                          const QxMessageValue& value)
{
    const auto found = m_answers.find({message, name});
    if (found == m_answers.end() || !found->second.Fits(value.type) ||
        found->second.Count() != value.length)
        return false;
    if (value.type != QxValueType::String) {
        value.Store(found->second.numbers.data());
        return true;
    }
    std::vector<const char*> texts;
    for (const std::string& text : found->second.texts)
        texts.push_back(text.c_str());
    value.Store(texts.data());
    return true;
}

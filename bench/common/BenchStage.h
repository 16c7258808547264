#pragma once

#include <chrono>
#include <cmath>
#include <ctime>
#include <memory>
#include <utility>
#include <vector>

#include "host/QxHost.h"

/// The scene of a measured shader: a grid whose points all differ, and three lights. The lights are
/// constant, so they are evaluated only once, by the constructor. Measurements contain the summing
/// of light by the shader, not the evaluation of lights.
class BenchStage : public QxHostScene {
public:
    /// Creates a square of side * side points.
    explicit BenchStage(unsigned int side) : m_grid(side, side)
    {
        AddAmbientLight({0.1F, 0.1F, 0.1F});
        AddPointLight({-1, 1, -1}, {0.8F, 0.8F, 0.7F});
        AddDistantLight({-0.5F, -0.5F, 1}, {0.3F, 0.3F, 0.4F});
        RunLights();
        Bulge();
    }
    void EvaluateLights(const QxVector3*, unsigned int, QxLightInput*, unsigned int) override {}

    [[nodiscard]] QxHostGrid& Grid() { return m_grid; }
    [[nodiscard]] std::vector<QxLightInput>& Lights() { return m_lights; }

private:
    struct LightValues {
        std::vector<QxVector3> L;
        std::vector<QxRGBColor> Cl;
        std::vector<QxRGBColor> Ol;
    };

    void RunLights()
    {
        const std::size_t points = m_grid.Size();
        m_values.resize(LightCount());
        for (LightValues& values : m_values) {
            values.L.resize(points);
            values.Cl.resize(points);
            values.Ol.resize(points);
            m_lights.push_back({values.L.data(), values.Cl.data(), values.Ol.data()});
        }
        const GridScope scope(*this, m_grid);
        QxHostScene::EvaluateLights(m_grid.Values<QxVector3>("P").data(),
                                    static_cast<unsigned int>(points), m_lights.data(),
                                    LightCount());
    }
    void Bulge()
    {
        for (std::size_t i = 0; i < m_grid.Size(); ++i) {
            const QxVector3 place = m_grid.Values<QxVector3>("P")[i];
            m_grid.Values<QxVector3>("N")[i] = {place.x, place.y, -1};
            const float wave = std::sin(static_cast<float>(i));
            const QxRGBColor color = {0.5F + 0.5F * wave, 0.5F, 0.5F - 0.4F * wave};
            m_grid.Values<QxRGBColor>("Cs")[i] = color;
            m_grid.Values<QxRGBColor>("Ci")[i] = color;
        }
    }

    QxHostGrid m_grid;
    std::vector<LightValues> m_values;
    std::vector<QxLightInput> m_lights;
};

/// A shader with its default values that is ready to be evaluated on the grid of a stage, which
/// must outlive this object.
class BenchAct {
public:
    BenchAct(std::shared_ptr<const QxShader> shader, BenchStage& stage)
        : m_shader(std::move(shader)),
          m_stage(stage),
          m_points(stage.Grid()),
          m_run(m_shader->NewRun()),
          m_variables(m_shader->Parameters().size())
    {
        for (const std::string& name : m_shader->SpaceNames())
            m_spaces.push_back(stage.Spaces().Find(name));
        m_context = std::make_unique<QxShadingContext>(&stage, &stage.Spaces(), m_spaces.data(),
                                                       QxVector3{0, 0, 0});
        m_shader->Declare(m_variables);
        for (QxVar& variable : m_variables)
            variable.Resize(stage.Grid().Size());
        m_run->Initialize(*m_context, m_spaces.data(), m_variables);
    }
    /// Evaluates the shader once.
    void Play()
    {
        m_run->Evaluate(m_points.layout, *m_context, m_points.variables, m_variables,
                        m_stage.Lights());
    }

private:
    std::shared_ptr<const QxShader> m_shader;
    BenchStage& m_stage;
    const QxHostPoints m_points;
    std::unique_ptr<QxShaderRun> m_run;
    std::vector<const QxFrame3D*> m_spaces;
    std::unique_ptr<QxShadingContext> m_context;
    std::vector<QxVar> m_variables;
};

/// Returns the elapsed seconds of the work: the mean of `times` runs.
template <class Work>
[[nodiscard]] double BenchSecondsOf(const Work& work, int times)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < times; ++i)
        work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() / times;
}

/// Returns the seconds of processor time that this thread has used.
[[nodiscard]] inline double BenchProcessorSeconds()
{
    std::timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// Like `BenchSecondsOf`, but in processor time of this thread, which contains no time of other
/// threads and processes.
template <class Work>
[[nodiscard]] double BenchProcessorSecondsOf(const Work& work, int times)
{
    const double start = BenchProcessorSeconds();
    for (int i = 0; i < times; ++i)
        work();
    return (BenchProcessorSeconds() - start) / times;
}

// Compares built shaders with hand-written loops over the same arithmetic: shading points a second
// of both on one grid, and how many times slower the shader is.
// usage: shading_speed SECONDS LOOPS.so SHADER.sqx...
// LOOPS.so has a function plain_NAME for each shader of that name, see loops.h.

#include <algorithm>
#include <bit>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <functional>

#include "host/QxHost.h"
#include "shading/loops.h"

namespace {

constexpr unsigned int k_side = 48;  // points along an edge of the grid

/// What a shader and its loop work on. Lights are counted as arithmetic, running them is not: that
/// is the host's work, so it is done once.
class Stage : public QxHostScene {
public:
    Stage()
    {
        AddAmbientLight({0.1F, 0.1F, 0.1F});
        AddPointLight({-1, 1, -1}, {0.8F, 0.8F, 0.7F});
        AddDistantLight({-0.5F, -0.5F, 1}, {0.3F, 0.3F, 0.4F});
        const unsigned int points = k_side * k_side;
        for (unsigned int i = 0; i < LightCount(); ++i)
            m_values.push_back({std::vector<QxVector3>(points), std::vector<QxRGBColor>(points),
                                std::vector<QxRGBColor>(points)});
        for (Values& values : m_values)
            m_lights.push_back({values.L.data(), values.Cl.data(), values.Ol.data()});
        BeginGrid(m_grid);
        const QxVector3* P = m_grid.Values<QxVector3>("P").data();
        QxHostScene::EvaluateLights(P, points, m_lights.data(), LightCount());
        Bulge();
    }
    void EvaluateLights(const QxVector3*, unsigned int, QxLightInput*, unsigned int) override {}

    [[nodiscard]] QxHostGrid& Grid() { return m_grid; }
    [[nodiscard]] std::vector<QxLightInput>& Lights() { return m_lights; }

private:
    struct Values {
        std::vector<QxVector3> L;
        std::vector<QxRGBColor> Cl;
        std::vector<QxRGBColor> Ol;
    };

    /// No two points are alike.
    void Bulge()
    {
        for (std::size_t i = 0; i < m_grid.Size(); ++i) {
            const QxVector3 place = m_grid.Values<QxVector3>("P")[i];
            m_grid.Values<QxVector3>("N")[i] = {place.x, place.y, -1};
            const float wave = std::sin(static_cast<float>(i));
            m_grid.Values<QxRGBColor>("Cs")[i] = {0.5F + 0.5F * wave, 0.5F, 0.5F - 0.4F * wave};
            m_grid.Values<QxRGBColor>("Ci")[i] = {0.5F + 0.5F * wave, 0.5F, 0.5F - 0.4F * wave};
        }
    }

    QxHostGrid m_grid{k_side, k_side};
    std::vector<Values> m_values;
    std::vector<QxLightInput> m_lights;
};

double SecondsOf(const std::function<void()>& work, int times)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < times; ++i)
        work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() / times;
}

/// The shortest times of both, in turns, so that a busy machine slows both down.
void Compare(const std::string& name, const std::function<void()>& shader,
             const std::function<void()>& loop, double seconds)
{
    const int times = std::max(1, static_cast<int>(0.002 / SecondsOf(loop, 3)));
    double best[2] = {1e30, 1e30};
    for (double spent = 0; spent < seconds;) {
        const double now[2] = {SecondsOf(shader, times), SecondsOf(loop, times)};
        for (int i = 0; i < 2; ++i)
            best[i] = std::min(best[i], now[i]);
        spent += (now[0] + now[1]) * times;
    }
    const double points = k_side * k_side;
    std::printf("%-14s %14.1f %14.1f %7.2f\n", name.c_str(), points / best[0] / 1e6,
                points / best[1] / 1e6, best[0] / best[1]);
}

/// Ends the program if both did not compute the same.
void CheckAlike(const std::string& name, Stage& byShader, Stage& byLoop)
{
    for (const char* variable : {"Ci", "Oi", "P"}) {
        const std::vector<float> one = byShader.Grid().Get(variable).numbers;
        const std::vector<float> other = byLoop.Grid().Get(variable).numbers;
        for (std::size_t i = 0; i < one.size(); ++i)
            if (!(std::abs(one[i] - other[i]) <= 1e-4F * (1 + std::abs(one[i])))) {
                std::fprintf(stderr, "%s: %s is %g at %zu, but %g by hand\n", name.c_str(),
                             variable, static_cast<double>(one[i]), i,
                             static_cast<double>(other[i]));
                std::exit(1);
            }
    }
}

void Measure(const std::string& path, void* loops, double seconds)
{
    const std::string name = std::filesystem::path(path).stem();
    const auto loop = std::bit_cast<PlainLoop*>(dlsym(loops, ("plain_" + name).c_str()));
    if (!loop)
        throw QxHostError("There is no hand-written loop of '" + name + "'");

    Stage byShader;
    Stage byLoop;
    const auto shader = QxShader::Open(path);
    const auto run = shader->NewRun();
    std::vector<QxVar> variables(shader->Parameters().size());
    shader->Declare(variables);
    for (QxVar& variable : variables)
        variable.Resize(byShader.Grid().Size());
    std::vector<const QxFrame3D*> spaces;
    for (const std::string& space : shader->SpaceNames())
        spaces.push_back(byShader.Spaces().Find(space));
    const QxShadingContext context(&byShader, &byShader.Spaces(), spaces.data(), {0, 0, 0});
    run->Initialize(context, spaces.data(), variables);

    const auto runShader = [&] {
        run->Evaluate({k_side, k_side}, context, byShader.Grid().Hidden(), variables,
                      byShader.Lights());
    };
    const auto runLoop = [&] {
        loop(byLoop.Grid().Hidden(), k_side * k_side, byLoop.Lights().data(), byLoop.LightCount());
    };
    runShader();
    runLoop();
    CheckAlike(name, byShader, byLoop);
    Compare(name, runShader, runLoop, seconds);
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc < 4) {
        std::fprintf(stderr, "usage: shading_speed SECONDS LOOPS.so SHADER.sqx...\n");
        return 1;
    }
    void* loops = dlopen(argv[2], RTLD_NOW);
    if (!loops) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    std::printf("shader         million points a second   by hand   ratio\n");
    try {
        for (int i = 3; i < argc; ++i)
            Measure(argv[i], loops, std::atof(argv[1]));
    } catch (const QxHostError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}

// Compares the machine with shared objects of the same shaders: time of the machine divided by that
// of the shared object, with the baseline kernels and with the best ones, on grids of several
// sizes. usage: machine_speed SECONDS SIDE... -- NAME... For each NAME there are NAME.bc, its
// byte-code, and NAME.so. A grid has SIDE * SIDE points.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>

#include "host/QxByteCodeShader.h"
#include "host/QxHost.h"

namespace {

using Clock = std::chrono::steady_clock;

double Since(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// The lights are counted where the shader adds them up, not where the host runs them: they do not
/// move, so they are run once.
class Stage : public QxHostScene {
public:
    explicit Stage(unsigned int side) : m_grid(side, side)
    {
        AddAmbientLight({0.1F, 0.1F, 0.1F});
        AddPointLight({-1, 1, -1}, {0.8F, 0.8F, 0.7F});
        AddDistantLight({-0.5F, -0.5F, 1}, {0.3F, 0.3F, 0.4F});
        m_values.resize(LightCount());
        const std::size_t points = m_grid.Size();
        for (Values& values : m_values) {
            values.L.resize(points);
            values.Cl.resize(points);
            values.Ol.resize(points);
            m_lights.push_back({values.L.data(), values.Cl.data(), values.Ol.data()});
        }
        BeginGrid(m_grid);
        QxHostScene::EvaluateLights(m_grid.Values<QxVector3>("P").data(),
                                    static_cast<unsigned int>(points), m_lights.data(),
                                    LightCount());
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
        }
    }

    QxHostGrid m_grid;
    std::vector<Values> m_values;
    std::vector<QxLightInput> m_lights;
};

/// A shader on a stage, with all that it needs but the evaluation itself.
class Act {
public:
    Act(std::shared_ptr<const QxShader> shader, Stage& stage)
        : m_shader(std::move(shader)),
          m_stage(stage),
          m_points(stage.Grid()),
          m_run(m_shader->NewRun()),
          m_variables(m_shader->Parameters().size())
    {
        for (const std::string& name : m_shader->SpaceNames())
            m_spaces.push_back(stage.Spaces().Find(name));
        m_context.emplace(&stage, &stage.Spaces(), m_spaces.data(), QxVector3{0, 0, 0});
        m_shader->Declare(m_variables);
        for (QxVar& variable : m_variables)
            variable.Resize(stage.Grid().Size());
        m_run->Initialize(*m_context, m_spaces.data(), m_variables);
    }
    void Play()
    {
        m_run->Evaluate(m_points.layout, *m_context, m_points.variables, m_variables,
                        m_stage.Lights());
    }
    /// Seconds of one evaluation.
    [[nodiscard]] double TimeOf(int times)
    {
        const Clock::time_point start = Clock::now();
        for (int i = 0; i < times; ++i)
            Play();
        return Since(start) / times;
    }

private:
    std::shared_ptr<const QxShader> m_shader;
    Stage& m_stage;
    const QxHostPoints m_points;
    std::unique_ptr<QxShaderRun> m_run;
    std::vector<const QxFrame3D*> m_spaces;
    std::optional<QxShadingContext> m_context;
    std::vector<QxVar> m_variables;
};

double Median(std::vector<double> values)
{
    std::nth_element(values.begin(),
                     values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

std::string BytesOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::shared_ptr<const QxShader> ByteCode(const std::string& name, QxKernelChoice kernels)
{
    return std::make_shared<QxByteCodeShader>(BytesOf(name + ".bc"), name,
                                              std::vector<std::string>(), kernels);
}

/// In turns, so that a busy machine slows all of them down.
void Compare(const std::string& name, unsigned int side, double seconds)
{
    Stage stage(side);
    Act object(QxShader::Open("./" + name + ".so"), stage);
    Act baseline(ByteCode(name, QxKernelChoice::Baseline), stage);
    Act best(ByteCode(name, QxKernelChoice::Best), stage);
    object.Play();
    const double once = std::max(object.TimeOf(1), 1e-7);
    const int times = std::clamp(static_cast<int>(0.0005 / once), 1, 2000);
    std::vector<double> objectTimes;
    std::vector<double> baselineRatios;
    std::vector<double> bestRatios;
    const Clock::time_point start = Clock::now();
    while (Since(start) < seconds || objectTimes.size() < 5) {
        const double time = object.TimeOf(times);
        objectTimes.push_back(time);
        baselineRatios.push_back(baseline.TimeOf(times) / time);
        bestRatios.push_back(best.TimeOf(times) / time);
    }
    std::printf("| %5.2f / %4.2f ", Median(baselineRatios), Median(bestRatios));
}

}  // namespace

int main(int argc, char** argv)
{
    const double seconds = std::atof(argv[1]);
    std::vector<unsigned int> sides;
    int i = 2;
    for (; i < argc && std::strcmp(argv[i], "--") != 0; ++i)
        sides.push_back(static_cast<unsigned int>(std::atoi(argv[i])));
    std::printf("| shader          ");
    for (const unsigned int side : sides)
        std::printf("| %6u points ", side * side);
    std::printf("|\n|---|");
    for (std::size_t k = 0; k < sides.size(); ++k)
        std::printf("---|");
    std::printf("\n");
    try {
        for (++i; i < argc; ++i) {
            std::printf("| %-15s ", argv[i]);
            for (const unsigned int side : sides) {
                Compare(argv[i], side, seconds);
                std::fflush(stdout);
            }
            std::printf("|\n");
        }
    } catch (const QxHostError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}

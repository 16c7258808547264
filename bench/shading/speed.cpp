// Compares compiled shaders, shared objects or byte-code, with hand-written loops for the same
// arithmetic: shading points per second of both on one grid, and the time of the shader divided by
// that of the loop.
// usage: shading_speed SECONDS LOOPS.so SHADER.sqx...
// LOOPS.so has a function plain_NAME for each shader NAME, see loops.h.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>

#include "common/BenchMain.h"
#include "common/BenchStage.h"
#include "shading/loops.h"

namespace {

constexpr unsigned int k_side = 48;  // points along an edge of the grid

/// Prints the speeds of both and the ratio of their times. The runs alternate, so that a busy
/// machine slows both alike.
template <class Shader, class Loop>
void Compare(const std::string& name, const Shader& shader, const Loop& loop, double seconds)
{
    const int times = std::max(1, static_cast<int>(0.002 / BenchSecondsOf(loop, 3)));
    double best[2] = {1e30, 1e30};
    for (double spent = 0; spent < seconds;) {
        const double now[2] = {BenchSecondsOf(shader, times), BenchSecondsOf(loop, times)};
        for (int i = 0; i < 2; ++i)
            best[i] = std::min(best[i], now[i]);
        spent += (now[0] + now[1]) * times;
    }
    const double points = k_side * k_side;
    std::printf("%-14s %14.1f %14.1f %7.2f\n", name.c_str(), points / best[0] / 1e6,
                points / best[1] / 1e6, best[0] / best[1]);
}

/// Ends the program with status 1 if the two results differ by more than rounding errors.
void CheckAlike(const std::string& name, BenchStage& byShader, BenchStage& byLoop)
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

    BenchStage byShader(k_side);
    BenchStage byLoop(k_side);
    BenchAct act(QxShader::Open(path), byShader);
    const auto runShader = [&] { act.Play(); };
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
    return BenchStatusOf([&] {
        for (int i = 3; i < argc; ++i)
            Measure(argv[i], loops, std::atof(argv[1]));
    });
}

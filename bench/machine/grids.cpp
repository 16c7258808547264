// Compares the machine with shared objects of the same shaders, on grids of several sizes: the
// processor time of the machine divided by that of the shared object, with the baseline kernels and
// with the best ones.
// usage: machine_grids SECONDS SIDE... -- NAME=KIND...
// For each NAME there are NAME.bc, its byte-code, and NAME.so, its shared object; KIND is printed
// next to the name. A grid has SIDE * SIDE points, and SECONDS are spent on each cell.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "common/BenchMain.h"
#include "common/BenchStage.h"
#include "machine/BenchProgram.h"

namespace {

double Median(std::vector<double> values)
{
    std::nth_element(values.begin(),
                     values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

/// Prints the cell of one grid, the medians of the ratios. The runs alternate, so that a busy
/// machine slows all of them alike.
void Compare(const std::string& name, unsigned int side, double seconds)
{
    BenchStage stage(side);
    BenchAct object(QxShader::Open("./" + name + ".so"), stage);
    BenchAct baseline(BenchProgram(name, QxKernelChoice::Baseline), stage);
    BenchAct best(BenchProgram(name, QxKernelChoice::Best), stage);
    int times = 1;
    const auto timeOf = [&times](BenchAct& act) {
        return BenchProcessorSecondsOf([&act] { act.Play(); }, times);
    };
    object.Play();
    times = std::clamp(static_cast<int>(0.0005 / std::max(timeOf(object), 1e-7)), 1, 2000);
    std::vector<double> baselineRatios;
    std::vector<double> bestRatios;
    double spent = 0;
    while (spent < seconds || bestRatios.size() < 5) {
        const double time = timeOf(object);
        baselineRatios.push_back(timeOf(baseline) / time);
        bestRatios.push_back(timeOf(best) / time);
        spent += time * times * (1 + baselineRatios.back() + bestRatios.back());
    }
    std::printf("| %.2f / %.2f ", Median(baselineRatios), Median(bestRatios));
    std::fflush(stdout);
}

void CompareOnGrids(const std::string& nameAndKind, const std::vector<unsigned int>& sides,
                    double seconds)
{
    const std::size_t end = nameAndKind.find('=');
    const std::string name = nameAndKind.substr(0, end);
    std::printf("| %s | %s ", name.c_str(),
                end == std::string::npos ? "" : nameAndKind.substr(end + 1).c_str());
    for (const unsigned int side : sides)
        Compare(name, side, seconds);
    std::printf("|\n");
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc < 4) {
        std::fprintf(stderr, "usage: machine_grids SECONDS SIDE... -- NAME=KIND...\n");
        return 1;
    }
    const double seconds = std::atof(argv[1]);
    std::vector<unsigned int> sides;
    int i = 2;
    for (; i < argc && std::strcmp(argv[i], "--") != 0; ++i)
        sides.push_back(static_cast<unsigned int>(std::atoi(argv[i])));
    std::printf("| shader | kind ");
    for (const unsigned int side : sides)
        std::printf("| %u ", side * side);
    std::printf("|\n|---|---|");
    for (std::size_t k = 0; k < sides.size(); ++k)
        std::printf("---|");
    std::printf("\n");
    return BenchStatusOf([&] {
        for (++i; i < argc; ++i)
            CompareOnGrids(argv[i], sides, seconds);
    });
}

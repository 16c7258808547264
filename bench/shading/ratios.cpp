// Compares shared objects of the same shaders that were built in two ways, on grids of several
// sizes. Prints the time of the second divided by that of the first and, in parentheses, the
// nanoseconds of processor time per point of the second; medians of interleaved rounds.
// usage: shading_ratios SECONDS SIDE... -- FIRST SECOND NAME...
// For each NAME there are FIRST/NAME.sqx and SECOND/NAME.sqx. A grid has SIDE * SIDE points, and
// SECONDS are spent on each cell.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "common/BenchMain.h"
#include "common/BenchStage.h"

namespace {

double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

struct Cell {
    double ratio;
    double nanoseconds;  // per point
};

/// Compares two files. The runs alternate, so that a busy machine slows both alike.
Cell CellOf(const std::string& first, const std::string& second, unsigned int side, double seconds)
{
    BenchStage stage(side);
    BenchAct before(QxShader::Open(first), stage);
    BenchAct after(QxShader::Open(second), stage);
    int times = 1;
    const auto timeOf = [&times](BenchAct& act) {
        return BenchProcessorSecondsOf([&act] { act.Play(); }, times);
    };
    before.Play();
    times = std::clamp(static_cast<int>(0.0005 / std::max(timeOf(before), 1e-7)), 1, 2000);
    std::vector<double> ratios;
    std::vector<double> nanoseconds;
    for (double spent = 0; spent < seconds || ratios.size() < 5;) {
        const double time = timeOf(before);
        const double timeAfter = timeOf(after);
        ratios.push_back(timeAfter / time);
        nanoseconds.push_back(timeAfter * 1e9 / (side * side));
        spent += (time + timeAfter) * times;
    }
    return {Median(std::move(ratios)), Median(std::move(nanoseconds))};
}

}  // namespace

int main(int argc, char** argv)
{
    std::vector<unsigned int> sides;
    int i = 2;
    for (; i < argc && std::strcmp(argv[i], "--") != 0; ++i)
        sides.push_back(static_cast<unsigned int>(std::atoi(argv[i])));
    if (argc < i + 4) {
        std::fprintf(stderr, "usage: shading_ratios SECONDS SIDE... -- FIRST SECOND NAME...\n");
        return 1;
    }
    std::printf("| shader ");
    for (const unsigned int side : sides)
        std::printf("| %u ", side * side);
    std::printf("|\n|---|");
    for (std::size_t k = 0; k < sides.size(); ++k)
        std::printf("---|");
    std::printf("\n");
    return BenchStatusOf([&] {
        for (int k = i + 3; k < argc; ++k) {
            std::printf("| %s ", argv[k]);
            for (const unsigned int side : sides) {
                const std::string name = std::string("/") + argv[k] + ".sqx";
                const Cell cell =
                    CellOf(argv[i + 1] + name, argv[i + 2] + name, side, std::atof(argv[1]));
                std::printf("| %.2f (%.*f) ", cell.ratio, cell.nanoseconds < 10 ? 1 : 0,
                            cell.nanoseconds);
                std::fflush(stdout);
            }
            std::printf("|\n");
        }
    });
}

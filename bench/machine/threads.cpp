// How many times as many points two threads shade with one program as one thread does.
// usage: machine_threads SECONDS NAME...   For each NAME there is NAME.bc.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "common/BenchStage.h"
#include "machine/BenchProgram.h"

namespace {

constexpr unsigned int k_side = 64;  // points along an edge of the grid

/// The least of all rounds: whatever else runs on the machine takes processors away.
void Measure(const std::string& name, double seconds)
{
    const auto program = BenchProgram(name, QxKernelChoice::Best);
    BenchStage stages[2] = {BenchStage(k_side), BenchStage(k_side)};
    BenchAct acts[2] = {{program, stages[0]}, {program, stages[1]}};
    const auto play = [](BenchAct& act, int times) {
        for (int i = 0; i < times; ++i)
            act.Play();
    };
    const double once = BenchSecondsOf([&] { play(acts[0], 2); }, 2) / 2;
    // Long enough that the start of a thread does not count.
    const int times = std::max(1, static_cast<int>(0.02 / once));
    double alone = 1e30;
    double together = 1e30;
    for (double spent = 0; spent < seconds;) {
        const double one = BenchSecondsOf([&] { play(acts[0], times); }, 1);
        const double two = BenchSecondsOf(
            [&] {
                std::thread other([&] { play(acts[1], times); });
                play(acts[0], times);
                other.join();
            },
            1);
        alone = std::min(alone, one);
        together = std::min(together, two);
        spent += one + two;
    }
    std::printf("| %s | %.2f |\n", name.c_str(), 2 * alone / together);
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: machine_threads SECONDS NAME...\n");
        return 1;
    }
    std::printf("| shader | points of two threads to those of one |\n|---|---|\n");
    try {
        for (int i = 2; i < argc; ++i)
            Measure(argv[i], std::atof(argv[1]));
    } catch (const QxHostError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}

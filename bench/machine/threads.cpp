// Measures the speed of two threads that share one program, as a multiple of the speed of one: in
// elapsed time, and in processor time, which shows the speed on an otherwise idle machine.
// usage: machine_threads SECONDS NAME...
// For each NAME there is NAME.bc.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <thread>

#include "common/BenchMain.h"
#include "common/BenchStage.h"
#include "machine/BenchProgram.h"

namespace {

constexpr unsigned int k_side = 64;  // points along an edge of the grid

struct Times {
    double clock = 1e30;
    double processor = 1e30;

    /// Keeps the shorter times of two rounds, since other processes only lengthen them.
    void TakeLess(const Times& other)
    {
        clock = std::min(clock, other.clock);
        processor = std::min(processor, other.processor);
    }
};

/// Runs each act in a separate thread the given number of times. Returns the elapsed time per run,
/// and the processor time per run of the thread that has used more of it.
Times PlayTogether(std::vector<BenchAct*> acts, int times)
{
    std::vector<double> processor(acts.size());
    const auto play = [&](std::size_t k) {
        processor[k] = BenchProcessorSecondsOf([&] { acts[k]->Play(); }, times);
    };
    const double clock = BenchSecondsOf(
        [&] {
            std::vector<std::thread> threads;
            for (std::size_t k = 0; k < acts.size(); ++k)
                threads.emplace_back(play, k);
            for (std::thread& thread : threads)
                thread.join();
        },
        1);
    return {clock / times, *std::max_element(processor.begin(), processor.end())};
}

void Measure(const std::string& name, double seconds)
{
    const auto program = BenchProgram(name, QxKernelChoice::Best);
    BenchStage stages[2] = {BenchStage(k_side), BenchStage(k_side)};
    BenchAct first(program, stages[0]);
    BenchAct second(program, stages[1]);
    const double once = BenchProcessorSecondsOf([&] { first.Play(); }, 2);
    // Long enough that starting a thread is negligible.
    const int times = std::max(1, static_cast<int>(0.02 / once));
    const int rounds = std::max(1, static_cast<int>(std::ceil(seconds / (3 * times * once))));
    Times alone;
    Times together;
    for (int i = 0; i < rounds; ++i) {
        alone.TakeLess(PlayTogether({&first}, times));
        together.TakeLess(PlayTogether({&first, &second}, times));
    }
    std::printf("| %s | %.2f | %.2f |\n", name.c_str(), 2 * alone.clock / together.clock,
                2 * alone.processor / together.processor);
}

}  // namespace

int main(int argc, char** argv)
{
    return BenchEachShader(
        argc, argv,
        "| shader | points of two threads to those of one | in processor time |\n"
        "|---|---|---|\n",
        Measure);
}

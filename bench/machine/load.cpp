// Measures parsing, verifying and translating byte-code, in processor time: microseconds for the
// whole file and per instruction of the file, in the fastest round.
// usage: machine_load SECONDS NAME...
// For each NAME there is NAME.bc.

#include <algorithm>
#include <cstdio>

#include "common/BenchMain.h"
#include "common/BenchStage.h"
#include "machine/BenchProgram.h"
#include "machine/run/QxMachineProgram.h"

namespace {

void Measure(const std::string& name, double seconds)
{
    const std::string bytes = BenchBytesOf(name);
    const std::size_t instructions = QxMachineProgram(bytes, name).InstructionCount();
    double best = 1e30;
    for (double spent = 0; spent < seconds;) {
        const double time =
            BenchProcessorSecondsOf([&] { const QxMachineProgram program(bytes, name); }, 1);
        best = std::min(best, time);
        spent += time;
    }
    std::printf("| %s | %zu | %.0f | %.2f |\n", name.c_str(), instructions, best * 1e6,
                best * 1e6 / static_cast<double>(instructions));
}

}  // namespace

int main(int argc, char** argv)
{
    return BenchEachShader(
        argc, argv,
        "| shader | instructions | microseconds | of an instruction |\n|---|---|---|---|\n",
        Measure);
}

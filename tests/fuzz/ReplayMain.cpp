// Runs a fuzz target without libFuzzer: on each file of a folder, then on mutations of them.
//
// usage: TARGET MUTATIONS SEED FOLDER
//
// An input that ends the process by a signal, or takes too long, is left in the working directory
// as "TARGET.fault".

#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "fuzz/FuzzTarget.h"
#include "fuzz/Mutator.h"

namespace {

constexpr std::size_t k_mostCharacters = 1 << 16;
constexpr unsigned int k_mostSeconds = 120;  // for one input, on a busy machine

std::string g_input;      // the current input of the target
std::string g_faultPath;  // where it is kept if it ends the process

void KeepInput(int signal)
{
    if (std::FILE* file = std::fopen(g_faultPath.c_str(), "wb")) {
        std::fwrite(g_input.data(), 1, g_input.size(), file);
        std::fclose(file);
    }
    std::fprintf(stderr, "signal %d, the input is in %s\n", signal, g_faultPath.c_str());
    ::_exit(1);
}

/// The handler has its own stack, since it may run after a stack overflow.
void CatchSignals()
{
    static std::array<char, 65536> stack;
    stack_t place = {};
    place.ss_sp = stack.data();
    place.ss_size = stack.size();
    struct sigaction action = {};
    action.sa_handler = &KeepInput;
    action.sa_flags = SA_ONSTACK;
    ::sigaltstack(&place, nullptr);
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGALRM})
        ::sigaction(signal, &action, nullptr);
}

void Run(std::string input)
{
    g_input = std::move(input);
    ::alarm(k_mostSeconds);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(g_input.data()), g_input.size());
    ::alarm(0);
}

/// Returns the texts sorted by file name, so that a seed means the same everywhere.
std::vector<std::string> ReadFolder(const char* folder)
{
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    std::vector<std::string> texts;
    for (const auto& path : paths) {
        std::ifstream file(path, std::ios::binary);
        texts.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return texts;
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 4) {
        std::fprintf(stderr, "usage: %s MUTATIONS SEED FOLDER\n", arguments[0]);
        return 1;
    }
    const unsigned long mutations = std::strtoul(arguments[1], nullptr, 10);
    Mutator mutator(static_cast<std::uint32_t>(std::strtoul(arguments[2], nullptr, 10)));
    const std::vector<std::string> seeds = ReadFolder(arguments[3]);
    if (seeds.empty()) {
        std::fprintf(stderr, "no seeds in %s\n", arguments[3]);
        return 1;
    }
    g_faultPath = std::filesystem::path(arguments[0]).filename().string() + ".fault";
    CatchSignals();
    for (const std::string& seed : seeds)
        Run(seed);
    for (unsigned long i = 0; i < mutations; ++i) {
        const std::string& text = seeds[mutator.Below(seeds.size())];
        const std::string& donor = seeds[mutator.Below(seeds.size())];
        Run(mutator.Mutate(text, donor, k_mostCharacters));
    }
    std::printf("%zu seeds, %lu mutations\n", seeds.size(), mutations);
    return 0;
}

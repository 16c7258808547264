// Measures a command: the shortest elapsed time and the largest memory of several runs.
// usage: measure RUNS COMMAND [ARGUMENT...]
// Prints the seconds, and the KiB of the largest process among the command and its children.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Cost {
    double seconds;
    long kibibytes;
};

/// Runs the command once without showing its output. Ends this program with status 1 if the command
/// fails.
Cost RunOnce(char** command)
{
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        execvp(command[0], command);
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0) {
        std::fprintf(stderr, "measure: '%s' failed\n", command[0]);
        std::exit(1);
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    return {elapsed.count(), usage.ru_maxrss};
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    const int runs = argumentCount < 3 ? 0 : std::atoi(arguments[1]);
    if (runs < 1) {
        std::fprintf(stderr, "usage: measure RUNS COMMAND [ARGUMENT...]\n");
        return 1;
    }
    Cost best = RunOnce(arguments + 2);
    for (int run = 1; run < runs; ++run) {
        const Cost cost = RunOnce(arguments + 2);
        best.seconds = std::min(best.seconds, cost.seconds);
        best.kibibytes = std::max(best.kibibytes, cost.kibibytes);
    }
    std::printf("%.6f %ld\n", best.seconds, best.kibibytes);
    return 0;
}

#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include "host/QxHost.h"

/// Runs the benchmark `work`. Returns the exit status of the program: if it throws `QxHostError`,
/// for example because a shader cannot be read, 1 after printing the error, otherwise 0.
template <class Work>
[[nodiscard]] int BenchStatusOf(const Work& work)
{
    try {
        work();
    } catch (const QxHostError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}

/// Does all work of a program that is called with SECONDS NAME...: prints `head`, the head of its
/// table, then calls `measure` with each name and the seconds to spend on it, to print a row.
/// Returns the exit status of the program; 1, after printing its usage, if arguments are missing.
template <class Measure>
[[nodiscard]] int BenchEachShader(int argc, char** argv, const char* head, const Measure& measure)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s SECONDS NAME...\n", argv[0]);
        return 1;
    }
    std::printf("%s", head);
    return BenchStatusOf([&] {
        for (int i = 2; i < argc; ++i)
            measure(std::string(argv[i]), std::atof(argv[1]));
    });
}

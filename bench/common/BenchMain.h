#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include "host/QxHost.h"

/// Does the work of a program that measures; the status to end it with. A shader that cannot be
/// read or run is reported.
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

/// The whole of a program that is called with SECONDS NAME...: prints the head of its table, and
/// then calls `measure` with each name and the seconds to spend on it, which prints a row.
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

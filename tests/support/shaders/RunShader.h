#pragma once

#include <string>
#include <vector>

#include "machine/SqxMachine.h"

/// The byte-code file of a source at an optimization level. A source that is refused fails the
/// test that is running, and gives an empty text; one too large for byte-code just gives that.
[[nodiscard]] std::string ByteCodeOf(const std::string& source, int level);

/// The results of a shader: the numbers of each variable that it may write, point by point.
struct RunOutcome {
    struct Output {
        std::string name;
        std::vector<float> numbers;
    };

    std::string fault;  // empty if it ran to its end
    std::vector<Output> outputs;
    std::string text;  // what it printed
};

/// Loads the file into the machine, runs it and reads the outputs back.
[[nodiscard]] RunOutcome RunShader(SqxMachine& machine, const std::string& byteCode);

/// Where two outcomes differ by more than rounding; empty if they agree.
[[nodiscard]] std::string Difference(const RunOutcome& first, const RunOutcome& second);

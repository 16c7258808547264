#pragma once

#include <string>
#include <vector>

#include "machine/SqxMachine.h"

/// Returns the byte-code file of a source at an optimization level, and checks that the verifier
/// accepts it. Returns an empty text if the source is too large for byte-code, or if it is refused,
/// which also fails the running test.
[[nodiscard]] std::string ByteCodeOf(const std::string& source, int level);

/// The results of a shader: the numbers of each predefined variable and output parameter that it
/// may write, point by point.
struct RunOutcome {
    struct Output {
        std::string name;
        std::vector<float> numbers;
    };

    std::string fault;  // empty if the run was complete
    std::vector<Output> outputs;
    std::string text;  // printed and reported
};

/// Loads the file into the machine, runs it with a new `SqxScene` and reads the outputs back. The
/// grid of the machine must have six points.
[[nodiscard]] RunOutcome RunShader(SqxMachine& machine, const std::string& byteCode);

/// Returns where two outcomes differ in anything but their numbers; empty if nowhere.
[[nodiscard]] std::string ShapeDifference(const RunOutcome& first, const RunOutcome& second);

/// Returns where two outcomes differ by more than rounding; empty if they agree.
[[nodiscard]] std::string Difference(const RunOutcome& first, const RunOutcome& second);

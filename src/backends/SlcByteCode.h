#pragma once

#include <string_view>

/// Maps names of instructions to their numbers, for the byte-code writer.
class SlcByteCode {
public:
    /// Returns the number of an instruction. A name without a number is a fault of the compiler,
    /// and fatal.
    [[nodiscard]] static short GetInstrNb(std::string_view name);
};

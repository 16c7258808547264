#pragma once

#include <string_view>

/// The number of each instruction by its name, for the writer.
class SlcByteCode {
public:
    /// The number of an instruction. A name without a number is a fault of the compiler, and fatal.
    [[nodiscard]] static short GetInstrNb(std::string_view name);
};

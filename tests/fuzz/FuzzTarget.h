#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Each fuzz target defines this function, which accepts any bytes and returns 0. A fault ends the
/// process, by `FuzzFault`, a sanitizer or a signal.
///
/// libFuzzer calls the function by this name (https://llvm.org/docs/LibFuzzer.html). In builds
/// other than that of the preset `fuzz`, `ReplayMain.cpp` calls it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Prints the fault and aborts, so that the fuzzer keeps the input.
[[noreturn]] void FuzzFault(std::string_view message);

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Each fuzz target defines this function, which accepts any bytes and returns 0. A fault ends the
/// process, by `FuzzFault`, a sanitizer or a signal.
///
/// The names are those that libFuzzer calls (https://llvm.org/docs/LibFuzzer.html). Where that is
/// not available, `ReplayMain.cpp` calls them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Prints the fault and aborts, so that the fuzzer keeps the input.
[[noreturn]] void FuzzFault(std::string_view message);

// Adds the mutations of `Mutator` to those of libFuzzer.

#include <cstring>
#include <string>

#include "fuzz/Mutator.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t limit);

namespace {

std::string_view AsText(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

std::size_t Put(const std::string& text, std::uint8_t* data)
{
    std::memcpy(data, text.data(), text.size());
    return text.size();
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t limit, unsigned int seed)
{
    Mutator mutator(seed);
    // libFuzzer's mutations use values with which the program has compared the input.
    if (mutator.Below(4) == 0)
        return LLVMFuzzerMutate(data, size, limit);
    const std::string text(AsText(data, size));
    return Put(mutator.Mutate(text, text, limit), data);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t firstSize,
                                                 const std::uint8_t* second, std::size_t secondSize,
                                                 std::uint8_t* out, std::size_t limit,
                                                 unsigned int seed)
{
    Mutator mutator(seed);
    return Put(
        mutator.Mutate(std::string(AsText(first, firstSize)), AsText(second, secondSize), limit),
        out);
}

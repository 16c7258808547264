// The reader of shadeop tables, on an image of a library's memory.
//
// The first byte counts the records, modulo 16. Three places of two bytes each follow for each of
// them, the low byte first: where its texts begin in the rest of the input, which is the memory of
// the library. A place behind the end points out of it, and 65535 is null.

#include <cstring>
#include <string>
#include <vector>

#include "fuzz/FuzzTarget.h"
#include "symbols/SlcShadeopReader.h"
#include "symbols/SlcShadeopTable.h"

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t k_placeSize = 2;
constexpr std::size_t k_texts = sizeof(SlcShadeopRecord) / sizeof(const char*);

const char* PointerAt(Bytes places, std::size_t number, Bytes memory)
{
    const std::size_t low = places[number * k_placeSize];
    const std::size_t place = low + 256 * std::size_t{places[number * k_placeSize + 1]};
    // As a number, since a pointer must not leave its object even unread.
    const auto begin = reinterpret_cast<std::uintptr_t>(memory.data());
    return place == 0xffff ? nullptr : reinterpret_cast<const char*>(begin + place);
}

void ReadDeclaration(std::string_view text)
{
    SlcShadeopReader reader(text);
    if (!reader.ReadReturnType() || !reader.ReadMethodName())
        return;
    bool isGood = false;
    if (reader.ReadArguments(isGood).empty() && isGood)
        FuzzFault("a shadeop without arguments was taken: " + std::string(text));
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Bytes input(data, size);
    const std::size_t count = input.empty() ? 0 : k_texts * (input[0] % 16);
    if (input.size() < 1 + count * k_placeSize)
        return 0;
    const Bytes places = input.subspan(1, count * k_placeSize);
    // Of its own, so that a read past its end is seen.
    const std::vector<std::uint8_t> memory(input.begin() + 1 + places.size(), input.end());
    std::vector<const char*> records;
    for (std::size_t i = 0; i < count; ++i)
        records.push_back(PointerAt(places, i, memory));

    QxMemoryRanges ranges;
    ranges.Add(std::as_bytes(std::span(memory)));
    SlcShadeopTable table(std::as_bytes(std::span(records)), ranges);
    while (const auto record = table.Next()) {
        ReadDeclaration(record->declaration);
        if (record->init.size() + record->cleanup.size() > 2 * memory.size())
            FuzzFault("a text goes out of the library");
    }
    return 0;
}

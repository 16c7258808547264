// Runs the reader of shadeop tables on files that should be libraries.

#include <cstring>
#include <string>
#include <vector>

#include "fuzz/FuzzTarget.h"
#include "sqx/SqxShadeopTable.h"
#include "symbols/SlcShadeopReader.h"

namespace {

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
    std::vector<std::byte> bytes(size);
    if (size > 0)
        std::memcpy(bytes.data(), data, size);
    const SqxElfFile library(std::move(bytes));
    for (const char* function :
         {"good", "mixed", "nulls", "text", "wild", "lost", "code", "wave", "tick", "sum"}) {
        const SqxShadeopTable table(library, function);
        for (const SqxShadeopRecord& record : table.Records()) {
            ReadDeclaration(record.declaration);
            if (record.init.size() + record.cleanup.size() > 2 * size)
                FuzzFault("a text goes out of the library");
            static_cast<void>(library.Find(record.init));
        }
        if (!library.IsLibrary() && !table.Records().empty())
            FuzzFault("what is no library has a table");
    }
    return 0;
}

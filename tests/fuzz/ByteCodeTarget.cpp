// A byte-code file, whatever it holds, loaded and verified.

#include <string_view>

#include "fuzz/FuzzTarget.h"
#include "machine/QxVerifier.h"
#include "sqx/SqxDump.h"
#include "sqx/SqxReader.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    SqxReader reader;
    const bool isRead = reader.Read({reinterpret_cast<const char*>(data), size});
    if (isRead == !reader.Message().empty())
        FuzzFault("refused without a message, or read with one: " + reader.Message());
    static_cast<void>(SqxDump(reader.Shader()));
    if (!isRead)
        return 0;
    QxVerifier verifier;
    if (verifier.Verify(reader.Shader()) == !verifier.Message().empty())
        FuzzFault("refused without a message, or verified with one: " + verifier.Message());
    return 0;
}

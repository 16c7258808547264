// A name without a number is a fault of the compiler, since the writer composes only names that a
// card defines.
//
// Tested by tests/backends/ByteCodeTableTest.cpp.

#include "backends/SlcByteCode.h"

#include <string>

#include "sqx/SqxNumbers.h"
#include "support/SlcDiagnostics.h"

short SlcByteCode::GetInstrNb(std::string_view name)
{
    if (const short number = SqxNumberNamed(name))
        return number;
    FatalError("Function unknown (in SlcByteCode::GetInstrNb) " + std::string(name));
}

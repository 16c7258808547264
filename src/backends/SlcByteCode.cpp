// Numbers by name. A name without a number is a fault of the compiler, since the names that the
// writer puts together are those of the table.
//
// Tested by tests/backends/ByteCodeTableTest.cpp.

#include "backends/SlcByteCode.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>

#include "support/SlcDiagnostics.h"

namespace {

struct NamedNumber {
    std::string_view name;
    short number;
};

/// The rows without their end, in the order of the names.
constexpr auto k_byName = [] {
    std::array<NamedNumber, std::size(k_sqxNumbers) - 1> rows;
    std::transform(std::begin(k_sqxNumbers), std::end(k_sqxNumbers) - 1, rows.begin(),
                   [](const SqxNumberRow& row) {
                       return NamedNumber{row.name, row.number};
                   });
    std::sort(rows.begin(), rows.end(),
              [](const NamedNumber& a, const NamedNumber& b) { return a.name < b.name; });
    return rows;
}();

}  // namespace

short SlcByteCode::GetInstrNb(std::string_view name)
{
    const auto* found =
        std::lower_bound(k_byName.begin(), k_byName.end(), name,
                         [](const NamedNumber& row, std::string_view n) { return row.name < n; });
    if (found == k_byName.end() || found->name != name)
        FatalError("Function unknown (in SlcByteCode::GetInstrNb) " + std::string(name));
    return found->number;
}

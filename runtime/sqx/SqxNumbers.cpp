#include "sqx/SqxNumbers.h"

#include <array>

namespace {

constexpr auto k_names = [] {
    std::array<std::string_view, k_sqxHighestNumber + 1> names;
    for (const SqxNumberRow* table : {k_sqxNumbers, k_sqxMarks})
        for (const SqxNumberRow* row = table; row->name; ++row)
            names[static_cast<std::size_t>(row->number)] = row->name;
    return names;
}();

}  // namespace

std::string_view SqxNumberName(int number)
{
    if (number < 0 || number > k_sqxHighestNumber)
        return {};
    return k_names[static_cast<std::size_t>(number)];
}

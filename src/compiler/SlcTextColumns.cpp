// Tested by tests/compiler.

#include "compiler/SlcTextColumns.h"

#include <algorithm>
#include <charconv>
#include <limits>

int SlcTextColumns::ColumnOf(std::size_t offset) const
{
    // The scanner's column cannot be used, since it does not count skipped characters.
    const std::size_t line = offset == 0 ? 0 : m_text.rfind('\n', offset - 1) + 1;
    auto change = std::upper_bound(
        m_columns.begin(), m_columns.end(), offset,
        [](std::size_t place, const SlcColumnChange& c) { return place < c.offset; });
    if (change == m_columns.begin() || (--change)->offset < line)
        return static_cast<int>(offset - line) + 1;
    return change->column + (change->isFixed ? 0 : static_cast<int>(offset - change->offset));
}

SlcColumns SlcTextColumns::ColumnsOf(std::size_t begin, std::size_t end, int line)
{
    if (m_lines.empty())
        FindLines();
    const auto next =
        std::upper_bound(m_lines.begin(), m_lines.end(), begin,
                         [](std::size_t place, const Line& other) { return place < other.offset; });
    if (begin >= end || next == m_lines.begin() || (next - 1)->number != line)
        return {};
    const std::size_t last =
        std::min(end, next == m_lines.end() ? m_text.size() : next->offset - 1);
    const int column = ColumnOf(begin);
    // All text of a macro's expansion has one column.
    return {column, std::max(1, ColumnOf(std::max(last, begin + 1) - 1) + 1 - column)};
}

void SlcTextColumns::FindLines()
{
    int number = 1;
    for (std::size_t at = 0; at <= m_text.size();) {
        m_lines.push_back({at, number});
        const std::size_t end = std::min(m_text.find('\n', at), m_text.size());
        const std::string_view line = m_text.substr(at, end - at);
        int marked = 0;
        if (line.starts_with("# ") &&
            std::from_chars(line.data() + 2, line.data() + line.size(), marked).ec == std::errc())
            number = marked;
        else if (number < std::numeric_limits<int>::max())
            ++number;
        at = end + 1;
    }
}

#pragma once

#include <cstddef>
#include <span>
#include <vector>

/// Lists of numbers, stored one after the other in a single array, since a `std::vector` for each
/// list would cost an allocation. The lists are built in order and then only read.
class SlcNumberLists {
public:
    /// Append to the current list.
    void Add(int number) { m_numbers.push_back(number); }
    void Add(std::span<const int> numbers)
    {
        for (const int number : numbers)  // usually short
            m_numbers.push_back(number);
    }
    /// Ends the current list and begins the next.
    void EndList() { m_starts.push_back(static_cast<int>(m_numbers.size())); }

    /// Returns a list that has ended, counted from 0. The span is valid until the next `Add`.
    [[nodiscard]] std::span<const int> operator[](std::size_t list) const
    {
        return std::span(m_numbers).subspan(m_starts[list], m_starts[list + 1] - m_starts[list]);
    }
    /// Returns the number of lists that have ended.
    [[nodiscard]] std::size_t Count() const { return m_starts.size() - 1; }

private:
    std::vector<int> m_numbers;
    std::vector<int> m_starts = {0};  // start of each list, and the end of the last one
};

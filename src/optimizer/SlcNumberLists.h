#pragma once

#include <cstddef>
#include <span>
#include <vector>

/// Lists of numbers, one behind the other in one array: for sets that are made once, list by list,
/// and then only read. A list for each instruction as an object of its own would cost an allocation
/// for each.
class SlcNumberLists {
public:
    /// To the list at hand.
    void Add(int number) { m_numbers.push_back(number); }
    void Add(std::span<const int> numbers)
    {
        for (const int number : numbers)  // a few
            m_numbers.push_back(number);
    }
    /// What is added from here on belongs to the next list.
    void EndList() { m_starts.push_back(static_cast<int>(m_numbers.size())); }

    [[nodiscard]] std::span<const int> operator[](std::size_t list) const
    {
        return std::span(m_numbers).subspan(m_starts[list], m_starts[list + 1] - m_starts[list]);
    }
    [[nodiscard]] std::size_t Count() const { return m_starts.size() - 1; }

private:
    std::vector<int> m_numbers;
    std::vector<int> m_starts = {0};  // of each list, and the end of the last one
};

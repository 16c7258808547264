#pragma once

#include <cstddef>
#include <vector>

/// A set of small integers below a fixed bound, with insertion, removal and test in O(1), and
/// walking and clearing in O(members).
///
/// Preston Briggs and Linda Torczon, "An efficient representation for sparse sets", ACM Letters
/// on Programming Languages and Systems, 1993.
class SlcSparseSet {
public:
    /// A set of numbers below `bound`; allocates its memory at once.
    explicit SlcSparseSet(std::size_t bound) : m_places(bound, 0) {}

    [[nodiscard]] bool Contains(int member) const
    {
        const std::size_t place = m_places[member];
        return place < m_members.size() && m_members[place] == member;
    }
    /// True if it was not in the set.
    bool Insert(int member)
    {
        if (Contains(member))
            return false;
        m_places[member] = m_members.size();
        m_members.push_back(member);
        return true;
    }
    void Erase(int member)
    {
        if (!Contains(member))
            return;
        const std::size_t place = m_places[member];
        const int moved = m_members.back();
        m_members[place] = moved;
        m_places[moved] = place;
        m_members.pop_back();
    }
    void Clear() { m_members.clear(); }
    /// The members in unspecified order.
    [[nodiscard]] const std::vector<int>& Members() const { return m_members; }

private:
    std::vector<std::size_t> m_places;  // index of each member in m_members; unspecified for other
                                        // numbers
    std::vector<int> m_members;
};

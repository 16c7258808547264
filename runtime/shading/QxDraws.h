#pragma once

#include "QxArray.h"

/// Counts the random numbers that each point of a run has drawn by `random`. If a host computes
/// each number from the point and this count, it depends neither on other points nor on the order
/// in which points are computed.
class QxDraws {
public:
    /// Stands for all points, in a call whose result is uniform.
    static constexpr unsigned int k_allPoints = ~0u;
    /// The first count for default values that are computed once for several runs, so that their
    /// draws are not those of a run.
    static constexpr unsigned int k_ofDefaults = 1u << 31;

    /// Discards all counts; the next counts start from `first`.
    void Start(unsigned int first)
    {
        m_first = first;
        m_ofAll = 0;
        m_counts.Clear();
    }
    /// Counts a draw. Returns the number of draws of the point since `Start`, without this one,
    /// plus `first`. Throws std::bad_alloc if there is no memory.
    unsigned int Next(unsigned int point)
    {
        if (point == k_allPoints)
            return m_first + m_ofAll++;
        while (m_counts.Size() <= point)
            m_counts.Add(0);
        return m_first + m_counts[point]++;
    }

private:
    unsigned int m_first = 0;
    unsigned int m_ofAll = 0;
    QxList<unsigned int> m_counts;
};

#pragma once

#include "QxArray.h"

/// Counts the random numbers that each point of a run has drawn by `random`. So the number that a
/// call returns at a point depends neither on other points nor on the order in which points are
/// computed.
class QxDraws {
public:
    /// Stands for all points, in a call whose result is uniform.
    static constexpr unsigned int k_allPoints = ~0u;
    /// Added to the counts in default values that are computed once for several runs.
    static constexpr unsigned int k_ofDefaults = 1u << 31;

    /// Discards all counts; the next counts start from `first`.
    void Start(unsigned int first)
    {
        m_first = first;
        m_ofAll = 0;
        m_counts.Clear();
    }
    /// Counts a draw. Returns the number of earlier draws of the point, plus `first`. Throws what
    /// `new` throws.
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

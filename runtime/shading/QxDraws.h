#pragma once

#include "QxArray.h"

/// Counts how many numbers each point of a run has drawn by `random`. So the number that a call gives at
/// a point does not depend on what other points do, nor on the order in which points are handled.
class QxDraws {
public:
    /// Means all points: the point of a call whose result is uniform.
    static constexpr unsigned int k_allPoints = ~0u;
    /// Added to the counts in default values that are computed once for several runs.
    static constexpr unsigned int k_ofDefaults = 1u << 31;

    /// Forgets all counts; the next ones begin with this one.
    void Start(unsigned int first)
    {
        m_first = first;
        m_ofAll = 0;
        m_counts.Clear();
    }
    /// How many numbers the point has drawn since then. Throws what `new` throws.
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

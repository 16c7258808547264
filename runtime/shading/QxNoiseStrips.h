#pragma once

#include "QxBuiltIns.h"
#include "QxStrips.h"

// Computes noise for whole-grid forms, strip by strip and component by component:
//
//     for each point: result = (noise of seed 1, of seed 2, of seed 3)
// becomes
//     for each strip: for each seed: for each point of the strip: number of the seed = noise
//
// so that the innermost loop can be vectorized, and is compiled once for all three components. With
// a condition, a strip contains only the active points, or all points if the noise is cheap.

/// The points of a strip: the active ones among `count` points of the grid from `first` on.
template <class Where>
class QxStripPoints {
public:
    QxStripPoints(unsigned int first, unsigned int count, const Where& where)
    {
        for (unsigned int i = first; i < first + count; ++i) {
            m_points[m_count] = i;
            m_count += where(i) ? 1u : 0u;
        }
    }
    unsigned int Count() const { return m_count; }
    unsigned int operator[](unsigned int j) const { return m_points[j]; }

private:
    unsigned int m_points[k_qxStrip];
    unsigned int m_count = 0;
};

template <>
class QxStripPoints<QxAllPoints> {
public:
    QxStripPoints(unsigned int first, unsigned int count, const QxAllPoints&)
        : m_first(first),
          m_count(count)
    {
    }
    unsigned int Count() const { return m_count; }
    unsigned int operator[](unsigned int j) const { return m_first + j; }

private:
    unsigned int m_first;
    unsigned int m_count;
};

/// Selects the points of a strip that are computed, and the computed points that are stored.
template <bool isCheap>
struct QxPicked {
    template <class Where>
    using Of = Where;

    template <class Where>
    static const Where& Computed(const Where& where)
    {
        return where;
    }
    template <class Where>
    static QxAllPoints Stored(const Where&)
    {
        return {};
    }
};

template <>
struct QxPicked<true> {
    template <class Where>
    using Of = QxAllPoints;

    template <class Where>
    static QxAllPoints Computed(const Where&)
    {
        return {};
    }
    template <class Where>
    static const Where& Stored(const Where& where)
    {
        return where;
    }
};

/// True if any of the points is active.
template <class Where>
inline bool QxIsAnyOf(unsigned int first, unsigned int count, const Where& where)
{
    unsigned int any = 0;
    for (unsigned int i = first; i < first + count; ++i)
        any |= where(i) ? 1u : 0u;
    return any != 0;
}

/// `Put` stores the arguments of a point, number by number: from `numbers[0]` on, each in the next
/// array. `Sum` adds the sizes of all arguments.
struct QxStripArguments {
    static void Put(QxNumbers*, unsigned int) {}
    template <class... Rest>
    static void Put(QxNumbers* numbers, unsigned int j, float value, const Rest&... rest)
    {
        numbers[0].at[j] = value;
        Put(numbers + 1, j, rest...);
    }
    template <class... Rest>
    static void Put(QxNumbers* numbers, unsigned int j, const QxVector3& value, const Rest&... rest)
    {
        numbers[0].at[j] = value.x;
        numbers[1].at[j] = value.y;
        numbers[2].at[j] = value.z;
        Put(numbers + 3, j, rest...);
    }

    static constexpr unsigned int Sum() { return 0; }
    template <class... Rest>
    static constexpr unsigned int Sum(std::size_t size, Rest... rest)
    {
        return static_cast<unsigned int>(size) + Sum(rest...);
    }
};

/// Computes one component of the noise at `count` points. `numbers` contains n coordinates,
/// followed by n periods if the noise is periodic.
template <class Kind, int n>
inline void QxNoiseOfStrip(QxNumbers& results, const QxNumbers* numbers, unsigned int count,
                           unsigned int seed)
{
    for (unsigned int j = 0; j < count; ++j) {
        float x[n];
        int periods[n];
        for (int i = 0; i < n; ++i)
            x[i] = numbers[i].at[j];
        for (int i = 0; Kind::isPeriodic && i < n; ++i)
            periods[i] = qxnoise::PeriodOf(numbers[n + i].at[j]);
        results.at[j] = Kind::At(x, periods, seed);
    }
}

inline void QxTake(float& result, const QxNumbers* components, unsigned int j)
{
    result = components[0].at[j];
}

template <class Triple>
inline void QxTake(Triple& result, const QxNumbers* components, unsigned int j)
{
    result = QxMakeTriple<Triple>(components[0].at[j], components[1].at[j], components[2].at[j]);
}

/// Computes noise strip by strip. The result may be one of the arguments, since a strip is read
/// before it is written.
template <class Kind, unsigned int components, class Where, class Result, class... Arguments>
inline void QxNoiseOverGrid(unsigned int points, const Where& where, Result&& result,
                            const Arguments&... arguments)
{
    constexpr unsigned int count =
        QxStripArguments::Sum(sizeof(QxAt(arguments, 0u))...) / sizeof(float);
    constexpr int n = static_cast<int>(Kind::isPeriodic ? count / 2 : count);
    const auto& computed = QxPicked<Kind::isCheap>::Computed(where);
    const auto& stored = QxPicked<Kind::isCheap>::Stored(where);
    for (unsigned int first = 0; first < points; first += k_qxStrip) {
        const unsigned int length = points - first < k_qxStrip ? points - first : k_qxStrip;
        if (!QxIsAnyOf(first, length, where))
            continue;
        const QxStripPoints<typename QxPicked<Kind::isCheap>::template Of<Where>> strip(
            first, length, computed);
        QxNumbers numbers[count];
        for (unsigned int j = 0; j < strip.Count(); ++j)
            QxStripArguments::Put(numbers, j, QxAt(arguments, strip[j])...);
        QxNumbers values[components];
        QX_ONE_BY_ONE
        for (unsigned int i = 0; i < components; ++i)
            QxNoiseOfStrip<Kind, n>(values[i], numbers, strip.Count(), components == 1 ? 0 : i + 1);
        for (unsigned int j = 0; j < strip.Count(); ++j)
            if (stored(strip[j]))
                QxTake(QxAt(result, strip[j]), values, j);
    }
}

// The overloads of `QxOverGrid` below replace the one of QxForms.h for noise, except for one number
// at all points: only then do compilers vectorize the loop of QxForms.h.

/// Number of points from which strips are faster than a loop over points, for cheap noise.
constexpr unsigned int k_qxFewestForNoise = 4;

template <class Kind, unsigned int components, class Where, class Function, class Result,
          class... Arguments>
inline void QxNoiseOverPoints(unsigned int points, const Where& where, const Function& function,
                              Result&& result, const Arguments&... arguments)
{
    if (Kind::isCheap && points < k_qxFewestForNoise) {
        QX_ONE_BY_ONE
        for (unsigned int i = 0; i < points; ++i)
            if (where(i))
                QxAt(result, i) = function(QxAt(arguments, i)...);
        return;
    }
    QxNoiseOverGrid<Kind, components>(points, where, result, arguments...);
}

template <class Where, class Noise, class Result, class... Arguments>
inline void QxOverGrid(unsigned int points, const Where& where,
                       const QxNoiseCall<Noise, QxAnyTriple>& noise, Result&& result,
                       Arguments&&... arguments)
{
    QxNoiseOverPoints<typename Noise::Kind, 3>(points, where, noise, result, arguments...);
}

template <class Condition, class Noise, class Result, class... Arguments>
inline void QxOverGrid(unsigned int points, const QxPointsIf<Condition>& where,
                       const QxNoiseCall<Noise, float>& noise, Result&& result,
                       Arguments&&... arguments)
{
    QxNoiseOverPoints<typename Noise::Kind, 1>(points, where, noise, result, arguments...);
}

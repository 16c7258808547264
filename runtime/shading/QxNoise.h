#pragma once

#include <cstring>

#include "QxMath.h"

// Lattice noise of one to four dimensions, from 0 to 1. A triple consists of three independent
// values. The values depend only on the arguments, so a pattern is the same in every run. Random
// numbers, which are computed by the same hash, are at the end.

namespace qxnoise {

/// Returns the initial value for the hash of a lattice point. The coordinates are added one after
/// the other by the 32-bit finalizer of Austin Appleby's MurmurHash3 (2011).
inline unsigned int HashOfSeed(unsigned int seed)
{
    return seed * 0x9e3779b9u + 0x85ebca6bu;
}

/// Adds one coordinate to the hash.
inline unsigned int HashOn(unsigned int hash, int coordinate)
{
    hash ^= static_cast<unsigned int>(coordinate);
    hash = (hash ^ (hash >> 16)) * 0x85ebca6bu;
    hash = (hash ^ (hash >> 13)) * 0xc2b2ae35u;
    return hash ^ (hash >> 16);
}

template <int n>
inline unsigned int Hash(const int (&point)[n], unsigned int seed)
{
    unsigned int hash = HashOfSeed(seed);
    for (int i = 0; i < n; ++i)
        hash = HashOn(hash, point[i]);
    return hash;
}

/// Returns the lattice cell of a coordinate. Numbers beyond 1e9 or -1e9, which include those that
/// an int cannot represent, share the outermost cells; NaN is in the lowest one. Rounds down by a
/// comparison, since the baseline processor has no vector instruction that rounds down.
inline int CellOf(float x)
{
    const float bound = 1.0e9f;
    const float above = x > -bound ? x : -bound;
    const float within = above < bound ? above : bound;
    const int whole = static_cast<int>(within);
    return whole - static_cast<int>(static_cast<float>(whole) > within);
}

/// Returns a lattice coordinate modulo a period; a period below 1 is treated as 1. Divides in
/// double precision, since that can be vectorized, and the quotient of two ints is never rounded to
/// the next whole number.
inline int Wrap(int coordinate, int period)
{
    const int p = period < 1 ? 1 : period;
    const int times = static_cast<int>(static_cast<double>(coordinate) / static_cast<double>(p));
    const int rest = coordinate - times * p;
    return rest < 0 ? rest + p : rest;
}

/// Returns the weight of the next lattice point at t from 0 to 1. Its first and second derivatives
/// vanish at both ends, so that lattice planes are not visible.
inline float Fade(float t)
{
    return t * t * t * (t * (t * 6 - 15) + 10);
}

/// Returns x, negated unless the lowest bit of `bit` is set. Has no branch, since a processor could
/// not predict it: the bit is random.
inline float WithSign(float x, unsigned int bit)
{
    unsigned int bits;
    std::memcpy(&bits, &x, sizeof bits);
    bits ^= (~bit & 1u) << 31;
    std::memcpy(&x, &bits, sizeof bits);
    return x;
}

// In gradient noise, loops over dimensions and corners are written as recursive templates: if a
// compiler did not unroll one of them, it could not vectorize the loop over points around it.

/// Adds to `sum` the coordinates from i on, except the one with the index `left`, each with the
/// sign that a bit of the hash selects.
template <int i, int n>
struct Signed {
    static float AddTo(float sum, const float (&offset)[n], unsigned int hash, int left)
    {
        const float next = i == left ? 0.0f : WithSign(offset[i], hash >> i);
        return Signed<i + 1, n>::AddTo(sum + next, offset, hash, left);
    }
};

template <int n>
struct Signed<n, n> {
    static float AddTo(float sum, const float (&)[n], unsigned int, int) { return sum; }
};

/// Returns the dot product of the offset and a gradient that the hash selects. In two to four
/// dimensions, a gradient has the components 1 or -1, except that one of three or four is 0. So the
/// product is at most 1 in the middle of a cell, where each offset is 1/2 or -1/2, except in four
/// dimensions. In one dimension, gradients from -2 to 2 give the same range.
template <int n>
inline float Slope(unsigned int hash, const float (&offset)[n])
{
    if (n == 1)
        return offset[0] * (static_cast<float>(hash & 15u) / 3.75f - 2);
    const int left = n == 2 ? -1 : static_cast<int>((hash >> 8) % n);
    return Signed<0, n>::AddTo(0, offset, hash, left);
}

/// The corners of a cell; corner 2^i is next to corner 0 along dimension i. Hashes and weights are
/// computed dimension by dimension, so that common parts are computed once: 14 steps of the hash
/// instead of 24 in three dimensions.
template <int n>
struct Corners {
    unsigned int hashes[1 << n];
    float weights[1 << n];
};

/// Splits the corners from k up to `count` into two each, in the cells `here` and `next` of the
/// next dimension.
template <int k, int count, int n>
struct Twice {
    static void Grow(Corners<n>& corners, int here, int next, float fade)
    {
        corners.hashes[k + count] = HashOn(corners.hashes[k], next);
        corners.weights[k + count] = corners.weights[k] * fade;
        corners.hashes[k] = HashOn(corners.hashes[k], here);
        corners.weights[k] = corners.weights[k] * (1 - fade);
        Twice<k + 1, count, n>::Grow(corners, here, next, fade);
    }
};

template <int count, int n>
struct Twice<count, count, n> {
    static void Grow(Corners<n>&, int, int, float) {}
};

/// Adds the dimensions from i on to the corners, and sets the offsets of the point from corner 0.
template <int i, int n>
struct Dimensions {
    static void Add(Corners<n>& corners, float (&offset)[n], const float (&x)[n],
                    const int* periods)
    {
        const int cell = CellOf(x[i]);
        const float rest = x[i] - static_cast<float>(cell);
        offset[i] = rest >= 0 && rest < 1 ? rest : 0;
        Twice<0, 1 << i, n>::Grow(corners, periods ? Wrap(cell, periods[i]) : cell,
                                  periods ? Wrap(cell + 1, periods[i]) : cell + 1, Fade(offset[i]));
        Dimensions<i + 1, n>::Add(corners, offset, x, periods);
    }
};

template <int n>
struct Dimensions<n, n> {
    static void Add(Corners<n>&, float (&)[n], const float (&)[n], const int*) {}
};

/// Computes the components from i on of the vector from a corner to the point.
template <int i, int n>
struct Way {
    static void From(int corner, const float (&offset)[n], float (&way)[n])
    {
        way[i] = offset[i] - static_cast<float>((corner >> i) & 1);
        Way<i + 1, n>::From(corner, offset, way);
    }
};

template <int n>
struct Way<n, n> {
    static void From(int, const float (&)[n], float (&)[n]) {}
};

/// Adds the contributions of the corners from `corner` on to `sum`.
template <int corner, int n, bool end = corner == 1 << n>
struct Weighed {
    static float AddTo(float sum, const Corners<n>& corners, const float (&offset)[n])
    {
        float way[n];
        Way<0, n>::From(corner, offset, way);
        const float next = corners.weights[corner] * Slope(corners.hashes[corner], way);
        return Weighed<corner + 1, n>::AddTo(sum + next, corners, offset);
    }
};

template <int corner, int n>
struct Weighed<corner, n, true> {
    static float AddTo(float sum, const Corners<n>&, const float (&)[n]) { return sum; }
};

/// Returns gradient noise (Ken Perlin, "Improving Noise", 2002) around 0, within -1..1. If
/// `periods` is null, the noise is not periodic.
template <int n>
inline float Gradient(const float (&x)[n], const int* periods, unsigned int seed)
{
    float offset[n];
    Corners<n> corners;
    corners.hashes[0] = HashOfSeed(seed);
    corners.weights[0] = 1;
    Dimensions<0, n>::Add(corners, offset, x, periods);
    return QxClamp(Weighed<0, n>::AddTo(0, corners, offset), -1.0f, 1.0f);
}

/// Returns one value per lattice cell, from 0 up to, but not including, 1.
template <int n>
inline float Cell(const float (&x)[n], unsigned int seed)
{
    int cell[n];
    for (int i = 0; i < n; ++i)
        cell[i] = CellOf(x[i]);
    return static_cast<float>(Hash(cell, seed) >> 8) / 16777216.0f;
}

// Policies for the kinds of noise: how the value for a seed is computed, whether periods follow the
// coordinates, and whether values that are not needed may be computed.

struct PlainNoise {
    static constexpr bool isPeriodic = false;
    static constexpr bool isCheap = false;
    template <int n>
    static float At(const float (&x)[n], const int*, unsigned int seed)
    {
        return 0.5f + 0.5f * Gradient(x, nullptr, seed);
    }
};

struct PeriodicNoise {
    static constexpr bool isPeriodic = true;
    static constexpr bool isCheap = false;
    template <int n>
    static float At(const float (&x)[n], const int* periods, unsigned int seed)
    {
        return 0.5f + 0.5f * Gradient(x, periods, seed);
    }
};

struct CellNoise {
    static constexpr bool isPeriodic = false;
    static constexpr bool isCheap = true;
    template <int n>
    static float At(const float (&x)[n], const int*, unsigned int seed)
    {
        return Cell(x, seed);
    }
};

template <class Noise, int n>
inline void Assign(float& result, const float (&x)[n], const int* periods)
{
    result = Noise::At(x, periods, 0);
}

template <class Noise, class Triple, int n>
inline void Assign(Triple& result, const float (&x)[n], const int* periods)
{
    result = QxMakeTriple<Triple>(Noise::At(x, periods, 1), Noise::At(x, periods, 2),
                                  Noise::At(x, periods, 3));
}

/// Rounds a period to a whole number as `QxRound` does; the result is at most 1e9.
inline int PeriodOf(float period)
{
    return CellOf(period + 0.5f);
}

/// Computes the noise at a number, two numbers, a point, or a point and a number, as a float or a
/// triple.
template <class Noise>
struct Family {
    using Kind = Noise;

    template <class Result>
    static void At(Result& result, float x)
    {
        Assign<Noise>(result, {x}, nullptr);
    }
    template <class Result>
    static void At(Result& result, float x, float y)
    {
        Assign<Noise>(result, {x, y}, nullptr);
    }
    template <class Result>
    static void At(Result& result, const QxVector3& p)
    {
        Assign<Noise>(result, {p.x, p.y, p.z}, nullptr);
    }
    template <class Result>
    static void At(Result& result, const QxVector3& p, float t)
    {
        Assign<Noise>(result, {p.x, p.y, p.z, t}, nullptr);
    }
};

}  // namespace qxnoise

/// Smooth noise, `QxNoise::At(result, ...)`. It is 0.5 at each lattice point.
using QxNoise = qxnoise::Family<qxnoise::PlainNoise>;
/// Noise that is constant in each cell of the lattice.
using QxCellNoise = qxnoise::Family<qxnoise::CellNoise>;

/// Smooth periodic noise. The periods follow the coordinates, and are rounded to whole numbers,
/// with a minimum of 1.
struct QxPeriodicNoise {
    using Kind = qxnoise::PeriodicNoise;

    template <class Result>
    static void At(Result& result, float x, float px)
    {
        const int periods[] = {qxnoise::PeriodOf(px)};
        qxnoise::Assign<Kind>(result, {x}, periods);
    }
    template <class Result>
    static void At(Result& result, float x, float y, float px, float py)
    {
        const int periods[] = {qxnoise::PeriodOf(px), qxnoise::PeriodOf(py)};
        qxnoise::Assign<Kind>(result, {x, y}, periods);
    }
    template <class Result>
    static void At(Result& result, const QxVector3& p, const QxVector3& pp)
    {
        const int periods[] = {qxnoise::PeriodOf(pp.x), qxnoise::PeriodOf(pp.y),
                               qxnoise::PeriodOf(pp.z)};
        qxnoise::Assign<Kind>(result, {p.x, p.y, p.z}, periods);
    }
    template <class Result>
    static void At(Result& result, const QxVector3& p, float t, const QxVector3& pp, float pt)
    {
        const int periods[] = {qxnoise::PeriodOf(pp.x), qxnoise::PeriodOf(pp.y),
                               qxnoise::PeriodOf(pp.z), qxnoise::PeriodOf(pt)};
        qxnoise::Assign<Kind>(result, {p.x, p.y, p.z, t}, periods);
    }
};

// Numbers for `random`, from 0 up to, but not including, 1

/// Returns the random number of a place, which is any list of integers, such as the numbers of a
/// draw and of a point. It depends only on the seed and the place.
template <int n>
inline float QxRandomNumber(unsigned int seed, const int (&place)[n])
{
    return static_cast<float>(qxnoise::Hash(place, seed) >> 8) / 16777216.0f;
}

/// A stream of random numbers, whose places are the values of a counter.
class QxRandomStream {
public:
    explicit QxRandomStream(unsigned int seed = 0) : m_seed(seed) {}
    float Next()
    {
        const int place[] = {static_cast<int>(m_count++)};
        return QxRandomNumber(m_seed, place);
    }

private:
    unsigned int m_seed;
    unsigned int m_count = 0;  // wraps around
};

#pragma once

#include <cstring>

#include "QxMath.h"

// Lattice noises of one to four dimensions, from 0 to 1. A triple takes three independent values.
// They depend on nothing but their arguments, so that a pattern stays as it is from run to run.

namespace qxnoise {

/// A well mixed number for a lattice point: 32-bit finalizing steps of Austin Appleby's
/// MurmurHash3 (2011), coordinate by coordinate.
inline unsigned int HashOfSeed(unsigned int seed)
{
    return seed * 0x9e3779b9u + 0x85ebca6bu;
}

/// With one coordinate more.
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

/// The lattice cell of a coordinate. Numbers too large for a cell, infinities and what is no
/// number share the outermost ones.
inline int CellOf(float x)
{
    const float bound = 1.0e9f;
    if (!(x > -bound))
        return static_cast<int>(-bound);
    return static_cast<int>(qxmath::Floor(x < bound ? x : bound));
}

/// Keeps a lattice coordinate within a period; a period below 1 counts as 1.
inline int Wrap(int coordinate, int period)
{
    const int p = period < 1 ? 1 : period;
    const int rest = coordinate % p;
    return rest < 0 ? rest + p : rest;
}

/// Slope and curvature vanish at both ends, so that no lattice plane shows.
inline float Fade(float t)
{
    return t * t * t * (t * (t * 6 - 15) + 10);
}

/// x, negated unless the lowest bit is set: without a branch, since the bit is random.
inline float WithSign(float x, unsigned int bit)
{
    unsigned int bits;
    std::memcpy(&bits, &x, sizeof bits);
    bits ^= (~bit & 1u) << 31;
    std::memcpy(&x, &bits, sizeof bits);
    return x;
}

/// The offset's product with a gradient that the hash picks: all coordinates but one count, with
/// either sign. In the middle of a cell two such coordinates come to 1, as does the one coordinate
/// of one dimension with slopes between -2 and 2.
template <int n>
inline float Slope(unsigned int hash, const float (&offset)[n])
{
    if (n == 1)
        return offset[0] * (static_cast<float>(hash & 15u) / 3.75f - 2);
    const int left = n == 2 ? -1 : static_cast<int>((hash >> 8) % n);
    float sum = 0;
    for (int i = 0; i < n; ++i)
        sum += i == left ? 0.0f : WithSign(offset[i], hash >> i);
    return sum;
}

/// The corners of a cell, of which corner 2^i is the next one along dimension i. Hashes and weights grow
/// dimension by dimension, so that what corners have in common is computed once: 14 steps of the hash
/// instead of 24 in three dimensions.
template <int n>
struct Corners {
    unsigned int hashes[1 << n];
    float weights[1 << n];
};

/// Adds dimension i, whose cells are `here` and `next`. Loops of constant lengths are unrolled, so that those
/// over points become ones of vectors.
template <int i, int n>
inline void Grow(Corners<n>& corners, int here, int next, float fade)
{
    for (int k = 0; k < (1 << i); ++k) {
        corners.hashes[k + (1 << i)] = HashOn(corners.hashes[k], next);
        corners.weights[k + (1 << i)] = corners.weights[k] * fade;
    }
    for (int k = 0; k < (1 << i); ++k) {
        corners.hashes[k] = HashOn(corners.hashes[k], here);
        corners.weights[k] = corners.weights[k] * (1 - fade);
    }
}

/// Adds the dimensions from i on.
template <int i, int n>
struct Dimensions {
    static void Add(Corners<n>& corners, float (&offset)[n], const float (&x)[n],
                    const int* periods)
    {
        const int cell = CellOf(x[i]);
        const float rest = x[i] - static_cast<float>(cell);
        offset[i] = rest >= 0 && rest < 1 ? rest : 0;
        Grow<i>(corners, periods ? Wrap(cell, periods[i]) : cell,
                periods ? Wrap(cell + 1, periods[i]) : cell + 1, Fade(offset[i]));
        Dimensions<i + 1, n>::Add(corners, offset, x, periods);
    }
};

template <int n>
struct Dimensions<n, n> {
    static void Add(Corners<n>&, float (&)[n], const float (&)[n], const int*) {}
};

/// Gradient noise (Ken Perlin, "Improving Noise", 2002) around 0, within -1..1. `periods` may be
/// null.
template <int n>
inline float Gradient(const float (&x)[n], const int* periods, unsigned int seed)
{
    float offset[n];
    Corners<n> corners;
    corners.hashes[0] = HashOfSeed(seed);
    corners.weights[0] = 1;
    Dimensions<0, n>::Add(corners, offset, x, periods);
    float sum = 0;
    for (int corner = 0; corner < (1 << n); ++corner) {
        float toPoint[n];
        for (int i = 0; i < n; ++i)
            toPoint[i] = offset[i] - static_cast<float>((corner >> i) & 1);
        sum += corners.weights[corner] * Slope(corners.hashes[corner], toPoint);
    }
    return QxClamp(sum, -1.0f, 1.0f);
}

/// One value a lattice cell, from 0 up to, but not including, 1.
template <int n>
inline float Cell(const float (&x)[n], unsigned int seed)
{
    int cell[n];
    for (int i = 0; i < n; ++i)
        cell[i] = CellOf(x[i]);
    return static_cast<float>(Hash(cell, seed) >> 8) / 16777216.0f;
}

// What the noises differ in, as a policy: how a value for one seed is found.

struct PlainNoise {
    template <int n>
    static float At(const float (&x)[n], const int*, unsigned int seed)
    {
        return 0.5f + 0.5f * Gradient(x, nullptr, seed);
    }
};

struct PeriodicNoise {
    template <int n>
    static float At(const float (&x)[n], const int* periods, unsigned int seed)
    {
        return 0.5f + 0.5f * Gradient(x, periods, seed);
    }
};

struct CellNoise {
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

inline int PeriodOf(float period)
{
    return CellOf(QxRound(period));
}

/// The noise at a number, two numbers, a point, or a point and a number, as a float or a triple.
template <class Noise>
struct Family {
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

/// Smooth noise: `QxNoise::At(result, ...)`. It is 0.5 at each lattice point.
using QxNoise = qxnoise::Family<qxnoise::PlainNoise>;
/// A constant in each cell of the lattice.
using QxCellNoise = qxnoise::Family<qxnoise::CellNoise>;

/// Smooth noise that repeats: behind the coordinates stands the period of each, as whole numbers.
struct QxPeriodicNoise {
    using Noise = qxnoise::PeriodicNoise;

    template <class Result>
    static void At(Result& result, float x, float px)
    {
        const int periods[] = {qxnoise::PeriodOf(px)};
        qxnoise::Assign<Noise>(result, {x}, periods);
    }
    template <class Result>
    static void At(Result& result, float x, float y, float px, float py)
    {
        const int periods[] = {qxnoise::PeriodOf(px), qxnoise::PeriodOf(py)};
        qxnoise::Assign<Noise>(result, {x, y}, periods);
    }
    template <class Result>
    static void At(Result& result, const QxVector3& p, const QxVector3& pp)
    {
        const int periods[] = {qxnoise::PeriodOf(pp.x), qxnoise::PeriodOf(pp.y),
                               qxnoise::PeriodOf(pp.z)};
        qxnoise::Assign<Noise>(result, {p.x, p.y, p.z}, periods);
    }
    template <class Result>
    static void At(Result& result, const QxVector3& p, float t, const QxVector3& pp, float pt)
    {
        const int periods[] = {qxnoise::PeriodOf(pp.x), qxnoise::PeriodOf(pp.y),
                               qxnoise::PeriodOf(pp.z), qxnoise::PeriodOf(pt)};
        qxnoise::Assign<Noise>(result, {p.x, p.y, p.z, t}, periods);
    }
};

// Numbers for `random`, from 0 up to, but not including, 1.

/// The number of a place: the same for the same seed and place, and independent of all others.
template <int n>
inline float QxRandomNumber(unsigned int seed, const int (&place)[n])
{
    return static_cast<float>(qxnoise::Hash(place, seed) >> 8) / 16777216.0f;
}

/// A stream: the places are the numbers of a counter.
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
    unsigned int m_count = 0;  // goes round
};

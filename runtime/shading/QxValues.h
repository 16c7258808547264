#pragma once

// The values that shaders compute with, as plain structures of single-precision numbers. Grids
// store them in arrays, and a host can pass such arrays without conversion. The headers in this
// folder use C++14, and of C++17 only what compilers also accept in C++14, since they are compiled
// by the compiler that builds the shaders, with its default language.

#include <cstddef>

/// A point, vector or normal.
struct QxVector3 {
    float x;
    float y;
    float z;

    float& operator[](int i) { return i == 0 ? x : (i == 1 ? y : z); }
    float operator[](int i) const { return i == 0 ? x : (i == 1 ? y : z); }
};

/// A color, in RGB unless stated otherwise.
struct QxRGBColor {
    float r;
    float g;
    float b;

    float& operator[](int i) { return i == 0 ? r : (i == 1 ? g : b); }
    float operator[](int i) const { return i == 0 ? r : (i == 1 ? g : b); }
};

/// A matrix by rows. It transforms a point p, as a row vector, to the product p M.
struct QxMatrix44 {
    float m[4][4];

    float* operator[](int row) { return m[row]; }
    const float* operator[](int row) const { return m[row]; }

    static QxMatrix44 Scaling(float value)
    {
        QxMatrix44 result = {};
        for (int i = 0; i < 4; ++i)
            result.m[i][i] = value;
        return result;
    }
    static QxMatrix44 Identity() { return Scaling(1); }
};

/// A flag of varying control flow. It has the size and alignment of a float, since generated
/// shaders allocate flags and floats in one block.
struct QxStopAndBool {
    unsigned int value;

    QxStopAndBool() = default;
    QxStopAndBool(bool flag) : value(flag) {}
    explicit operator bool() const { return value != 0; }
};

/// Assigns a value to a result of the same type or one that the value converts to. A triple is
/// assigned by components (below): a loop with copies of whole triples, which compilers make of two
/// parts, might not be vectorized.
template <class Result, class Value>
inline void QxSet(Result& result, const Value& value)
{
    result = value;
}

// Operations component by component, written once for points and colors. A number as an operand of
// an arithmetic operation is treated as three equal components.

#define QX_TRIPLE_OPERATIONS(T, a, b, c)                                                           \
    inline T operator+(const T& l, const T& r)                                                     \
    {                                                                                              \
        return {l.a + r.a, l.b + r.b, l.c + r.c};                                                  \
    }                                                                                              \
    inline T operator-(const T& l, const T& r)                                                     \
    {                                                                                              \
        return {l.a - r.a, l.b - r.b, l.c - r.c};                                                  \
    }                                                                                              \
    inline T operator*(const T& l, const T& r)                                                     \
    {                                                                                              \
        return {l.a * r.a, l.b * r.b, l.c * r.c};                                                  \
    }                                                                                              \
    inline T operator/(const T& l, const T& r)                                                     \
    {                                                                                              \
        return {l.a / r.a, l.b / r.b, l.c / r.c};                                                  \
    }                                                                                              \
    inline T operator+(const T& l, float r)                                                        \
    {                                                                                              \
        return {l.a + r, l.b + r, l.c + r};                                                        \
    }                                                                                              \
    inline T operator-(const T& l, float r)                                                        \
    {                                                                                              \
        return {l.a - r, l.b - r, l.c - r};                                                        \
    }                                                                                              \
    inline T operator*(const T& l, float r)                                                        \
    {                                                                                              \
        return {l.a * r, l.b * r, l.c * r};                                                        \
    }                                                                                              \
    inline T operator/(const T& l, float r)                                                        \
    {                                                                                              \
        return {l.a / r, l.b / r, l.c / r};                                                        \
    }                                                                                              \
    inline T operator+(float l, const T& r)                                                        \
    {                                                                                              \
        return {l + r.a, l + r.b, l + r.c};                                                        \
    }                                                                                              \
    inline T operator-(float l, const T& r)                                                        \
    {                                                                                              \
        return {l - r.a, l - r.b, l - r.c};                                                        \
    }                                                                                              \
    inline T operator*(float l, const T& r)                                                        \
    {                                                                                              \
        return {l * r.a, l * r.b, l * r.c};                                                        \
    }                                                                                              \
    inline T operator/(float l, const T& r)                                                        \
    {                                                                                              \
        return {l / r.a, l / r.b, l / r.c};                                                        \
    }                                                                                              \
    inline T operator-(const T& t)                                                                 \
    {                                                                                              \
        return {-t.a, -t.b, -t.c};                                                                 \
    }                                                                                              \
    inline bool operator==(const T& l, const T& r)                                                 \
    {                                                                                              \
        return l.a == r.a && l.b == r.b && l.c == r.c;                                             \
    }                                                                                              \
    inline bool operator!=(const T& l, const T& r)                                                 \
    {                                                                                              \
        return !(l == r);                                                                          \
    }                                                                                              \
    inline T QxMakeTriple(const T*, float x, float y, float z)                                     \
    {                                                                                              \
        return {x, y, z};                                                                          \
    }                                                                                              \
    inline void QxSet(T& result, const T& value)                                                   \
    {                                                                                              \
        const T copy = {value.a, value.b, value.c};                                                \
        result.a = copy.a;                                                                         \
        result.b = copy.b;                                                                         \
        result.c = copy.c;                                                                         \
    }

QX_TRIPLE_OPERATIONS(QxVector3, x, y, z)
QX_TRIPLE_OPERATIONS(QxRGBColor, r, g, b)
#undef QX_TRIPLE_OPERATIONS

/// Returns a triple of the required type, for operations on both points and colors.
template <class Triple>
inline Triple QxMakeTriple(float x, float y, float z)
{
    return QxMakeTriple(static_cast<const Triple*>(nullptr), x, y, z);
}

inline bool operator==(const QxMatrix44& l, const QxMatrix44& r)
{
    for (int i = 0; i < 16; ++i)
        if (l.m[i / 4][i % 4] != r.m[i / 4][i % 4])
            return false;
    return true;
}

inline bool operator!=(const QxMatrix44& l, const QxMatrix44& r)
{
    return !(l == r);
}

#pragma once

#include <cstdlib>
#include <cstring>

#include "QxForms.h"
#include "QxMatrixMath.h"

// The operators of generated code that are not generated from a card in runtime/sqx/SqxCards.def,
// and functions that the expressions of cards call; QxCardNames.h contains the other operators.
//
// The operators are macros, each of which evaluates an operand once; the names are those that
// generated code uses. Macros for one point, except those for strings, expand to expressions that
// can be inlined, so that a loop over points can be vectorized.

/// Converts a constant, which is a double in generated code; arithmetic is in single precision.
inline float QxNumber(float value)
{
    return value;
}

/// Converts a number to a diagonal matrix.
inline QxMatrix44 QxToMatrix(float value)
{
    return QxMatrix44::Scaling(value);
}

/// True if the texts are equal. Null, which is a string that was never set, counts as empty.
inline bool QxSameText(const char* left, const char* right)
{
    return std::strcmp(left ? left : "", right ? right : "") == 0;
}

/// Returns a copy from malloc, for a variable to own. Null is copied as an empty text.
inline char* QxStrdup(const char* text)
{
    return strdup(text ? text : "");
}

/// Replaces `dest` by a copy, and frees its old text. Copies first, since `source` may be `dest`.
inline void QxAssignString(const char*& dest, const char* source)
{
    char* copy = QxStrdup(source);
    std::free(const_cast<char*>(dest));
    dest = copy;
}

/// The operation of an assignment.
struct QxCopy {
    template <class Value>
    const Value& operator()(const Value& value) const
    {
        return value;
    }
};

template <class Dest, class Source>
inline void QxAssignStrings(unsigned int points, Dest&& dest, const Source& source)
{
    for (unsigned int i = 0; i < points; ++i)
        QxAssignString(QxAt(dest, i), QxAt(source, i));
}

// clang-format off

#define ASSIGN_STRING_STRING(dest, source) QxAssignString(dest, source)
#define ASSIGN_FLOAT_FLOAT_SIMD(dest, source) QxCallSimd(numMp, QxCopy(), dest, source)
#define ASSIGN_COLOR_COLOR_SIMD(dest, source) QxCallSimd(numMp, QxCopy(), dest, source)
#define ASSIGN_POINT_POINT_SIMD(dest, source) QxCallSimd(numMp, QxCopy(), dest, source)
#define ASSIGN_MATRIX_MATRIX_SIMD(dest, source) QxCallSimd(numMp, QxCopy(), dest, source)
#define ASSIGN_BOOL_BOOL_SIMD(dest, source) QxCallSimd(numMp, QxCopy(), dest, source)
#define ASSIGN_STRING_STRING_SIMD(dest, source) QxAssignStrings(numMp, dest, source)

#define INVERT_FLOAT_FLOAT(dest, source) QxSet(dest, -QxNumber(source))
#define INVERT_COLOR_COLOR(dest, source) QxSet(dest, -(source))
#define INVERT_POINT_POINT(dest, source) QxSet(dest, -(source))
#define INIT_POINT(dest, x, y, z) QxSet(dest, QxVector3{QxNumber(x), QxNumber(y), QxNumber(z)})
#define INIT_COLOR(dest, r, g, b) QxSet(dest, QxRGBColor{QxNumber(r), QxNumber(g), QxNumber(b)})
#define INIT_MATRIX(dest, ...) QxSet(dest, QxMakeMatrix(__VA_ARGS__))
// clang-format on

template <class... Values>
inline QxMatrix44 QxMakeMatrix(const Values&... values)
{
    const float numbers[] = {static_cast<float>(values)...};
    static_assert(sizeof...(values) == 16, "a matrix has 16 values");
    QxMatrix44 matrix;
    std::memcpy(matrix.m, numbers, sizeof matrix.m);
    return matrix;
}

// Flags, by which varying conditions guard points. All macros except the first three compute the
// whole grid at once. The flag of an inner `else` is true only where the outer flag is true:
//
//     if (a) { if (b) ..; else ..; }      INVERT_INNER_BOOL_FLAG(notB, b, a): notB = a and not b

#define BOOL_IS_TRUE(flag) QxIsTrue(flag)
#define BOOL_IS_FALSE(flag) !QxIsTrue(flag)
#define SET_BOOL(flag, state) ((flag) = (state))
#define SET_UNIFORM_BOOL_FLAG(dest, source) QxSet(dest, QxIsTrueSomewhere(numMp, source))
#define INVERT_BOOL_FLAG(dest, source) QxCallSimd(numMp, QxInvertFlag(), dest, source)
#define INVERT_INNER_BOOL_FLAG(dest, source, outer)                                                \
    QxCallSimd(numMp, QxInvertInnerFlag(), dest, source, outer)
#define OR_BOOL_FLAG(dest, left, right) QxCallSimd(numMp, QxOrFlags(), dest, left, right)

inline bool QxIsTrue(QxStopAndBool flag)
{
    return static_cast<bool>(flag);
}

template <class Flags>
inline bool QxIsTrueSomewhere(unsigned int points, const Flags& flags)
{
    for (unsigned int i = 0; i < points; ++i)
        if (QxIsTrue(QxAt(flags, i)))
            return true;
    return false;
}

struct QxInvertFlag {
    bool operator()(QxStopAndBool source) const { return !QxIsTrue(source); }
};

struct QxInvertInnerFlag {
    bool operator()(QxStopAndBool source, QxStopAndBool outer) const
    {
        return QxIsTrue(outer) && !QxIsTrue(source);
    }
};

struct QxOrFlags {
    bool operator()(QxStopAndBool left, QxStopAndBool right) const
    {
        return QxIsTrue(left) || QxIsTrue(right);
    }
};

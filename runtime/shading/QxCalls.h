#pragma once

#include <cstring>

#include "QxBuiltIns.h"
#include "QxLitStrips.h"
#include "QxNoiseStrips.h"
#include "QxOperators.h"
#include "QxRayCalls.h"
#include "QxSplines.h"
#include "QxText.h"

// Components, packed numbers, and built-in functions that do not fit the forms of QxForms.h:
// they have several results, need the index of the point, or have variable argument lists.

// Components. An index that is out of range selects the nearest component.

/// Returns the whole part of the index, clamped to the range from 0 to `count` - 1; 0 for NaN.
inline int QxClampedIndex(float index, int count)
{
    return QxToInt(index, 0, count - 1);
}

template <class Triple>
inline float QxComponent(const Triple& triple, float index)
{
    return triple[QxClampedIndex(index, 3)];
}

inline float QxComponent(const QxMatrix44& matrix, float row, float column)
{
    return matrix[QxClampedIndex(row, 4)][QxClampedIndex(column, 4)];
}

/// Writes all three components, so that loops over points can be vectorized.
template <class Triple>
inline void QxSetComponent(Triple& triple, float index, float value)
{
    const int place = QxClampedIndex(index, 3);
    triple = QxMakeTriple<Triple>(place == 0 ? value : triple[0], place == 1 ? value : triple[1],
                                  place == 2 ? value : triple[2]);
}

inline void QxSetComponent(QxMatrix44& matrix, float row, float column, float value)
{
    matrix[QxClampedIndex(row, 4)][QxClampedIndex(column, 4)] = value;
}

/// Packs four numbers, clamped to the range from 0 to 1, into one, with eight bits each. The result
/// can be stored and passed on, but not compared or used in computations: its bits may be those of
/// NaN.
inline float QxPack(float a, float b, float c, float d)
{
    unsigned int bits = 0;
    const float values[] = {a, b, c, d};
    for (const float value : values)
        bits = bits << 8 | static_cast<unsigned int>(QxToInt(QxRound(value * 255), 0, 255));
    float packed;
    std::memcpy(&packed, &bits, sizeof packed);
    return packed;
}

/// Unpacks the four numbers of `QxPack`, with a precision of eight bits.
inline void QxUnpack(float packed, float& a, float& b, float& c, float& d)
{
    unsigned int bits;
    std::memcpy(&bits, &packed, sizeof bits);
    float* const results[] = {&d, &c, &b, &a};
    for (float* result : results) {
        *result = static_cast<float>(bits & 255u) / 255;
        bits >>= 8;
    }
}

inline void QxFresnelCall(const QxVector3& incident, const QxVector3& normal, float eta,
                          float& reflected, float& transmitted)
{
    const QxFresnelShares shares = QxFresnel(incident, normal, eta);
    reflected = shares.reflected;
    transmitted = shares.transmitted;
}

inline void QxFresnelCall(const QxVector3& incident, const QxVector3& normal, float eta,
                          float& reflected, float& transmitted, QxVector3& reflection,
                          QxVector3& refraction)
{
    const QxFresnelShares shares = QxFresnel(incident, normal, eta);
    reflected = shares.reflected;
    transmitted = shares.transmitted;
    reflection = shares.reflection;
    refraction = shares.refraction;
}

/// `faceforward` with two arguments; the third is the `Ng` of the point.
struct QxFaceForwardNgCall {
    const QxVector3* Ng;

    QxVector3 operator()(unsigned int point, const QxVector3& n, const QxVector3& incident) const
    {
        return QxFaceForward(n, incident, Ng[point]);
    }
};

// The forms of functions that need the index of the point

/// Computes result = function(point, arguments...) for the current point, or once for uniform data.
template <class Function, class Result, class... Arguments>
inline void QxCallPlainAt(unsigned int point, const Function& function, Result& result,
                          Arguments&&... arguments)
{
    result = function(point, QxAt(arguments, 0u)...);
}

/// Computes result = function(point, arguments...) for each point of the grid.
template <class Function, class Result, class... Arguments>
inline void QxCallSimdAt(unsigned int points, const Function& function, Result&& result,
                         Arguments&&... arguments)
{
    QxOverGridAt(points, QxAllPoints(), function, result, arguments...);
}

/// The same for the points where the condition has the wanted value.
template <class Function, class Result, class Condition, class... Arguments>
inline void QxCallSimdIfAt(unsigned int points, bool wanted, const Function& function,
                           Result&& result, const Condition& condition, Arguments&&... arguments)
{
    QxOverGridAt(points, QxWhere(condition, wanted), function, result, arguments...);
}

/// Computes the flag of an `illuminance` loop for its current light. The flag is false at points
/// that `where` does not select.
template <class Where, class Flag, class Axis, class Angle>
inline void QxIlluminanceOverGrid(unsigned int points, const Where& where,
                                  const QxIlluminanceCall& statement, Flag&& flag, const Axis& axis,
                                  const Angle& angle)
{
    for (unsigned int i = 0; i < points; ++i)
        QxAt(flag, i) = where(i) && statement(i, QxAt(axis, i), QxAt(axis, i), QxAt(angle, i));
}

// Variable argument lists: the address of each argument, also of constants

using QxArguments = const void* const*;

/// Returns argument `place` of a list. The argument must have the type `Value`.
template <class Value>
inline const Value& QxArgument(QxArguments arguments, int place)
{
    return *static_cast<const Value*>(arguments[place]);
}

/// Computes the spline with the arguments from `first` on as control values, at the position in the
/// argument before them. `count` is the number of all arguments.
template <class Result>
inline void QxSplineCall(Result& result, const char* basis, QxArguments arguments, int first,
                         int count)
{
    const float position = QxArgument<float>(arguments, first - 1);
    result = QxSpline<Result>(
        QxFindSplineBasis(basis), position, count - first,
        [&](int knot) -> const Result& { return QxArgument<Result>(arguments, first + knot); });
}

/// The smaller of two values, component by component, for `min` of a list.
struct QxLesser {
    float operator()(float a, float b) const { return QxMin(a, b); }
    template <class Triple>
    Triple operator()(const Triple& a, const Triple& b) const
    {
        return QxMinTriple(a, b);
    }
};

/// The larger of two values, for `max` of a list.
struct QxGreater {
    float operator()(float a, float b) const { return QxMax(a, b); }
    template <class Triple>
    Triple operator()(const Triple& a, const Triple& b) const
    {
        return QxMaxTriple(a, b);
    }
};

/// Combines the arguments, of which there must be at least one, from left to right by `Choice`. The
/// result may be one of the arguments.
template <class Choice, class Result>
inline void QxChooseCall(Result& result, QxArguments arguments, int count)
{
    Result chosen = QxArgument<Result>(arguments, 0);
    for (int i = 1; i < count; ++i)
        chosen = Choice()(chosen, QxArgument<Result>(arguments, i));
    result = chosen;
}

/// Concatenates the texts in order, and cuts the result off at `k_qxTextLength`. A null text counts
/// as empty. The result may be one of the texts, since it is replaced last.
inline void QxConcatCall(const char*& result, QxArguments arguments, int count)
{
    QxText text;
    for (int i = 0; i < count && text.Length() < k_qxTextLength; ++i)
        if (const char* part = QxArgument<const char*>(arguments, i))
            text.Add(part);
    QxAssignString(result, text.Characters());
}

/// Formats the arguments, of which the first is the format; a null format counts as empty.
/// `givenTypes` contains one letter for each argument, including the format, see QxSceneNames.h. If
/// it is null, the conversions in the format determine the types of the other arguments.
inline QxText QxFormatArguments(QxArguments arguments, const char* givenTypes, int count)
{
    const char* format = QxArgument<const char*>(arguments, 0);
    if (!format)
        format = "";
    QxText types;
    if (givenTypes) {
        types.Add(givenTypes);
    } else {
        types.Add('s');
        QxAddFormatTypes(types, format);
    }
    const int typed = static_cast<int>(types.Length());
    if (count > typed)
        count = typed;  // arguments without a conversion are ignored
    QxArray<QxTextArgument> values(static_cast<std::size_t>(count));
    for (int i = 1; i < count; ++i) {
        const char letter = types.Characters()[i];
        QxTextArgument::Type type = QxTextArgument::Float;
        if (letter == 'p' || letter == 'c')
            type = QxTextArgument::Triple;
        else if (letter == 'm')
            type = QxTextArgument::Matrix;
        else if (letter == 's')
            type = QxTextArgument::String;
        values[static_cast<std::size_t>(i - 1)] = {type, arguments[i]};
    }
    return QxFormat(format, values.Data(), count - 1);
}

#pragma once

#include "QxArray.h"
#include "QxValues.h"

// How one operation on one point is done for the current point, for a whole grid, or for some of
// its points. An operand of a whole-grid form is a pointer to the values of all points, or one
// value that serves them all; any operand may be either:
//
//     QxCallSimd(numMp, QxLengthCall(), r, P)            r[i] = length(P[i]) at each point
//     QxCallSimdIf(numMp, true, QxMixCall(), r, f, a, 2.0, x)      where f[i] is true
//
// Which of the two it is says its type, so the choice costs nothing when the shader runs.

// What an operand holds at a point.

template <class Value>
inline Value& QxAt(Value* values, unsigned int point)
{
    return values[point];
}

inline const char* QxAt(const char* text, unsigned int)
{
    return text;
}

inline float& QxAt(float& value, unsigned int)
{
    return value;
}

inline const float& QxAt(const float& value, unsigned int)
{
    return value;
}

inline QxVector3& QxAt(QxVector3& value, unsigned int)
{
    return value;
}

inline const QxVector3& QxAt(const QxVector3& value, unsigned int)
{
    return value;
}

inline QxRGBColor& QxAt(QxRGBColor& value, unsigned int)
{
    return value;
}

inline const QxRGBColor& QxAt(const QxRGBColor& value, unsigned int)
{
    return value;
}

inline QxMatrix44& QxAt(QxMatrix44& value, unsigned int)
{
    return value;
}

inline const QxMatrix44& QxAt(const QxMatrix44& value, unsigned int)
{
    return value;
}

inline QxStopAndBool QxAt(QxStopAndBool value, unsigned int)
{
    return value;
}

// Constants are written as numbers of double precision or as integers.

inline float QxAt(double value, unsigned int)
{
    return static_cast<float>(value);
}

inline float QxAt(int value, unsigned int)
{
    return static_cast<float>(value);
}

/// A number that stands where a triple is wanted has three equal components.
inline QxVector3 QxToPoint(float value)
{
    return {value, value, value};
}

inline QxVector3 QxToPoint(const QxVector3& value)
{
    return value;
}

inline QxVector3 QxToPoint(const QxRGBColor& value)
{
    return {value.r, value.g, value.b};
}

inline QxRGBColor QxToColor(float value)
{
    return {value, value, value};
}

inline QxRGBColor QxToColor(const QxRGBColor& value)
{
    return value;
}

inline QxRGBColor QxToColor(const QxVector3& value)
{
    return {value.x, value.y, value.z};
}

/// Which points a whole-grid form handles.
struct QxAllPoints {
    bool operator()(unsigned int) const { return true; }
};

/// The points where a flag has the wanted value. The flag may be one for all points.
template <class Condition>
struct QxPointsIf {
    const Condition& condition;
    bool wanted;

    bool operator()(unsigned int point) const
    {
        return static_cast<bool>(QxAt(condition, point)) == wanted;
    }
};

template <class Condition>
inline QxPointsIf<Condition> QxWhere(const Condition& condition, bool wanted)
{
    return {condition, wanted};
}

/// Base of functions that ask the host, which is asked once for all points of a grid.
struct QxQuestion {};

/// Stands before a loop over points. Each point reads and writes its own values alone, so that arrays may be
/// the same, but never overlap otherwise: the compiler need not look, which with many arrays it gives up.
#if !defined(__clang__)
#define QX_POINTS_APART _Pragma("GCC ivdep")
#elif defined(QX_SHADER_FUNC)
#define QX_POINTS_APART _Pragma("clang loop vectorize(assume_safety)")
#else
#define QX_POINTS_APART  // it warns where it makes no vectors, which only generated files disable
#endif

/// Stands before a block that handles the points from `firstPoint` up to `endPoint`, exclusive: strips
/// of the grid, whose values stay in the first-level cache.
#define QX_FOR_STRIPS                                                                              \
    for (unsigned int firstPoint = 0, endPoint = QxEndOfStrip(0, numMp); firstPoint < numMp;       \
         firstPoint = endPoint, endPoint = QxEndOfStrip(firstPoint, numMp))

inline unsigned int QxEndOfStrip(unsigned int first, unsigned int points)
{
    constexpr unsigned int length = 64;
    return points - first < length ? points : first + length;
}

/// result = function(arguments...) at each of the points. The result may be one of the arguments.
template <class Where, class Function, class Result, class... Arguments>
inline void QxOverGrid(unsigned int points, const Where& where, const Function& function,
                       Result&& result, Arguments&&... arguments)
{
    if constexpr (__is_base_of(QxQuestion, Function)) {
        QxAskOverGrid(points, where, function, result, arguments...);
    } else {
        QX_POINTS_APART
        for (unsigned int i = 0; i < points; ++i)
            if (where(i))
                QxAt(result, i) = function(QxAt(arguments, i)...);
    }
}

/// A function as an object, also one with overloads.
#define QX_OBJECT_OF(function) [](const auto&... arguments) { return function(arguments...); }

/// The same at all points of the grid.
template <class Function, class Result, class... Arguments>
inline void QxCallSimd(unsigned int points, const Function& function, Result&& result,
                       Arguments&&... arguments)
{
    QxOverGrid(points, QxAllPoints(), function, result, arguments...);
}

/// The same where the condition has the wanted value.
template <class Function, class Result, class Condition, class... Arguments>
inline void QxCallSimdIf(unsigned int points, bool wanted, const Function& function,
                         Result&& result, const Condition& condition, Arguments&&... arguments)
{
    QxOverGrid(points, QxWhere(condition, wanted), function, result, arguments...);
}

/// result = function(arguments...) for the current point, or once for uniform data.
template <class Function, class Result, class... Arguments>
inline void QxCallPlain(const Function& function, Result& result, Arguments&&... arguments)
{
    result = function(QxAt(arguments, 0u)...);
}

/// The same for a function whose first argument is the number of the point.
template <class Where, class Function, class Result, class... Arguments>
inline void QxOverGridAt(unsigned int points, const Where& where, const Function& function,
                         Result&& result, Arguments&&... arguments)
{
    QX_POINTS_APART
    for (unsigned int i = 0; i < points; ++i)
        if (where(i))
            QxAt(result, i) = function(i, QxAt(arguments, i)...);
}

/// Where all values of an operand stand beside each other as values of the type that the first
/// argument points to; null if they do not.
template <class Value, class Operand>
inline const Value* QxBeside(const Value*, const Operand&)
{
    return nullptr;
}

template <class Value>
inline const Value* QxBeside(const Value*, const Value* const& values)
{
    return values;
}

template <class Value>
inline const Value* QxBeside(const Value*, Value* const& values)
{
    return values;
}

/// All values of an operand at once, for operations that read neighbouring points: where they stand,
/// or a copy if they are elsewhere for each point or the operation writes them.
template <class Value, class Operand>
class QxWholeOperand {
public:
    /// `result`: where the operation writes, which is all of the operand or none of it.
    QxWholeOperand(const Operand& operand, unsigned int points, const void* result)
        : m_values(QxBeside(static_cast<const Value*>(nullptr), operand)),
          m_copies(m_values && m_values != result ? 0 : points)
    {
        if (m_copies.Size() == 0)
            return;
        for (unsigned int i = 0; i < points; ++i)
            m_copies[i] = QxAt(operand, i);
        m_values = m_copies.Data();
    }
    const Value* Data() const { return m_values; }

private:
    const Value* m_values;
    QxArray<Value> m_copies;
};

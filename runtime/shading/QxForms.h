#pragma once

#include "QxArray.h"
#include "QxValues.h"

// Applies an operation of one point to the current point, to a whole grid, or to some of its
// points. Each operand of a whole-grid form is either a pointer to the values of all points or one
// value for all of them:
//
//     QxCallSimd(numMp, QxLengthCall(), r, P)            r[i] = length(P[i]) at each point
//     QxCallSimdIf(numMp, true, QxMixCall(), r, f, a, 2.0, x)      where f[i] is true
//
// The type of an operand distinguishes the two, so this costs nothing at run time.

/// Returns the text; an empty one for null, which is a string that was never set.
inline const char* QxOrEmpty(const char* text)
{
    return text ? text : "";
}

// The value of an operand at a point

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

// Generated code contains constants as numbers of double precision or as integers.

inline float QxAt(double value, unsigned int)
{
    return static_cast<float>(value);
}

inline float QxAt(int value, unsigned int)
{
    return static_cast<float>(value);
}

/// A number that is used as a triple has three equal components.
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

/// Makes a whole-grid form compute all points.
struct QxAllPoints {
    bool operator()(unsigned int) const { return true; }
};

/// Makes a whole-grid form compute only the points where a flag has the wanted value. The flag may
/// be uniform.
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

/// Base of functions that can query the host for many points at once. Their whole-grid forms do so
/// for all points that they compute.
struct QxQuestion {};

/// Precedes a loop over points. It asserts that each iteration reads and writes only the values of
/// its own point, since two arrays are the same or do not overlap, and temporaries are declared in
/// the iteration. Without this assertion the compiler would have to check for overlap at run time,
/// and would not vectorize loops with many arrays.
#if !defined(__clang__)
#define QX_POINTS_APART _Pragma("GCC ivdep")
#elif defined(QX_SHADER_FUNC)
#define QX_POINTS_APART _Pragma("clang loop vectorize(assume_safety)")
#else
#define QX_POINTS_APART  // clang would warn about loops that it cannot vectorize
#endif

/// Precedes a block that computes the points from `firstPoint` up to `endPoint`, exclusive: a strip
/// of the grid, which is so short that its values stay in the first-level cache.
#define QX_FOR_STRIPS                                                                              \
    for (unsigned int firstPoint = 0, endPoint = QxEndOfStrip(0, numMp); firstPoint < numMp;       \
         firstPoint = endPoint, endPoint = QxEndOfStrip(firstPoint, numMp))

/// Returns the end of the strip that starts at point `first`.
inline unsigned int QxEndOfStrip(unsigned int first, unsigned int points)
{
    constexpr unsigned int length = 64;
    return points - first < length ? points : first + length;
}

/// Computes result = function(arguments...) for each point that `where` selects. The result may be
/// one of the arguments.
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
                QxSet(QxAt(result, i), function(QxAt(arguments, i)...));
    }
}

/// Wraps a function, which may be overloaded, in an object.
#define QX_OBJECT_OF(function) [](const auto&... arguments) { return function(arguments...); }

/// Computes result = function(arguments...) for all points of the grid.
template <class Function, class Result, class... Arguments>
inline void QxCallSimd(unsigned int points, const Function& function, Result&& result,
                       Arguments&&... arguments)
{
    QxOverGrid(points, QxAllPoints(), function, result, arguments...);
}

/// The same for the points where the condition has the wanted value.
template <class Function, class Result, class Condition, class... Arguments>
inline void QxCallSimdIf(unsigned int points, bool wanted, const Function& function,
                         Result&& result, const Condition& condition, Arguments&&... arguments)
{
    QxOverGrid(points, QxWhere(condition, wanted), function, result, arguments...);
}

/// Computes result = function(arguments...) for the current point, or once for uniform data.
template <class Function, class Result, class... Arguments>
inline void QxCallPlain(const Function& function, Result& result, Arguments&&... arguments)
{
    QxSet(result, function(QxAt(arguments, 0u)...));
}

/// As `QxOverGrid`, for a function whose first argument is the index of the point.
template <class Where, class Function, class Result, class... Arguments>
inline void QxOverGridAt(unsigned int points, const Where& where, const Function& function,
                         Result&& result, Arguments&&... arguments)
{
    QX_POINTS_APART
    for (unsigned int i = 0; i < points; ++i)
        if (where(i))
            QxSet(QxAt(result, i), function(i, QxAt(arguments, i)...));
}

/// Returns the address of the values of an operand if they are contiguous and have the type that
/// the first argument points to; otherwise null.
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

/// All values of an operand, for operations that read neighbouring points. They are used in place
/// if they are contiguous, have the type `Value`, and the operation does not write to them;
/// otherwise they are copied. A uniform operand is copied to each point.
template <class Value, class Operand>
class QxWholeOperand {
public:
    /// The operation writes to `result`, which must be the operand itself or not overlap it; null
    /// if the operation writes to other memory.
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

#pragma once

#include "QxColorSpaces.h"
#include "QxDerivatives.h"
#include "QxFilters.h"
#include "QxForms.h"
#include "QxNoise.h"
#include "QxShaderSupport.h"

// Built-in functions as objects that are called for one point; at the end, functions of the whole
// grid that read neighbouring points. If a function needs more than its arguments, its object
// contains the rest, such as the host or a space.

struct QxLengthCall {
    float operator()(const QxVector3& v) const { return QxLength(v); }
};

struct QxDistanceCall {
    float operator()(const QxVector3& a, const QxVector3& b) const { return QxDistance(a, b); }
};

struct QxNormalizeCall {
    QxVector3 operator()(const QxVector3& v) const { return QxNormalize(v); }
};

struct QxFaceForwardCall {
    QxVector3 operator()(const QxVector3& n, const QxVector3& incident,
                         const QxVector3& trueNormal) const
    {
        return QxFaceForward(n, incident, trueNormal);
    }
};

struct QxReflectCall {
    QxVector3 operator()(const QxVector3& incident, const QxVector3& normal) const
    {
        return QxReflect(incident, normal);
    }
};

struct QxRefractCall {
    QxVector3 operator()(const QxVector3& incident, const QxVector3& normal, float eta) const
    {
        return QxRefract(incident, normal, eta);
    }
};

struct QxPointLineCall {
    float operator()(const QxVector3& from, const QxVector3& to, const QxVector3& q) const
    {
        return QxPointLineDistance(from, to, q);
    }
};

struct QxSmoothStepCall {
    float operator()(float low, float high, float x) const { return QxSmoothStep(low, high, x); }
};

struct QxMixCall {
    float operator()(float a, float b, float position) const { return QxMix(a, b, position); }
    QxVector3 operator()(const QxVector3& a, const QxVector3& b, float position) const
    {
        return QxMix(a, b, position);
    }
    QxRGBColor operator()(const QxRGBColor& a, const QxRGBColor& b, float position) const
    {
        return QxMix(a, b, position);
    }
};

struct QxClampCall {
    template <class Triple>
    Triple operator()(const Triple& x, const Triple& low, const Triple& high) const
    {
        return QxClampTriple(x, low, high);
    }
};

struct QxFilterStepCall {
    float operator()(float edge, float s1, float s2, float width, const char* filter) const
    {
        return QxFilterStep(edge, s1, s2, width, filter);
    }
};

/// A noise function whose result is one number (`Result` is float) or three numbers; the type of
/// the result variable determines whether they are a point or a color.
template <class Noise, class Result>
struct QxNoiseCall {
    template <class... Arguments>
    Result operator()(const Arguments&... arguments) const
    {
        Result result;
        Noise::At(result, arguments...);
        return result;
    }
};

/// Three numbers that convert to a point or a color.
struct QxAnyTriple {
    float x;
    float y;
    float z;

    operator QxVector3() const { return {x, y, z}; }
    operator QxRGBColor() const { return {x, y, z}; }
};

inline QxAnyTriple QxMakeTriple(const QxAnyTriple*, float x, float y, float z)
{
    return {x, y, z};
}

/// `random` as a float: the next random number of the point, or of `QxDraws::k_allPoints` for a
/// uniform result.
class QxRandomCall {
public:
    explicit QxRandomCall(QxShaderSupport* support) : m_support(support) {}
    float operator()(unsigned int point) const { return m_support->NextRandomNumber(point); }

private:
    QxShaderSupport* m_support;
};

/// `random` as a color or a point: the next three random numbers.
class QxRandomTripleCall : public QxRandomCall {
public:
    using QxRandomCall::QxRandomCall;
    QxAnyTriple operator()(unsigned int point) const
    {
        // Separate statements, so that every compiler draws the components in this order.
        QxAnyTriple triple;
        triple.x = QxRandomCall::operator()(point);
        triple.y = QxRandomCall::operator()(point);
        triple.z = QxRandomCall::operator()(point);
        return triple;
    }
};

/// True if the text of an operand in generated code denotes the value at a point: it then contains
/// `[polyCnt]`, or is a variable of an iteration, such as `v_x_1`.
constexpr bool QxIsAtPoint(const char* operand)
{
    if (operand[0] && operand[1] == '_')
        return true;
    for (; *operand; ++operand)
        if (operand[0] == '[' && operand[1] == 'p' && operand[2] == 'o' && operand[3] == 'l')
            return true;
    return false;
}

// Transforms of points, vectors and normals. A space that has a number or a name is represented by
// the two matrices between it and the current space, so a transform between two spaces goes through
// the current space.

/// The kinds of transforms, as policies. Each gets the matrix of the transform and its inverse, and
/// uses the one that it needs.
struct QxAsPoint {
    static QxVector3 Through(const QxVector3& p, const QxMatrix44& to, const QxMatrix44&)
    {
        return QxTransformPoint(p, to);
    }
};

struct QxAsVector {
    static QxVector3 Through(const QxVector3& v, const QxMatrix44& to, const QxMatrix44&)
    {
        return QxTransformVector(v, to);
    }
};

struct QxAsNormal {
    static QxVector3 Through(const QxVector3& n, const QxMatrix44&, const QxMatrix44& from)
    {
        return QxTransformNormal(n, from);
    }
};

/// Transforms from a space to the current one.
template <class As>
struct QxToCurrentCall {
    const QxFrame3D& frame;

    template <class Triple>
    QxVector3 operator()(const Triple& value) const
    {
        return As::Through(QxToPoint(value), frame.toCurrent, frame.fromCurrent);
    }
};

template <class As>
struct QxFromCurrentCall {
    const QxFrame3D& frame;

    template <class Triple>
    QxVector3 operator()(const Triple& value) const
    {
        return As::Through(QxToPoint(value), frame.fromCurrent, frame.toCurrent);
    }
};

/// Transforms from the current space, or from the space with the name `from`, to a space that is
/// specified by its name or by the matrix from the current space to it.
template <class As>
class QxTransformCall {
public:
    explicit QxTransformCall(const QxShadingContext& context) : m_context(context) {}

    QxVector3 operator()(const char* to, const QxVector3& value) const
    {
        const QxFrame3D& frame = m_context.Space(to);
        return As::Through(value, frame.fromCurrent, frame.toCurrent);
    }
    QxVector3 operator()(const char* from, const char* to, const QxVector3& value) const
    {
        const QxFrame3D& frame = m_context.Space(from);
        return (*this)(to, As::Through(value, frame.toCurrent, frame.fromCurrent));
    }
    QxVector3 operator()(const QxMatrix44& to, const QxVector3& value) const
    {
        return As::Through(value, to, QxInverse(to));
    }
    QxVector3 operator()(const char* from, const QxMatrix44& to, const QxVector3& value) const
    {
        const QxFrame3D& frame = m_context.Space(from);
        return (*this)(to, As::Through(value, frame.toCurrent, frame.fromCurrent));
    }

private:
    const QxShadingContext& m_context;
};

struct QxColorToRgbCall {
    template <class Triple>
    QxAnyTriple operator()(const Triple& value, const char* space) const
    {
        const QxRGBColor color = QxColorToRgb(QxToColor(value), space);
        return {color.r, color.g, color.b};
    }
};

struct QxColorFromRgbCall {
    template <class Triple>
    QxAnyTriple operator()(const Triple& value, const char* space) const
    {
        const QxRGBColor color = QxColorFromRgb(QxToColor(value), space);
        return {color.r, color.g, color.b};
    }
};

struct QxColorTransformCall {
    QxRGBColor operator()(const char* to, const QxRGBColor& color) const
    {
        return QxColorFromRgb(color, to);
    }
    QxRGBColor operator()(const char* from, const char* to, const QxRGBColor& color) const
    {
        return QxColorTransform(color, from, to);
    }
};

class QxDepthCall {
public:
    explicit QxDepthCall(QxShaderSupport* support) : m_support(support) {}
    float operator()(const QxVector3& p) const { return m_support->Depth(p); }

private:
    QxShaderSupport* m_support;
};

// Whole-grid functions that read neighbouring points

/// Computes the values of all points in separate memory, then stores those of the active points.
template <class Value, class Compute, class Where, class Result>
inline void QxOverNeighbours(const QxGrid& grid, const Where& where, Result&& result,
                             const Compute& compute)
{
    QxArray<Value> values(grid.Size());
    compute(values.Data());
    for (unsigned int i = 0; i < grid.Size(); ++i)
        if (where(i))
            QxAt(result, i) = values[i];
}

template <class Value, class Where, class Result, class Operand>
inline void QxDerivativeAlong(const QxGrid& grid, QxGridAxis axis, const Where& where,
                              Result&& result, const Operand& operand, float spacing)
{
    const QxWholeOperand<Value, Operand> values(operand, grid.Size(), nullptr);
    QxOverNeighbours<Value>(grid, where, result, [&](Value* out) {
        QxDerivative(out, values.Data(), spacing, grid, axis, where);
    });
}

template <class Value, class Where, class Result, class Numerator, class Denominator>
inline void QxDerivativeByOperand(const QxGrid& grid, const Where& where, Result&& result,
                                  const Numerator& numerator, const Denominator& denominator)
{
    const QxWholeOperand<Value, Numerator> over(numerator, grid.Size(), nullptr);
    const QxWholeOperand<float, Denominator> by(denominator, grid.Size(), nullptr);
    QxOverNeighbours<Value>(grid, where, result, [&](Value* out) {
        QxDerivativeBy(out, over.Data(), by.Data(), grid, where);
    });
}

template <class Where, class Result, class Operand>
inline void QxAreaOfOperand(const QxGrid& grid, const Where& where, Result&& result,
                            const Operand& operand)
{
    const QxWholeOperand<QxVector3, Operand> points(operand, grid.Size(), &QxAt(result, 0));
    QxArea(result, points.Data(), grid, where);
}

template <class Where, class Result, class Operand>
inline void QxNormalOfOperand(const QxGrid& grid, const Where& where, Result&& result,
                              const Operand& operand, float du, float dv)
{
    const QxWholeOperand<QxVector3, Operand> points(operand, grid.Size(), &QxAt(result, 0));
    QxCalculateNormal(result, points.Data(), du, dv, grid, where);
}

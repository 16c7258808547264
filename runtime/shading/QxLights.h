#pragma once

#include "QxForms.h"
#include "QxShaderSupport.h"

// Lights, the standard functions for reflected light, and the light statements. `diffuse`,
// `specular` and `phong` sum over all lights in order, with directions from the surface to the
// light. Colors are linear and have no upper bound.

/// The results of all lights at the points of a grid; `ambient` uses the host `support` and the
/// positions `P`. What the pointers lead to must outlive this object.
struct QxLights {
    QxShaderSupport* support;
    const QxVector3* P;
    const QxLightInput* lights;
    unsigned int count;

    /// Returns the sum of the colors of all lights at a point, each multiplied by
    /// `answer(toLight)`; `toLight` is the direction to the light, with unit length.
    template <class Answer>
    QxRGBColor Sum(unsigned int point, const Answer& answer) const
    {
        QxRGBColor sum = {0, 0, 0};
        for (unsigned int i = 0; i < count; ++i)
            sum = sum + lights[i].Cl[point] * answer(QxNormalize(lights[i].L[point]));
        return sum;
    }
};

/// `ambient`: light without a direction.
class QxAmbientCall {
public:
    explicit QxAmbientCall(const QxLights& lights) : m_lights(lights) {}
    QxRGBColor operator()(unsigned int point) const
    {
        return m_lights.support->AmbientAt(m_lights.P[point], point);
    }

private:
    QxLights m_lights;
};

/// `diffuse`: Johann Heinrich Lambert's cosine law.
class QxDiffuseCall {
public:
    explicit QxDiffuseCall(const QxLights& lights) : m_lights(lights) {}
    const QxLights& Lights() const { return m_lights; }
    QxRGBColor operator()(unsigned int point, const QxVector3& normal) const
    {
        return m_lights.Sum(
            point, [&](const QxVector3& toLight) { return QxMax(0, QxDot(toLight, normal)); });
    }

private:
    QxLights m_lights;
};

/// Computes the ambient light of the whole grid.
inline void QxAmbientOverGrid(unsigned int points, const QxLights& lights, QxRGBColor* result)
{
    lights.support->AmbientOverGrid(lights.P, points, result);
}

/// Returns the fraction of one light that is reflected as a highlight (James Blinn, "Models of
/// light reflection for computer synthesized pictures", 1977); 0 if the light is on the far side of
/// the surface. All vectors point away from the surface and should have unit length.
inline float QxHighlight(const QxVector3& toLight, const QxVector3& normal, const QxVector3& toEye,
                         float roughness)
{
    if (QxDot(toLight, normal) <= 0)
        return 0;
    const QxVector3 half = QxNormalize(toLight + toEye);
    return QxPowAtPoint(QxMax(0, QxDot(half, normal)), roughness > 0 ? 1 / roughness : 1.0e6f);
}

/// `specular`: the highlights of all lights.
class QxSpecularCall {
public:
    explicit QxSpecularCall(const QxLights& lights) : m_lights(lights) {}
    const QxLights& Lights() const { return m_lights; }
    QxRGBColor operator()(unsigned int point, const QxVector3& normal, const QxVector3& toEye,
                          float roughness) const
    {
        return m_lights.Sum(point, [&](const QxVector3& toLight) {
            return QxHighlight(toLight, normal, toEye, roughness);
        });
    }

private:
    QxLights m_lights;
};

/// `specularbrdf`: the reflected fraction of light from one direction, without the color of the
/// light.
struct QxSpecularBrdfCall {
    QxRGBColor operator()(const QxVector3& toLight, const QxVector3& normal, const QxVector3& toEye,
                          float roughness) const
    {
        const float value = QxHighlight(QxNormalize(toLight), normal, toEye, roughness);
        return {value, value, value};
    }
};

/// `phong`: Bui Tuong Phong, "Illumination for computer generated pictures", 1975. As in `diffuse`
/// and `specular`, light from the far side of the surface has no effect.
class QxPhongCall {
public:
    explicit QxPhongCall(const QxLights& lights) : m_lights(lights) {}
    const QxLights& Lights() const { return m_lights; }
    QxRGBColor operator()(unsigned int point, const QxVector3& normal, const QxVector3& toEye,
                          float exponent) const
    {
        const QxVector3 mirrored = QxReflect(-QxNormalize(toEye), QxNormalize(normal));
        return m_lights.Sum(point, [&](const QxVector3& toLight) {
            if (QxDot(toLight, normal) <= 0)
                return 0.0f;
            return QxPowAtPoint(QxMax(0, QxDot(mirrored, toLight)), exponent);
        });
    }

private:
    QxLights m_lights;
};

/// The directions within `angle` radians of an axis.
///
/// A direction exactly along the axis or against it is on the border of a cone of angle 0 or pi,
/// where rounding to single precision would decide whether it is inside. So dot products are
/// computed in double precision, in which each product of two floats is exact, and the cone is
/// widened by a tolerance for the rounding error of the operands. From an angle of pi on it
/// contains all directions.
class QxCone {
public:
    explicit QxCone(float angle)
        : m_all(angle >= QX_PI_FLOAT),
          m_leastCosine(m_all ? -1 : qxmath::Cos(static_cast<double>(angle)) - Rounding())
    {
    }
    /// Neither vector needs unit length.
    bool Has(const QxVector3& direction, const QxVector3& axis) const
    {
        const double lengths = qxmath::Sqrt(Dot(direction, direction) * Dot(axis, axis));
        return m_all ||
               Dot(direction, axis) >= (lengths > 0 ? lengths * m_leastCosine : m_leastCosine);
    }

private:
    /// Returns the tolerance of the cosine. At the axis it corresponds to an angle of about a
    /// millionth of a radian.
    static double Rounding() { return 1e-12; }
    static double Dot(const QxVector3& a, const QxVector3& b)
    {
        return static_cast<double>(a.x) * b.x + static_cast<double>(a.y) * b.y +
               static_cast<double>(a.z) * b.z;
    }

    bool m_all;
    double m_leastCosine;
};

inline bool QxIsWithinCone(const QxVector3& direction, const QxVector3& axis, float angle)
{
    return QxCone(angle).Has(direction, axis);
}

#ifdef QX_SHADER_FUNC
/// A shared object that exports this function contains a light statement, so its light has a
/// position or a direction.
extern "C" __attribute__((visibility("default"))) inline void QxHasLightStatement() {}

/// Makes the compiler emit that function if the object contains a light statement. Costs one
/// instruction per statement.
inline void QxMarkLightStatement()
{
    asm volatile("" : : "r"(&QxHasLightStatement));
}
#else
inline void QxMarkLightStatement() {}
#endif

// The light statements, for one point. Each returns the flag that guards its body.

/// `illuminate` with a cone: sets `L`, also outside the cone. True if the point is in the cone.
struct QxIlluminateCall {
    QxIlluminateCall() { QxMarkLightStatement(); }
    bool operator()(const QxVector3& position, const QxVector3& axis, float angle,
                    const QxVector3& Ps, QxVector3& L) const
    {
        L = Ps - position;
        return QxIsWithinCone(L, axis, angle);
    }
};

/// `illuminate` without a cone: sets `L`. True for every point.
struct QxIlluminateNoConeCall {
    QxIlluminateNoConeCall() { QxMarkLightStatement(); }
    bool operator()(const QxVector3& position, const QxVector3& Ps, QxVector3& L) const
    {
        L = Ps - position;
        return true;
    }
};

/// `solar`: sets `L` to the axis. True for every point, since each point is on some ray of the
/// cone.
struct QxSolarCall {
    QxSolarCall() { QxMarkLightStatement(); }
    bool operator()(QxVector3& L, const QxVector3& axis, float) const
    {
        L = axis;
        return true;
    }
};

/// `illuminance`: true if the direction from the point to the current light is within the cone
/// around the axis. The position has no effect.
struct QxIlluminanceCall {
    const QxVector3* L;

    bool operator()(unsigned int point, const QxVector3&, const QxVector3& axis, float angle) const
    {
        return QxIsWithinCone(L[point], axis, angle);
    }
};

/// Computes flag = statement(operands...) at each point; false at points that `where` does not
/// select.
template <class Where, class Statement, class Flag, class... Operands>
inline void QxLightOverGrid(unsigned int points, const Where& where, const Statement& statement,
                            Flag&& flag, Operands&&... operands)
{
    for (unsigned int i = 0; i < points; ++i)
        QxAt(flag, i) = where(i) && statement(QxAt(operands, i)...);
}

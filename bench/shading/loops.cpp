// Shaders of examples/ as hand-written loops: the same arithmetic on the same arrays, with each
// value computed once and kept in a register.

#include "shading/loops.h"
#include "QxGeometry.h"
#include "QxMath.h"

namespace {

const QxRGBColor k_ambient = {0.1F, 0.1F, 0.1F};

QxRGBColor Diffuse(const QxLightInput* lights, unsigned int count, unsigned int i,
                   const QxVector3& normal)
{
    QxRGBColor sum = {0, 0, 0};
    for (unsigned int light = 0; light < count; ++light) {
        const float cosine = QxDot(QxNormalize(lights[light].L[i]), normal);
        sum = sum + lights[light].Cl[i] * (cosine > 0 ? cosine : 0);
    }
    return sum;
}

float Rise(float low, float high, float x)
{
    if (x < low)
        return 0;
    if (x >= high)
        return 1;
    const float t = (x - low) / (high - low);
    return t * t * (3 - 2 * t);
}

float Wave(float x, float blur)
{
    const float m = QxMod(x, 2);
    return Rise(0, blur, m) - Rise(1, 1 + blur, m);
}

}  // namespace

extern "C" void plain_constant(const QxHiddenVariables& g, unsigned int points, const QxLightInput*,
                               unsigned int)
{
    for (unsigned int i = 0; i < points; ++i) {
        g.Oi[i] = g.Os[i];
        g.Ci[i] = g.Os[i] * g.Cs[i];
    }
}

extern "C" void plain_checker_flat(const QxHiddenVariables& g, unsigned int points,
                                   const QxLightInput* lights, unsigned int lightCount)
{
    const QxRGBColor light = {0.9F, 0.85F, 0.7F};
    const QxRGBColor dark = {0.25F, 0.163F, 0.1F};
    for (unsigned int i = 0; i < points; ++i) {
        const float alongS = Wave(g.s[i] * 8, 0.03F);
        const float alongT = Wave(g.t[i] * 8, 0.03F);
        const float differ = alongS + alongT - 2 * alongS * alongT;
        const QxVector3 normal = QxFaceForward(QxNormalize(g.N[i]), g.I[i], g.Ng[i]);
        const QxRGBColor squares = QxMix(light, dark, differ);
        g.Oi[i] = g.Os[i];
        g.Ci[i] =
            g.Os[i] * squares * (0.2F * k_ambient + 0.8F * Diffuse(lights, lightCount, i, normal));
    }
}

extern "C" void plain_velvet_flat(const QxHiddenVariables& g, unsigned int points,
                                  const QxLightInput* lights, unsigned int lightCount)
{
    const QxRGBColor sheen = {0.9F, 0.7F, 0.8F};
    for (unsigned int i = 0; i < points; ++i) {
        const QxVector3 normal = QxFaceForward(QxNormalize(g.N[i]), g.I[i], g.Ng[i]);
        const QxVector3 toEye = -QxNormalize(g.I[i]);
        const float facing = QxClamp(QxDot(normal, toEye), 0, 1);
        QxRGBColor c = g.Cs[i] * (0.4F * k_ambient + 0.6F * Diffuse(lights, lightCount, i, normal));
        c = c + 0.7F * sheen * QxPow(1 - facing, 3);
        g.Ci[i] = c * g.Os[i];
        g.Oi[i] = g.Os[i];
    }
}

extern "C" void plain_matte(const QxHiddenVariables& g, unsigned int points,
                            const QxLightInput* lights, unsigned int lightCount)
{
    for (unsigned int i = 0; i < points; ++i) {
        const QxVector3 normal = QxFaceForward(QxNormalize(g.N[i]), g.I[i], g.Ng[i]);
        g.Oi[i] = g.Os[i];
        g.Ci[i] = g.Os[i] * g.Cs[i] * (k_ambient + Diffuse(lights, lightCount, i, normal));
    }
}

extern "C" void plain_fog_flat(const QxHiddenVariables& g, unsigned int points, const QxLightInput*,
                               unsigned int)
{
    const QxRGBColor background = {0.7F, 0.75F, 0.8F};
    for (unsigned int i = 0; i < points; ++i) {
        const float haze = 1 - QxPow(0.5F, QxLength(g.I[i]) / 10);
        g.Ci[i] = QxMix(g.Ci[i], background, haze);
        g.Oi[i] = QxMix(g.Oi[i], QxRGBColor{1, 1, 1}, haze);
    }
}

#pragma once

#include "QxLights.h"
#include "QxStrips.h"

// Sums reflected light over strips of points, light by light:
//
//     for each point: for each light: sum += color * answer
// becomes
//     for each strip: for each light: for each point of the strip: sum += color * answer
//
// so that the innermost loop can be vectorized: in a strip, triples are stored component by
// component on the stack, where nothing can alias. For each point, the same numbers are added in
// the same order as in QxLights.h, so the sums have the same bits. A strip has members `first` and
// `count`, and `Has(j)` is true if its point j is active.

/// Number of powers that are computed together, a multiple of the vector length of most processors.
constexpr unsigned int k_qxPlaces = 8;

// The classes of answers: each computes, for the points of a strip, the fraction of the light from
// one direction that is reflected. First the members are loaded, then `Prepare` is called once.

struct QxDiffuseStrip {
    QxTriples normals;

    void Prepare(unsigned int) {}
    template <class Strip>
    void operator()(QxNumbers& shares, const QxTriples& toLight, const Strip& strip) const
    {
        for (unsigned int j = 0; j < strip.count; ++j)
            shares.at[j] = QxMax(0, QxDot(toLight.At(j), normals.At(j)));
    }
};

/// Computes shares = bases, or 0 for negative ones, to the power of the exponents, at the active
/// points where `facing` is positive, since the light is on the near side of the surface; 0 at the
/// other points. The required powers are packed, so that vectors compute no others, except up to
/// seven at the end.
template <class Strip>
inline void QxPowersOfStrip(QxNumbers& shares, const QxNumbers& facing, const QxNumbers& bases,
                            const QxNumbers& exponents, const Strip& strip)
{
    unsigned int points[k_qxStrip];
    QxNumbers packed;
    QxNumbers packedExponents;
    unsigned int count = 0;
    for (unsigned int j = 0; j < strip.count; ++j) {
        points[count] = j;
        packed.at[count] = bases.at[j];
        packedExponents.at[count] = exponents.at[j];
        count += facing.at[j] <= 0 || !strip.Has(j) ? 0u : 1u;
        shares.at[j] = 0;
    }
    QX_ONE_BY_ONE
    for (unsigned int k = count; k % k_qxPlaces != 0; ++k)
        packed.at[k] = packedExponents.at[k] = 0;
    // With a fixed count the compiler needs no second loop for the remainder.
    for (unsigned int first = 0; first < count; first += k_qxPlaces) {
        float* const powers = packed.at + first;
        const float* const powersOf = packedExponents.at + first;
        for (unsigned int k = 0; k < k_qxPlaces; ++k)
            powers[k] = QxPowOfNonNegative(QxMax(0, powers[k]), powersOf[k]);
    }
    QX_ONE_BY_ONE
    for (unsigned int k = 0; k < count; ++k)
        shares.at[points[k]] = packed.at[k];
}

struct QxSpecularStrip {
    QxTriples normals;
    QxTriples toEye;
    QxNumbers exponents;  // the roughness until `Prepare` replaces it

    void Prepare(unsigned int count)
    {
        for (unsigned int j = 0; j < count; ++j)
            exponents.at[j] = exponents.at[j] > 0 ? 1 / exponents.at[j] : 1.0e6f;
    }
    template <class Strip>
    void operator()(QxNumbers& shares, const QxTriples& toLight, const Strip& strip) const
    {
        QxNumbers facing;
        QxNumbers bases;
        for (unsigned int j = 0; j < strip.count; ++j) {
            const QxVector3 normal = normals.At(j);
            facing.at[j] = QxDot(toLight.At(j), normal);
            bases.at[j] = QxDot(QxNormalize(toLight.At(j) + toEye.At(j)), normal);
        }
        QxPowersOfStrip(shares, facing, bases, exponents, strip);
    }
};

struct QxPhongStrip {
    QxTriples normals;
    QxTriples toEye;  // until `Prepare` replaces it by the mirrored direction
    QxNumbers exponents;

    void Prepare(unsigned int count)
    {
        for (unsigned int j = 0; j < count; ++j)
            toEye.Set(j, QxReflect(-QxNormalize(toEye.At(j)), QxNormalize(normals.At(j))));
    }
    template <class Strip>
    void operator()(QxNumbers& shares, const QxTriples& toLight, const Strip& strip) const
    {
        QxNumbers facing;
        QxNumbers bases;
        for (unsigned int j = 0; j < strip.count; ++j) {
            facing.at[j] = QxDot(toLight.At(j), normals.At(j));
            bases.at[j] = QxDot(toEye.At(j), toLight.At(j));
        }
        QxPowersOfStrip(shares, facing, bases, exponents, strip);
    }
};

/// Sums the reflected light of all lights at the points of a strip.
template <class Answer, class Strip>
inline void QxSumLights(QxTriples& sums, const QxLightInput* lights, unsigned int lightCount,
                        const Answer& answer, const Strip& strip)
{
    for (unsigned int light = 0; light < lightCount; ++light) {
        const QxVector3* const directions = lights[light].L + strip.first;
        const QxRGBColor* const colors = lights[light].Cl + strip.first;
        QxTriples toLight;
        for (unsigned int j = 0; j < strip.count; ++j)
            toLight.Set(j, directions[j]);
        for (unsigned int j = 0; j < strip.count; ++j)
            toLight.Set(j, QxNormalize(toLight.At(j)));
        QxNumbers shares;
        answer(shares, toLight, strip);
        const auto add = [&](unsigned int j, const QxVector3& sum) {
            sums.Set(j, {sum.x + colors[j].r * shares.at[j], sum.y + colors[j].g * shares.at[j],
                         sum.z + colors[j].b * shares.at[j]});
        };
        // Clearing the sums first would take a tenth of the time.
        if (light == 0)
            for (unsigned int j = 0; j < strip.count; ++j)
                add(j, {0, 0, 0});
        else
            for (unsigned int j = 0; j < strip.count; ++j)
                add(j, sums.At(j));
    }
    for (unsigned int j = 0; lightCount == 0 && j < strip.count; ++j)
        sums.Set(j, {0, 0, 0});
}

// Strips of whole-grid forms

template <class Where>
struct QxStripWhere {
    unsigned int first;
    unsigned int count;
    const Where& where;

    bool Has(unsigned int j) const { return where(first + j); }
    bool IsEmpty() const
    {
        for (unsigned int j = 0; j < count; ++j)
            if (Has(j))
                return false;
        return true;
    }
};

template <class Operand>
inline void QxLoad(QxNumbers& numbers, const Operand& operand, unsigned int first,
                   unsigned int count)
{
    for (unsigned int j = 0; j < count; ++j)
        numbers.at[j] = QxAt(operand, first + j);
}

template <class Operand>
inline void QxLoad(QxTriples& triples, const Operand& operand, unsigned int first,
                   unsigned int count)
{
    for (unsigned int j = 0; j < count; ++j)
        triples.Set(j, QxToPoint(QxAt(operand, first + j)));
}

template <class Normals>
inline void QxLoadAnswer(QxDiffuseStrip& answer, unsigned int first, unsigned int count,
                         const Normals& normals)
{
    QxLoad(answer.normals, normals, first, count);
}

/// Loads the operands of `QxSpecularStrip` or `QxPhongStrip`.
template <class Answer, class Normals, class ToEye, class Exponents>
inline void QxLoadAnswer(Answer& answer, unsigned int first, unsigned int count,
                         const Normals& normals, const ToEye& toEye, const Exponents& exponents)
{
    QxLoad(answer.normals, normals, first, count);
    QxLoad(answer.toEye, toEye, first, count);
    QxLoad(answer.exponents, exponents, first, count);
}

/// Number of points from which strips are faster than a loop over points.
#ifdef __AVX2__
constexpr unsigned int k_qxFewestForStrips = 4;
#else
constexpr unsigned int k_qxFewestForStrips = 8;
#endif

/// Computes the reflected light at the points that `where` selects. The result may be one of the
/// operands, since a strip is read before it is written. `call` contains the lights, and computes
/// each point of a grid that is too small for strips.
template <class Answer, class Where, class Call, class Result, class... Operands>
inline void QxLitOverGrid(unsigned int points, const Where& where, const Call& call,
                          Result&& result, const Operands&... operands)
{
    if (points < k_qxFewestForStrips) {
        QX_ONE_BY_ONE
        for (unsigned int i = 0; i < points; ++i)
            if (where(i))
                QxAt(result, i) = call(i, QxAt(operands, i)...);
        return;
    }
    const QxLights& lights = call.Lights();
    for (unsigned int first = 0; first < points; first += k_qxStrip) {
        const unsigned int count = points - first < k_qxStrip ? points - first : k_qxStrip;
        const QxStripWhere<Where> strip = {first, count, where};
        if (strip.IsEmpty())
            continue;
        Answer answer;
        QxLoadAnswer(answer, first, count, operands...);
        answer.Prepare(count);
        QxTriples sums;
        QxSumLights(sums, lights.lights, lights.count, answer, strip);
        for (unsigned int j = 0; j < count; ++j)
            if (strip.Has(j))
                QxAt(result, first + j) = {sums.x.at[j], sums.y.at[j], sums.z.at[j]};
    }
}

// For these functions, the overloads below replace `QxOverGridAt` of QxForms.h, which has no
// strips.

template <class Where, class Result, class... Operands>
inline void QxOverGridAt(unsigned int points, const Where& where, const QxDiffuseCall& call,
                         Result&& result, Operands&&... operands)
{
    QxLitOverGrid<QxDiffuseStrip>(points, where, call, result, operands...);
}

template <class Where, class Result, class... Operands>
inline void QxOverGridAt(unsigned int points, const Where& where, const QxSpecularCall& call,
                         Result&& result, Operands&&... operands)
{
    QxLitOverGrid<QxSpecularStrip>(points, where, call, result, operands...);
}

template <class Where, class Result, class... Operands>
inline void QxOverGridAt(unsigned int points, const Where& where, const QxPhongCall& call,
                         Result&& result, Operands&&... operands)
{
    QxLitOverGrid<QxPhongStrip>(points, where, call, result, operands...);
}

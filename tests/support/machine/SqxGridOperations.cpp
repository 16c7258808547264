#include "machine/SqxGridOperations.h"

#include <cmath>

#include "QxFilters.h"

namespace {

using enum SqxPrimitive;

using Vector = QxVector3;

// Operations on flags, at all points. Reading a flag that was never set is a fault, with two
// exceptions: the opposite of such a flag also counts as never set, and the inner flag is not read
// where the outer one is false.

void SetUniformFlag(const SqxGridCall& call)
{
    bool any = false;
    for (std::size_t i = 0; i < call.Points(); ++i)
        any = call.At(i).Get<bool>(1) || any;
    call.At(0).Set(0, any);
}

void InvertFlag(const SqxGridCall& call)
{
    for (std::size_t i = 0; i < call.Points(); ++i)
        call.At(i).Numbers(0)[0] = 1 - call.At(i).Numbers(1)[0];
}

void InvertInnerFlag(const SqxGridCall& call)
{
    for (std::size_t i = 0; i < call.Points(); ++i) {
        const SqxCall at = call.At(i);
        at.Set(0, at.Get<bool>(2) && !at.Get<bool>(1));
    }
}

void OrFlag(const SqxGridCall& call)
{
    for (std::size_t i = 0; i < call.Points(); ++i) {
        const SqxCall at = call.At(i);
        const bool left = at.Get<bool>(1);
        at.Set(0, at.Get<bool>(2) || left);
    }
}

// Derivatives. The steps along the axes, du and dv, are uniform, so they are read at point 0.

template <class Value, QxGridAxis axis>
void Derivative(const SqxGridCall& call)
{
    std::vector<Value> values = call.Gather<Value>(1);
    QxDerivative(values.data(), values.data(), call.At(0).Get<float>(2), call.Grid(), axis,
                 call.Where());
    call.Scatter(0, values);
}

template <class Value>
void DerivativeBy(const SqxGridCall& call)
{
    std::vector<Value> values(call.Points());
    QxDerivativeBy(values.data(), call.Gather<Value>(1).data(), call.Gather<float>(2).data(),
                   call.Grid(), call.Where());
    call.Scatter(0, values);
}

void Area(const SqxGridCall& call)
{
    std::vector<float> values(call.Points());
    QxArea(values.data(), call.Gather<Vector>(1).data(), call.Grid(), call.Where());
    call.Scatter(0, values);
}

void CalculateNormal(const SqxGridCall& call)
{
    std::vector<Vector> values(call.Points());
    QxCalculateNormal(values.data(), call.Gather<Vector>(1).data(), call.At(0).Get<float>(2),
                      call.At(0).Get<float>(3), call.Grid(), call.Where());
    call.Scatter(0, values);
}

// Footprints: how much values change within a shading point. Textures and filterstep use them.

/// A value at each point, and how much it changes along u and v within one shading point.
template <class Value>
struct Footprint {
    Footprint(const SqxGridCall& call, std::size_t place)
        : center(call.Gather<Value>(place)),
          alongU(center.size()),
          alongV(center.size())
    {
        QxDifferences(alongU.data(), center.data(), call.Grid(), QxGridAxis::U, call.Where());
        QxDifferences(alongV.data(), center.data(), call.Grid(), QxGridAxis::V, call.Where());
    }
    /// Returns the value at a corner of each shading point; `u` and `v` are -1 or 1.
    [[nodiscard]] std::vector<Value> Corner(float u, float v) const
    {
        std::vector<Value> corner(center.size());
        for (std::size_t i = 0; i < center.size(); ++i)
            corner[i] = center[i] + alongU[i] * (0.5F * u) + alongV[i] * (0.5F * v);
        return corner;
    }

    std::vector<Value> center;
    std::vector<Value> alongU;
    std::vector<Value> alongV;
};

/// Writes the values of an operand at the four corners of each shading point, in order around it,
/// to the operand at `first` and three more, each `step` places after the one before.
template <class Value>
void ScatterCorners(const SqxGridCall& call, std::size_t operand, std::size_t first,
                    std::size_t step)
{
    static constexpr float corners[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    const Footprint<Value> patch(call, operand);
    for (const auto& corner : corners) {
        call.Scatter(first, patch.Corner(corner[0], corner[1]));
        first += step;
    }
}

void StCorners(const SqxGridCall& call)
{
    ScatterCorners<float>(call, 0, 2, 2);
    ScatterCorners<float>(call, 1, 3, 2);
}

void Corners(const SqxGridCall& call)
{
    ScatterCorners<Vector>(call, 0, 1, 1);
}

void FilterStepEnd(const SqxGridCall& call)
{
    Footprint<float> patch(call, 0);
    for (std::size_t i = 0; i < patch.center.size(); ++i)
        patch.center[i] = QxIntervalAround(std::abs(patch.alongU[i]) + std::abs(patch.alongV[i]));
    call.Scatter(1, patch.center);
}

/// Only copies: the machine of the tests stores all arrays in the same order of points and
/// elements.
void CopyArray(const SqxGridCall& call)
{
    for (std::size_t i = 0; i < call.Points(); ++i) {
        const SqxCall at = call.At(i);
        if (at.Variable(0).type == SqxType::String) {
            const auto from = at.Texts(1);
            std::copy(from.begin(), from.end(), at.Texts(0).begin());
        } else {
            const auto from = at.Numbers(1);
            std::copy(from.begin(), from.end(), at.Numbers(0).begin());
        }
    }
}

struct GridRow {
    SqxPrimitive primitive;
    SqxGridOperation operation;
};

// clang-format off
constexpr GridRow k_gridOperations[] = {
    {SET_UNIFORM_BOOL_FLAG,     SetUniformFlag},
    {INVERT_BOOL_FLAG,          InvertFlag},
    {INVERT_INNER_BOOL_FLAG,    InvertInnerFlag},
    {OR_BOOL_FLAG,              OrFlag},
    {CALL_PRIM_DU_FLOAT,        Derivative<float, QxGridAxis::U>},
    {CALL_PRIM_DU_COLOR,        Derivative<Vector, QxGridAxis::U>},
    {CALL_PRIM_DU_POINT,        Derivative<Vector, QxGridAxis::U>},
    {CALL_PRIM_DV_FLOAT,        Derivative<float, QxGridAxis::V>},
    {CALL_PRIM_DV_COLOR,        Derivative<Vector, QxGridAxis::V>},
    {CALL_PRIM_DV_POINT,        Derivative<Vector, QxGridAxis::V>},
    {CALL_PRIM_DERIV_FLOAT,     DerivativeBy<float>},
    {CALL_PRIM_DERIV_COLOR,     DerivativeBy<Vector>},
    {CALL_PRIM_DERIV_POINT,     DerivativeBy<Vector>},
    {CALL_PRIM_AREA,            Area},
    {CALL_PRIM_CALCULATENORMAL, CalculateNormal},
    {COMPUTE_ST_POINTS,         StCorners},
    {COMPUTE_POINTS,            Corners},
    {COMPUTE_FILTERSTEP_POINTS, FilterStepEnd},
    {CONVERT_ARRAY_DSO_TO,      CopyArray},
    {CONVERT_ARRAY_DSO_FROM,    CopyArray},
};
// clang-format on

}  // namespace

SqxGridOperation SqxFindGridOperation(SqxPrimitive primitive)
{
    for (const GridRow& row : k_gridOperations)
        if (row.primitive == primitive)
            return row.operation;
    return nullptr;
}

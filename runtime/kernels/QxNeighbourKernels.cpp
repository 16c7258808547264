// Functions that read neighbouring points, and therefore compute the whole grid at once. The
// functions in QxDerivatives.h, which shared objects call too, compute differences between
// neighbours; if all points are active, they do this row by row. Queries of textures, environments
// and shadows need the corners of the patch around each point.
//
// Tested with whole shaders by tests/host/AgreementTest.cpp.

#include <algorithm>

#include "QxSceneCalls.h"
#include "kernels/QxKernelForms.h"

namespace QX_KERNEL_SET {
namespace {

using Vector = QxVector3;
using Color = QxRGBColor;

template <class Value, QxGridAxis axis>
QX_KERNEL_CODE void Derivative(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    QxDerivativeAlong<Value>(state.grid, axis, points, Operand<Value>(state, code, 0),
                             Operand<Value>(state, code, 1),
                             QxAt(Operand<float>(state, code, 2), 0));
}

template <class Value>
QX_KERNEL_CODE void DerivativeBy(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    QxDerivativeByOperand<Value>(state.grid, points, Operand<Value>(state, code, 0),
                                 Operand<Value>(state, code, 1), Operand<float>(state, code, 2));
}

QX_KERNEL_CODE void Area(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    QxAreaOfOperand(state.grid, points, Operand<float>(state, code, 0),
                    Operand<Vector>(state, code, 1));
}

QX_KERNEL_CODE void CalculateNormal(QxMachineState& state, const QxCode& code,
                                    const QxPoints& points)
{
    QxNormalOfOperand(state.grid, points, Operand<Vector>(state, code, 0),
                      Operand<Vector>(state, code, 1), QxAt(Operand<float>(state, code, 2), 0),
                      QxAt(Operand<float>(state, code, 3), 0));
}

template <class Value>
QX_KERNEL_CODE void Corners(QxMachineState& state, const QxCode& code, const QxPoints& points,
                            std::size_t operand, std::size_t first, std::size_t step)
{
    QxPatchCorners(state.grid, points, Operand<Value>(state, code, operand),
                   Operand<Value>(state, code, first), Operand<Value>(state, code, first + step),
                   Operand<Value>(state, code, first + 2 * step),
                   Operand<Value>(state, code, first + 3 * step));
}

void PointCorners(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    Corners<Vector>(state, code, points, 0, 1, 1);
}

void StCorners(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    Corners<float>(state, code, points, 0, 2, 2);
    Corners<float>(state, code, points, 1, 3, 2);
}

/// Keeps the differences of a varying operand in memory that the run reuses: to allocate memory in
/// each call and return it to the system can cost more than the rest of the shader.
QX_KERNEL_CODE void FilterStepEnds(QxMachineState& state, const QxCode& code,
                                   const QxPoints& points)
{
    const auto s1 = Operand<float>(state, code, 0);
    const auto s2 = Operand<float>(state, code, 1);
    if (s1.step == 0)
        return QxFilterStepEnds(state.grid, points, s2, s1);
    const std::size_t size = state.grid.Size();
    std::vector<float>& numbers = state.questions.numbers;
    numbers.resize(std::max(numbers.size(), 2 * size));
    float* const alongU = numbers.data();
    float* const alongV = alongU + size;
    QxDifferences(alongU, s1.values, state.grid, QxGridAxis::U, points);
    QxDifferences(alongV, s1.values, state.grid, QxGridAxis::V, points);
    for (std::size_t i = 0; i < size; ++i)
        alongU[i] = QxFilterStepEnd(alongU[i], alongV[i]);
    for (unsigned int i = 0; i < size; ++i)
        if (points(i))
            QxAt(s2, i) = alongU[i];
}

// clang-format off
constexpr QxKernelRow k_rows[] = {
    Row<float, float, float>(SqxPrimitive::CALL_PRIM_DU_FLOAT, Derivative<float, QxGridAxis::U>),
    Row<Color, Color, float>(SqxPrimitive::CALL_PRIM_DU_COLOR, Derivative<Color, QxGridAxis::U>),
    Row<Vector, Vector, float>(SqxPrimitive::CALL_PRIM_DU_POINT, Derivative<Vector, QxGridAxis::U>),
    Row<float, float, float>(SqxPrimitive::CALL_PRIM_DV_FLOAT, Derivative<float, QxGridAxis::V>),
    Row<Color, Color, float>(SqxPrimitive::CALL_PRIM_DV_COLOR, Derivative<Color, QxGridAxis::V>),
    Row<Vector, Vector, float>(SqxPrimitive::CALL_PRIM_DV_POINT, Derivative<Vector, QxGridAxis::V>),
    Row<float, float, float>(SqxPrimitive::CALL_PRIM_DERIV_FLOAT, DerivativeBy<float>),
    Row<Color, Color, float>(SqxPrimitive::CALL_PRIM_DERIV_COLOR, DerivativeBy<Color>),
    Row<Vector, Vector, float>(SqxPrimitive::CALL_PRIM_DERIV_POINT, DerivativeBy<Vector>),
    Row<float, Vector>(SqxPrimitive::CALL_PRIM_AREA, Area),
    Row<Vector, Vector, float, float>(SqxPrimitive::CALL_PRIM_CALCULATENORMAL, CalculateNormal),
    Row<float, float, float, float, float, float, float, float, float, float>(SqxPrimitive::COMPUTE_ST_POINTS, StCorners),
    Row<Vector, Vector, Vector, Vector, Vector>(SqxPrimitive::COMPUTE_POINTS, PointCorners),
    Row<float, float>(SqxPrimitive::COMPUTE_FILTERSTEP_POINTS, FilterStepEnds),
};
// clang-format on

}  // namespace

QxKernelRows NeighbourKernels()
{
    return k_rows;
}

}  // namespace QX_KERNEL_SET

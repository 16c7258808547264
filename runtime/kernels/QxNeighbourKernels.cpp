// Functions that read neighbouring points, and therefore compute the whole grid at once. If all
// points are active, differences between neighbours are computed row by row, by the functions in
// QxDerivatives.h that shared objects call too. The corners of the patch of each point are computed
// for filters.
//
// Tested with whole shaders by tests/host/AgreementTest.cpp.

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

QX_KERNEL_CODE void FilterStepEnds(QxMachineState& state, const QxCode& code,
                                   const QxPoints& points)
{
    QxFilterStepEnds(state.grid, points, Operand<float>(state, code, 1),
                     Operand<float>(state, code, 0));
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

#pragma once

#include <vector>

#include "QxGeometry.h"

/// The points of a grid by row: u runs fastest.
struct QxGrid {
    unsigned int columns;  // in u
    unsigned int rows;     // in v

    unsigned int Size() const { return columns * rows; }
};

/// Which way along the grid a difference is taken.
enum class QxGridAxis { U, V };

/// How a value changes from one shading point to the next along an axis, at each point: half the
/// difference of both neighbours, at an edge the difference to the only one, 0 without any.
/// `result` may be `value`.
template <class Value>
inline void QxDifferences(Value* result, const Value* value, const QxGrid& grid, QxGridAxis axis)
{
    const std::vector<Value> source(value, value + grid.Size());
    const unsigned int length = axis == QxGridAxis::U ? grid.columns : grid.rows;
    const unsigned int stride = axis == QxGridAxis::U ? 1 : grid.columns;
    for (unsigned int i = 0; i < grid.Size(); ++i) {
        const unsigned int place = i / stride % length;
        const unsigned int before = place > 0 ? i - stride : i;
        const unsigned int behind = place + 1 < length ? i + stride : i;
        const float spacing = before != i && behind != i ? 0.5f : 1.0f;
        result[i] = (source[behind] - source[before]) * spacing;
    }
}

/// A difference over the step of the parameter; 0 over no step.
template <class Value>
inline Value QxQuotient(const Value& difference, float step)
{
    return step != 0 ? difference * (1 / step) : difference * 0.0f;
}

/// The derivative of a value by the parameter of an axis, whose step is `spacing` everywhere.
template <class Value>
inline void QxDerivative(Value* result, const Value* value, float spacing, const QxGrid& grid,
                         QxGridAxis axis)
{
    QxDifferences(result, value, grid, axis);
    for (unsigned int i = 0; i < grid.Size(); ++i)
        result[i] = QxQuotient(result[i], spacing);
}

/// The derivative of one value by another: along u and v, weighted by how the denominator changes
/// there, which is its gradient's direction on the grid.
template <class Value>
inline void QxDerivativeBy(Value* result, const Value* numerator, const float* denominator,
                           const QxGrid& grid)
{
    std::vector<Value> alongU(grid.Size());
    std::vector<Value> alongV(grid.Size());
    std::vector<float> byU(grid.Size());
    std::vector<float> byV(grid.Size());
    QxDifferences(alongU.data(), numerator, grid, QxGridAxis::U);
    QxDifferences(alongV.data(), numerator, grid, QxGridAxis::V);
    QxDifferences(byU.data(), denominator, grid, QxGridAxis::U);
    QxDifferences(byV.data(), denominator, grid, QxGridAxis::V);
    for (unsigned int i = 0; i < grid.Size(); ++i)
        result[i] =
            QxQuotient(alongU[i] * byU[i] + alongV[i] * byV[i], byU[i] * byU[i] + byV[i] * byV[i]);
}

/// The normal of a surface whose points are given, not of unit length.
inline void QxCalculateNormal(QxVector3* result, const QxVector3* points, float du, float dv,
                              const QxGrid& grid)
{
    std::vector<QxVector3> alongU(grid.Size());
    std::vector<QxVector3> alongV(grid.Size());
    QxDerivative(alongU.data(), points, du, grid, QxGridAxis::U);
    QxDerivative(alongV.data(), points, dv, grid, QxGridAxis::V);
    for (unsigned int i = 0; i < grid.Size(); ++i)
        result[i] = QxCross(alongU[i], alongV[i]);
}

/// The area that each shading point stands for.
inline void QxArea(float* result, const QxVector3* points, const QxGrid& grid)
{
    std::vector<QxVector3> alongU(grid.Size());
    std::vector<QxVector3> alongV(grid.Size());
    QxDifferences(alongU.data(), points, grid, QxGridAxis::U);
    QxDifferences(alongV.data(), points, grid, QxGridAxis::V);
    for (unsigned int i = 0; i < grid.Size(); ++i)
        result[i] = QxLength(QxCross(alongU[i], alongV[i]));
}

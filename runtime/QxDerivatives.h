#pragma once

#include "QxForms.h"
#include "QxGeometry.h"

/// The points of a grid by row: u runs fastest.
struct QxGrid {
    unsigned int columns;  // in u
    unsigned int rows;     // in v

    unsigned int Size() const { return columns * rows; }
};

/// Which way along the grid a difference is taken.
enum class QxGridAxis { U, V };

// Each of these has an optional `where`, the points that count. What stands at the others may be
// left over from other code or never set: it is not read, and what results there has no meaning.

/// All points count: each test of a point says yes.
inline bool QxIsEverywhere(const QxAllPoints&)
{
    return true;
}

template <class Where>
inline bool QxIsEverywhere(const Where&)
{
    return false;
}

// Central differences, one-sided at an edge. Each row has a loop that knows no edges, for then it
// becomes one of vectors.

/// The differences of one row, where all points count; `before` and `behind` are the rows beside
/// it, or itself at an edge of the grid.
template <class Value>
inline void QxDifferencesAcrossRow(Value* result, const Value* before, const Value* row,
                                   const Value* behind, unsigned int columns)
{
    const float spacing = before != row && behind != row ? 0.5f : 1.0f;
    for (unsigned int i = 0; i < columns; ++i)
        result[i] = (behind[i] - before[i]) * spacing;
}

template <class Value>
inline void QxDifferencesWithinRow(Value* result, const Value* row, unsigned int columns)
{
    const unsigned int last = columns - 1;
    for (unsigned int i = 1; i < last; ++i)
        result[i] = (row[i + 1] - row[i - 1]) * 0.5f;
    result[0] = row[last > 0 ? 1 : 0] - row[0];
    result[last] = row[last] - row[last > 0 ? last - 1 : 0];
}

/// How a value changes from one shading point to the next along an axis, at each point: half the
/// difference of both neighbours, at an edge of the grid or of the points that count the difference
/// to the only one, 0 without any. `result` may be `value`.
template <class Value, class Where = QxAllPoints>
inline void QxDifferences(Value* result, const Value* value, const QxGrid& grid, QxGridAxis axis,
                          const Where& where = Where())
{
    QxArray<Value> copy(result == value ? grid.Size() : 0);
    for (unsigned int i = 0; i < copy.Size(); ++i)
        copy[i] = value[i];
    const Value* const source = result == value ? copy.Data() : value;
    const unsigned int columns = grid.columns;
    if (QxIsEverywhere(where)) {
        for (unsigned int row = 0; row < grid.rows; ++row) {
            const Value* const at = source + row * columns;
            if (axis == QxGridAxis::U)
                QxDifferencesWithinRow(result + row * columns, at, columns);
            else
                QxDifferencesAcrossRow(result + row * columns, row > 0 ? at - columns : at, at,
                                       row + 1 < grid.rows ? at + columns : at, columns);
        }
        return;
    }
    const unsigned int length = axis == QxGridAxis::U ? columns : grid.rows;
    const unsigned int stride = axis == QxGridAxis::U ? 1 : columns;
    for (unsigned int i = 0; i < grid.Size(); ++i) {
        // With a point there is a row and a column. NOLINTNEXTLINE(clang-analyzer-core.DivideZero)
        const unsigned int place = i / stride % length;
        const unsigned int before = place > 0 && where(i - stride) ? i - stride : i;
        const unsigned int behind = place + 1 < length && where(i + stride) ? i + stride : i;
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
template <class Value, class Where = QxAllPoints>
inline void QxDerivative(Value* result, const Value* value, float spacing, const QxGrid& grid,
                         QxGridAxis axis, const Where& where = Where())
{
    QxDifferences(result, value, grid, axis, where);
    for (unsigned int i = 0; i < grid.Size(); ++i)
        result[i] = QxQuotient(result[i], spacing);
}

/// The derivative of one value by another: along u and v, weighted by how the denominator changes
/// there, which is its gradient's direction on the grid.
template <class Value, class Where = QxAllPoints>
inline void QxDerivativeBy(Value* result, const Value* numerator, const float* denominator,
                           const QxGrid& grid, const Where& where = Where())
{
    QxArray<Value> alongU(grid.Size());
    QxArray<Value> alongV(grid.Size());
    QxArray<float> byU(grid.Size());
    QxArray<float> byV(grid.Size());
    QxDifferences(alongU.Data(), numerator, grid, QxGridAxis::U, where);
    QxDifferences(alongV.Data(), numerator, grid, QxGridAxis::V, where);
    QxDifferences(byU.Data(), denominator, grid, QxGridAxis::U, where);
    QxDifferences(byV.Data(), denominator, grid, QxGridAxis::V, where);
    for (unsigned int i = 0; i < grid.Size(); ++i)
        result[i] =
            QxQuotient(alongU[i] * byU[i] + alongV[i] * byV[i], byU[i] * byU[i] + byV[i] * byV[i]);
}

/// The normal of a surface whose points are given, not of unit length.
template <class Where = QxAllPoints>
inline void QxCalculateNormal(QxVector3* result, const QxVector3* points, float du, float dv,
                              const QxGrid& grid, const Where& where = Where())
{
    QxArray<QxVector3> alongU(grid.Size());
    QxArray<QxVector3> alongV(grid.Size());
    QxDerivative(alongU.Data(), points, du, grid, QxGridAxis::U, where);
    QxDerivative(alongV.Data(), points, dv, grid, QxGridAxis::V, where);
    for (unsigned int i = 0; i < grid.Size(); ++i)
        result[i] = QxCross(alongU[i], alongV[i]);
}

/// The area that each shading point stands for.
template <class Where = QxAllPoints>
inline void QxArea(float* result, const QxVector3* points, const QxGrid& grid,
                   const Where& where = Where())
{
    QxArray<QxVector3> alongU(grid.Size());
    QxArray<QxVector3> alongV(grid.Size());
    QxDifferences(alongU.Data(), points, grid, QxGridAxis::U, where);
    QxDifferences(alongV.Data(), points, grid, QxGridAxis::V, where);
    for (unsigned int i = 0; i < grid.Size(); ++i)
        result[i] = QxLength(QxCross(alongU[i], alongV[i]));
}

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

/// result = function(change along u, change along v) at the points of one row, where all points
/// count, with the changes of `row` as `QxDifferences` tells them. No result is read again.
template <class Result, class Value, class Function>
inline void QxOfDifferencesInRow(Result* result, const Value* row, const Value* before,
                                 const Value* behind, unsigned int columns,
                                 const Function& function)
{
    const float spacing = before != row && behind != row ? 0.5f : 1.0f;
    const unsigned int last = columns - 1;
    result[0] = function(row[last > 0 ? 1 : 0] - row[0], (behind[0] - before[0]) * spacing);
    for (unsigned int i = 1; i < last; ++i)
        result[i] = function((row[i + 1] - row[i - 1]) * 0.5f, (behind[i] - before[i]) * spacing);
    if (last > 0)
        result[last] = function(row[last] - row[last - 1], (behind[last] - before[last]) * spacing);
}

/// The same at those of its points that count; the row starts at point `first`.
template <class Result, class Value, class Where, class Function>
inline void QxOfDifferencesWhere(Result&& result, const Value* value, const QxGrid& grid,
                                 unsigned int first, const Where& where, const Function& function)
{
    const unsigned int end = first + grid.columns;
    const auto change = [&](unsigned int i, unsigned int before, unsigned int behind) {
        return (value[behind] - value[before]) * (before != i && behind != i ? 0.5f : 1.0f);
    };
    for (unsigned int i = first; i < end; ++i) {
        if (!where(i))
            continue;
        const unsigned int left = i > first && where(i - 1) ? i - 1 : i;
        const unsigned int right = i + 1 < end && where(i + 1) ? i + 1 : i;
        const bool hasUp = first > 0 && where(i - grid.columns);
        const bool hasDown = end < grid.Size() && where(i + grid.columns);
        QxAt(result, i) = function(change(i, left, right), change(i, hasUp ? i - grid.columns : i,
                                                                  hasDown ? i + grid.columns : i));
    }
}

/// The same over a grid. `result` is not where `value` is.
template <class Result, class Value, class Where, class Function>
inline void QxOfDifferences(Result&& result, const Value* value, const QxGrid& grid,
                            const Where& where, const Function& function)
{
    const unsigned int columns = grid.columns;
    const auto* const results = QxBeside(&QxAt(result, 0), result);
    for (unsigned int row = 0; row < grid.rows; ++row) {
        const unsigned int first = row * columns;
        const Value* const at = value + first;
        if (results && QxIsEverywhere(where))
            QxOfDifferencesInRow(&QxAt(result, first), at, row > 0 ? at - columns : at,
                                 row + 1 < grid.rows ? at + columns : at, columns, function);
        else
            QxOfDifferencesWhere(result, value, grid, first, where, function);
    }
}

/// What turns a difference into one over the step of the parameter; 0 over no step.
inline float QxOver(float step)
{
    return step != 0 ? 1 / step : 0.0f;
}

/// The derivative of a value by the parameter of an axis, whose step is `spacing` everywhere.
template <class Value, class Where = QxAllPoints>
inline void QxDerivative(Value* result, const Value* value, float spacing, const QxGrid& grid,
                         QxGridAxis axis, const Where& where = Where())
{
    QxDifferences(result, value, grid, axis, where);
    for (unsigned int i = 0; i < grid.Size(); ++i)
        result[i] = result[i] * QxOver(spacing);
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
        result[i] = (alongU[i] * byU[i] + alongV[i] * byV[i]) *
                    QxOver(byU[i] * byU[i] + byV[i] * byV[i]);
}

/// The normal of a surface whose points are given, not of unit length, at the points that count.
template <class Result, class Where = QxAllPoints>
inline void QxCalculateNormal(Result&& result, const QxVector3* points, float du, float dv,
                              const QxGrid& grid, const Where& where = Where())
{
    QxOfDifferences(result, points, grid, where,
                    [overU = QxOver(du), overV = QxOver(dv)](const QxVector3& u, const QxVector3& v) {
                        return QxCross(u * overU, v * overV);
                    });
}

/// The area that each shading point stands for, of those that count.
template <class Result, class Where = QxAllPoints>
inline void QxArea(Result&& result, const QxVector3* points, const QxGrid& grid,
                   const Where& where = Where())
{
    QxOfDifferences(result, points, grid, where, [](const QxVector3& u, const QxVector3& v) {
        return QxLength(QxCross(u, v));
    });
}

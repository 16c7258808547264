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

// Each of these has an optional `where`, the points that count. Values at the others may be left
// over from other code or never set: they are not read, and results there have no meaning.

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

// Central differences. At an edge of the grid, or of the points that count, three points on one side,
// (-3 f0 + 4 f1 - f2) / 2, so that the values there are as exact as inside, of second order, and
// neighbouring grids agree; the difference to the only neighbour where there is no third one. Each row
// has a loop that knows no edges, for then it becomes one of vectors.

/// The change at the first of three values; that of values in a line is exactly their difference.
template <class Value>
inline Value QxChangeAtEdge(const Value& f0, const Value& f1, const Value& f2)
{
    const Value change = f1 - f0;
    return change + (change - (f2 - f1)) * 0.5f;
}

// Changes from row to row, at a place of the row.

template <class Value>
struct QxChangeInside {
    const Value* before;
    const Value* after;

    Value operator()(unsigned int i) const { return (after[i] - before[i]) * 0.5f; }
};

/// `direction` is -1 if the rows go back from the last one.
template <class Value>
struct QxChangeAtRim {
    const Value* row;
    const Value* next;
    const Value* third;
    float direction;

    Value operator()(unsigned int i) const
    {
        return QxChangeAtEdge(row[i], next[i], third[i]) * direction;
    }
};

/// Of at most two rows.
template <class Value>
struct QxChangeOfTwo {
    const Value* before;
    const Value* after;

    Value operator()(unsigned int i) const { return after[i] - before[i]; }
};

/// Calls `work` with what computes the changes across one row of a grid whose points all count.
template <class Value, class Work>
inline void QxWithChangeAcross(const Value* values, const QxGrid& grid, unsigned int row,
                               const Work& work)
{
    const unsigned int columns = grid.columns;
    const Value* const at = values + row * columns;
    const bool first = row == 0;
    const bool last = row + 1 == grid.rows;
    if (!first && !last)
        work(QxChangeInside<Value>{at - columns, at + columns});
    else if (grid.rows < 3)
        work(QxChangeOfTwo<Value>{first ? at : at - columns, last ? at : at + columns});
    else if (first)
        work(QxChangeAtRim<Value>{at, at + columns, at + 2 * columns, 1});
    else
        work(QxChangeAtRim<Value>{at, at - columns, at - 2 * columns, -1});
}

/// The change within a row at one of its ends.
template <class Value>
inline Value QxChangeAtEnd(const Value* row, unsigned int columns, bool first)
{
    if (columns < 3)
        return row[columns - 1] - row[0];
    const Value* const end = row + columns - 1;
    return first ? QxChangeAtEdge(row[0], row[1], row[2])
                 : QxChangeAtEdge(end[0], end[-1], end[-2]) * -1.0f;
}

/// The change at a point along an axis with that stride, in which it has that place; only points that
/// count are read.
template <class Value, class Where>
inline Value QxChangeWhere(const Value* value, unsigned int point, unsigned int stride,
                           unsigned int place, unsigned int length, const Where& where)
{
    const Value* const at = value + point;
    const std::size_t twice = std::size_t{2} * stride;
    const bool before = place > 0 && where(point - stride);
    const bool after = place + 1 < length && where(point + stride);
    if (before && after)
        return (at[stride] - *(at - stride)) * 0.5f;
    if (after)
        return place + 2 < length && where(point + 2 * stride)
                   ? QxChangeAtEdge(at[0], at[stride], at[twice])
                   : at[stride] - at[0];
    if (before)
        return place > 1 && where(point - 2 * stride)
                   ? QxChangeAtEdge(at[0], *(at - stride), *(at - twice)) * -1.0f
                   : at[0] - *(at - stride);
    return at[0] - at[0];
}

template <class Value>
inline void QxDifferencesWithinRow(Value* result, const Value* row, unsigned int columns)
{
    const unsigned int last = columns - 1;
    for (unsigned int i = 1; i < last; ++i)
        result[i] = (row[i + 1] - row[i - 1]) * 0.5f;
    result[0] = QxChangeAtEnd(row, columns, true);
    result[last] = QxChangeAtEnd(row, columns, false);
}

/// How a value changes from one shading point to the next along an axis, at each point; 0 without a
/// neighbour. `result` may be `value`.
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
            Value* const out = result + row * columns;
            if (axis == QxGridAxis::U)
                QxDifferencesWithinRow(out, source + row * columns, columns);
            else
                QxWithChangeAcross(source, grid, row, [&](const auto& change) {
                    for (unsigned int i = 0; i < columns; ++i)
                        out[i] = change(i);
                });
        }
        return;
    }
    const unsigned int length = axis == QxGridAxis::U ? columns : grid.rows;
    const unsigned int stride = axis == QxGridAxis::U ? 1 : columns;
    for (unsigned int i = 0; i < grid.Size(); ++i)
        // With a point there is a row and a column. NOLINTNEXTLINE(clang-analyzer-core.DivideZero)
        result[i] = QxChangeWhere(source, i, stride, i / stride % length, length, where);
}

/// The share of a cell that belongs to a point of a row or a column: half of it at the ends.
inline float QxShareOfCell(unsigned int place, unsigned int length)
{
    return place == 0 || place + 1 == length ? 0.5f : 1.0f;
}

/// result = function(change along u, change along v, share of the cell between points that is the
/// point's) at the points of one row, where all points count, with the changes of `row` as
/// `QxDifferences` computes them. `down` gives those along v. No result is read again.
template <class Result, class Value, class Down, class Function>
inline void QxOfDifferencesInRow(Result* result, const Value* row, const Down& down,
                                 unsigned int columns, float share, const Function& function)
{
    const unsigned int last = columns - 1;
    result[0] = function(QxChangeAtEnd(row, columns, true), down(0), share * 0.5f);
    for (unsigned int i = 1; i < last; ++i)
        result[i] = function((row[i + 1] - row[i - 1]) * 0.5f, down(i), share);
    if (last > 0)
        result[last] = function(QxChangeAtEnd(row, columns, false), down(last), share * 0.5f);
}

/// The same over a grid, at those of its points that count. `result` is not where `value` is.
template <class Result, class Value, class Where, class Function>
inline void QxOfDifferences(Result&& result, const Value* value, const QxGrid& grid,
                            const Where& where, const Function& function)
{
    const unsigned int columns = grid.columns;
    const auto* const results = QxBeside(&QxAt(result, 0), result);
    for (unsigned int row = 0; row < grid.rows; ++row) {
        const unsigned int first = row * columns;
        const float share = QxShareOfCell(row, grid.rows);
        if (results && QxIsEverywhere(where)) {
            QxWithChangeAcross(value, grid, row, [&](const auto& down) {
                QxOfDifferencesInRow(&QxAt(result, first), value + first, down, columns, share,
                                     function);
            });
            continue;
        }
        for (unsigned int i = 0; i < columns; ++i)
            if (where(first + i))
                QxAt(result, first + i) =
                    function(QxChangeWhere(value, first + i, 1, i, columns, where),
                             QxChangeWhere(value, first + i, columns, row, grid.rows, where),
                             share * QxShareOfCell(i, columns));
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
                    [overU = QxOver(du), overV = QxOver(dv)](const QxVector3& u, const QxVector3& v,
                                                             float) {
                        return QxCross(u * overU, v * overV);
                    });
}

/// The area that each shading point represents, of those that count: half of the cell between
/// points at an edge of the grid, a quarter at a corner, so that the sum over the grid is its area.
template <class Result, class Where = QxAllPoints>
inline void QxArea(Result&& result, const QxVector3* points, const QxGrid& grid,
                   const Where& where = Where())
{
    QxOfDifferences(result, points, grid, where,
                    [](const QxVector3& u, const QxVector3& v, float share) {
                        return QxLength(QxCross(u, v)) * share;
                    });
}

#pragma once

#include "QxForms.h"
#include "QxGeometry.h"

/// The size of a grid; points are numbered along u first.
struct QxGrid {
    unsigned int columns;  // in u
    unsigned int rows;     // in v

    unsigned int Size() const { return columns * rows; }
};

/// The direction in the grid in which a difference is computed.
enum class QxGridAxis { U, V };

// A parameter `where` of the functions below selects the active points. Values at other points may
// be stale: they do not affect results at active points. Results at other points have no meaning or
// are not written.

/// True if `where` is known to select all points. The kernels overload this for their masks.
inline bool QxIsEverywhere(const QxAllPoints&)
{
    return true;
}

template <class Where>
inline bool QxIsEverywhere(const Where&)
{
    return false;
}

// Central differences. At an edge of the grid or of the active points, the difference is computed
// from the point and the next two on one side, (-3 f0 + 4 f1 - f2) / 2. Like a central difference
// it is of second order, so that neighbouring grids nearly agree at their common edge. If the
// second of the two is missing, it is the difference from the only neighbour; without a neighbour
// it is 0. The loop over a row excludes the ends of the row, so that it can be vectorized.

/// Returns the change at the first of three values. If the steps between them are equal, the result
/// is exactly one step.
template <class Value>
inline Value QxChangeAtEdge(const Value& f0, const Value& f1, const Value& f2)
{
    const Value change = f1 - f0;
    return change + (change - (f2 - f1)) * 0.5f;
}

// Function objects that return the change from row to row at point `i` of a row. `before` and
// `after` are the rows on its two sides.

template <class Value>
struct QxChangeInside {
    const Value* before;
    const Value* after;

    Value operator()(unsigned int i) const { return (after[i] - before[i]) * 0.5f; }
};

/// For the first and the last row of at least three; `next` and `third` are the next two rows
/// towards the inside of the grid. `direction` is -1 for the last row, since these come before it.
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

/// For grids of at most two rows. In a grid of one row, `before` and `after` are this row, so the
/// change is 0.
template <class Value>
struct QxChangeOfTwo {
    const Value* before;
    const Value* after;

    Value operator()(unsigned int i) const { return after[i] - before[i]; }
};

/// Calls `work` with the function object that computes the changes along v at the points of one
/// row. All points of the grid must be active.
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

/// Returns the change within a row at one of its ends.
template <class Value>
inline Value QxChangeAtEnd(const Value* row, unsigned int columns, bool first)
{
    if (columns < 3)
        return row[columns - 1] - row[0];
    const Value* const end = row + columns - 1;
    return first ? QxChangeAtEdge(row[0], row[1], row[2])
                 : QxChangeAtEdge(end[0], end[-1], end[-2]) * -1.0f;
}

/// Returns the change at a point along an axis with this stride. `place` is the position of the
/// point along the axis, and `length` the number of points along it. Of the other points, reads
/// only active ones.
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

/// Computes the change of a value between neighbouring points along an axis, for each point; 0 if
/// no neighbour is active. `result` may be `value`, which is then copied first.
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
        // A grid with a point has a row and a column.
        // NOLINTNEXTLINE(clang-analyzer-core.DivideZero)
        result[i] = QxChangeWhere(source, i, stride, i / stride % length, length, where);
}

/// Returns the fraction of a cell that a point of a row or column represents: a half at both ends,
/// otherwise 1.
inline float QxShareOfCell(unsigned int place, unsigned int length)
{
    return place == 0 || place + 1 == length ? 0.5f : 1.0f;
}

/// Computes result = function(change along u, change along v, represented fraction of a cell) for
/// the points of one row; all points must be active. The changes within `row` are computed as by
/// `QxDifferences`, `down` returns the changes along v, and `share` is the fraction along v.
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

/// The same for the active points of a grid; some points may be inactive. `result` must not overlap
/// `value`.
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

/// Returns the factor by which a difference becomes a derivative for this step of the parameter; 0
/// if the step is 0.
inline float QxOver(float step)
{
    return step != 0 ? 1 / step : 0.0f;
}

/// Computes the derivative of a value with respect to the parameter of an axis, whose step from
/// point to point is `spacing` everywhere; 0 if `spacing` is 0. `result` may be `value`.
template <class Value, class Where = QxAllPoints>
inline void QxDerivative(Value* result, const Value* value, float spacing, const QxGrid& grid,
                         QxGridAxis axis, const Where& where = Where())
{
    QxDifferences(result, value, grid, axis, where);
    for (unsigned int i = 0; i < grid.Size(); ++i)
        result[i] = result[i] * QxOver(spacing);
}

/// Computes the derivative of one value with respect to another: the change of the numerator along
/// the gradient of the denominator on the grid, divided by the change of the denominator along this
/// gradient; 0 where the denominator does not change.
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
            (alongU[i] * byU[i] + alongV[i] * byV[i]) * QxOver(byU[i] * byU[i] + byV[i] * byV[i]);
}

/// Computes the normals of the surface through the points, at the active points: the cross product
/// of the derivatives along u and v, whose steps are `du` and `dv`. They are not scaled to unit
/// length.
template <class Result, class Where = QxAllPoints>
inline void QxCalculateNormal(Result&& result, const QxVector3* points, float du, float dv,
                              const QxGrid& grid, const Where& where = Where())
{
    QxOfDifferences(
        result, points, grid, where,
        [overU = QxOver(du), overV = QxOver(dv)](const QxVector3& u, const QxVector3& v, float) {
            return QxCross(u * overU, v * overV);
        });
}

/// Computes the area that each active point represents: one cell of the grid, or half a cell at an
/// edge of the grid, or a quarter at a corner. So if all points are active, the sum over them
/// approximates the area of the grid.
template <class Result, class Where = QxAllPoints>
inline void QxArea(Result&& result, const QxVector3* points, const QxGrid& grid,
                   const Where& where = Where())
{
    QxOfDifferences(result, points, grid, where,
                    [](const QxVector3& u, const QxVector3& v, float share) {
                        return QxLength(QxCross(u, v)) * share;
                    });
}

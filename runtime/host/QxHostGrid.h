#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <tuple>
#include <vector>

#include "QxDerivatives.h"
#include "host/QxHostValue.h"

/// Shading points whose values are stored by the caller, who must keep them until the run ends.
struct QxHostPoints {
    QxGrid layout;                // columns along u, rows along v
    QxHiddenVariables variables;  // may be null where no shader of the run uses the variable
    QxVector3 E = {0, 0, 0};      // position of the eye, in the current space

    /// The largest number of points of a layout.
    static constexpr std::uint64_t k_highestSize = std::uint64_t{1} << 28;

    /// Throws `QxHostError` for a layout without points, or with more than `k_highestSize`.
    static void Check(const QxGrid& layout);
    /// True if the points have values for the predefined variable; false for any other name.
    [[nodiscard]] bool Has(std::string_view name) const;
    /// A set of predefined variables, one bit for each.
    using Names = std::uint32_t;
    /// Returns the variables that the points have values for.
    [[nodiscard]] Names Present() const;
    /// Returns the set of the variable with this name alone; empty if there is none.
    [[nodiscard]] static Names Named(std::string_view name);
};

/// The shading points of a patch, with values for all predefined variables. Shaders read them and
/// write their results into the grid.
///
/// A new grid is a square of side 1 that faces an eye at the origin looking along z: `u`, `v`, `s`
/// and `t` run from 0 to 1 (they are 0 if there is only one column or row), `P`, `Ps` and `I` span
/// the square at z = 1, and `N` and `Ng` face the eye. `dPdu` and `dPdv` are its sides, and `du`
/// and `dv` the steps from point to point. `Cs`, `Os`, `Ol` and `alpha` are 1, `ncomps` is 3, and
/// all other variables are 0.
class QxHostGrid {
public:
    /// Points are numbered along u first: point (column, row) has the number
    /// row * columns + column. Throws `QxHostError` for a layout without points or with more than
    /// `QxHostPoints::k_highestSize`, and if there is not enough memory.
    QxHostGrid(unsigned int columns, unsigned int rows);

    /// Changes the layout, and reuses the memory of the grid where it is large enough. A point
    /// keeps the values of its number, which may now be in another column and row; added points
    /// have P = (0, 0, 1), u = 0 and so on, regardless of their place. Uniform variables keep their
    /// values, also the steps `du` and `dv`. So the host must set all values that depend on the
    /// place of a point, and the steps. Throws like the constructor; the values are then unchanged.
    void Resize(unsigned int columns, unsigned int rows);

    /// Changes the layout and sets all values to those of a new grid, and reuses the memory of the
    /// grid where it is large enough. Throws like the constructor; the values are then unchanged.
    void Reset(unsigned int columns, unsigned int rows);

    /// Returns the numbers of columns and rows; `Size` returns the number of points.
    [[nodiscard]] const QxGrid& Layout() const { return m_layout; }
    [[nodiscard]] std::size_t Size() const { return m_layout.Size(); }

    /// Returns the values of a predefined variable, to read and write: one for each point, or a
    /// single one for `E`, `du`, `dv`, `ncomps` and `time`. `Value` must be the variable's type:
    /// float, QxVector3 or QxRGBColor. Valid until the grid is destroyed, or `Resize` or `Reset` is
    /// called with another layout. Throws `QxHostError` if there is no variable of that name and
    /// type.
    template <class Value>
    [[nodiscard]] std::span<Value> Values(std::string_view name);

    /// Sets a predefined variable to one value at all points, or to a value for each point. Throws
    /// `QxHostError` for an unknown name, another type or another number of values.
    void Set(std::string_view name, const QxHostValue& value);
    /// Returns a copy of all values of a predefined variable; vectors and normals are returned as
    /// points. Throws `QxHostError` for an unknown name.
    [[nodiscard]] QxHostValue Get(std::string_view name);

    /// Returns pointers to the values of all variables except `E`. They are valid as long as those
    /// that `Values` returns.
    [[nodiscard]] QxHiddenVariables Hidden();
    /// A grid can be passed wherever points are expected. The points have the pointers that
    /// `Hidden` returns.
    operator QxHostPoints();

private:
    template <class Value>
    using Store = std::vector<std::vector<Value>>;  // by variable of the type, as in QxHostGrid.cpp

    template <class Value>
    [[nodiscard]] std::vector<Value>* Find(std::string_view name);
    template <class Value>
    void Allocate();
    template <class Value>
    void ReserveAll(std::size_t points);
    template <class Value>
    void ResizeAll();
    template <class Value>
    void ResetAll();
    template <class Value>
    void SetPointers(QxHiddenVariables& hidden);
    void FillSquare();

    QxGrid m_layout;
    std::tuple<Store<float>, Store<QxVector3>, Store<QxRGBColor>> m_values;
};

#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <tuple>
#include <vector>

#include "QxDerivatives.h"
#include "host/QxHostValue.h"

/// Shading points whose values are somebody else's, who keeps them for as long as they are used.
struct QxHostPoints {
    QxGrid layout;
    QxHiddenVariables variables;  // those that no shader of the run uses may be missing
    QxVector3 E = {0, 0, 0};      // where the eye is

    static constexpr std::uint64_t k_highestSize = std::uint64_t{1} << 28;

    /// Throws `QxHostError` for a layout without points, or with more than `k_highestSize`.
    static void Check(const QxGrid& layout);
    /// A predefined variable of that name is there.
    [[nodiscard]] bool Has(std::string_view name) const;
    /// A set of predefined variables, a bit for each: those that are there, and one by its name;
    /// empty for a name that is none.
    using Names = std::uint32_t;
    [[nodiscard]] Names Present() const;
    [[nodiscard]] static Names Named(std::string_view name);
};

/// The shading points of a patch, with the values of all predefined variables.
///
/// A new grid is a square of side 1 before the eye, which looks along z: `u` and `v` run from 0 to
/// 1, `P` and `I` span it at z = 1, `N` faces the eye, surface color and opacity are white, `Ci`,
/// `Oi` and `Cl` are black. Shaders read the grid and write their results into it.
class QxHostGrid {
public:
    /// Points are numbered along u first. Throws `QxHostError` if there are none, or more than
    /// `QxHostPoints::k_highestSize`, or no memory for them.
    QxHostGrid(unsigned int columns, unsigned int rows);

    /// Gives the grid another layout, in the memory that it has as far as that goes, for a host
    /// that shades grids of several sizes and sets all places itself: points keep their values by
    /// number, and those that are added have no place of their own. Throws as the constructor does;
    /// without memory the grid stays as it is.
    void Resize(unsigned int columns, unsigned int rows);

    /// Makes a new grid of it, of that layout, in the memory that it has as far as that goes.
    /// Throws as the constructor does; without memory the grid stays as it is.
    void Reset(unsigned int columns, unsigned int rows);

    [[nodiscard]] const QxGrid& Layout() const { return m_layout; }
    [[nodiscard]] std::size_t Size() const { return m_layout.Size(); }

    /// The values of a predefined variable: one for each point; a single one of `E`, `du`, `dv`,
    /// `ncomps` and `time`. `Value` is float, QxVector3 or QxRGBColor, as the variable is. Throws
    /// `QxHostError` if there is none of that name and type.
    template <class Value>
    [[nodiscard]] std::span<Value> Values(std::string_view name);

    /// Sets a variable to one value everywhere, or to one for each point. Throws `QxHostError`.
    void Set(std::string_view name, const QxHostValue& value);
    /// All values of a variable. Throws `QxHostError`.
    [[nodiscard]] QxHostValue Get(std::string_view name);

    /// The variables as shaders reach them, until the grid ends or gets another layout.
    [[nodiscard]] QxHiddenVariables Hidden();
    /// Whatever takes points takes a grid.
    operator QxHostPoints();

private:
    template <class Value>
    using Store = std::vector<std::vector<Value>>;  // by row of the table of its type

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
    void Point(QxHiddenVariables& hidden);
    void FillSquare();

    QxGrid m_layout;
    std::tuple<Store<float>, Store<QxVector3>, Store<QxRGBColor>> m_values;
};

#pragma once

#include <span>
#include <string_view>

#include "QxDerivatives.h"
#include "machine/SqxCall.h"

/// One instruction that works on the whole grid at once, and the points that it is limited to.
class SqxGridCall {
public:
    /// `condition` is the number of a flag, or -1 for all points. `isDoubtful` is as for `SqxCall`.
    SqxGridCall(SqxMachine& machine, SqxStore& store, std::span<const int> operands, int condition,
                const QxGrid& grid, bool isDoubtful = false)
        : m_machine(machine),
          m_store(store),
          m_operands(operands),
          m_condition(condition),
          m_isDoubtful(isDoubtful),
          m_grid(grid)
    {
    }

    [[nodiscard]] SqxCall At(std::size_t point) const
    {
        return {m_machine, m_store, m_operands, point, m_isDoubtful};
    }
    [[nodiscard]] bool IsOn(std::size_t point) const
    {
        return m_condition < 0 ||
               SqxCall(m_machine, m_store, std::span(&m_condition, 1), point).Get<bool>(0);
    }
    /// Returns a test of the points that the instruction handles.
    [[nodiscard]] auto Where() const
    {
        return [this](std::size_t point) { return IsOn(point); };
    }
    [[nodiscard]] const QxGrid& Grid() const { return m_grid; }
    [[nodiscard]] std::size_t Points() const { return m_grid.Size(); }

    /// Returns an operand at all points, including those that the instruction leaves out.
    template <class Value>
    [[nodiscard]] std::vector<Value> Gather(std::size_t place) const
    {
        std::vector<Value> values(Points());
        for (std::size_t i = 0; i < Points(); ++i)
            values[i] = At(i).template Get<Value>(place);
        return values;
    }
    /// Writes an operand at the points that the instruction handles. `values` has one value for
    /// each point of the grid.
    template <class Value>
    void Scatter(std::size_t place, const std::vector<Value>& values) const
    {
        for (std::size_t i = 0; i < Points(); ++i)
            if (IsOn(i))
                At(i).Set(place, values[i]);
    }

private:
    SqxMachine& m_machine;
    SqxStore& m_store;
    std::span<const int> m_operands;
    int m_condition;
    bool m_isDoubtful;
    QxGrid m_grid;
};

using SqxGridOperation = void (*)(const SqxGridCall&);

/// Returns the operation of a primitive that needs all points at once; null for others.
[[nodiscard]] SqxGridOperation SqxFindGridOperation(SqxPrimitive primitive);

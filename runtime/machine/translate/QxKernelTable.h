#pragma once

#include <array>
#include <vector>

#include "kernels/QxKernel.h"

/// The rows of all kernels, by primitive and by the numbers of instructions: the kernels compiled
/// for one instruction set, and the kernels that all sets share.
///
/// There are up to two tables per process, which `For` builds; they never change, so threads may
/// share them.
class QxKernelTable {
public:
    /// Returns the table of the baseline or, if `avx2`, of the kernels compiled for AVX2, which may
    /// run only if `QxMachineProgram::HasAvx2`. The first call builds the baseline, and the first
    /// one with `avx2` the other table.
    [[nodiscard]] static const QxKernelTable& For(bool avx2);
    /// Returns the row of a primitive; null if there is none. The row lives as long as the process.
    [[nodiscard]] const QxKernelRow* Find(SqxPrimitive primitive) const
    {
        return m_byPrimitive[static_cast<std::size_t>(primitive)];
    }
    /// Returns the row for an instruction number from 0 to `SqxHighestNumber`; null if there is
    /// none, as for jumps and brackets, which need no kernel.
    [[nodiscard]] const QxKernelRow* OfNumber(int number) const { return m_byNumber[number]; }

private:
    explicit QxKernelTable(bool avx2);
    /// Adds a row. Throws `std::logic_error` if its primitive already has one: with two, the order
    /// of the lists would decide which one runs.
    void Enter(const QxKernelRow& row);

    std::array<const QxKernelRow*, k_sqxPrimitiveCount> m_byPrimitive{};
    std::vector<const QxKernelRow*> m_byNumber;
};

#pragma once

#include <map>
#include <string_view>
#include <vector>

#include "kernels/QxKernel.h"

/// The kernels of all instructions, by name and by number: the kernels compiled for one instruction
/// set, and the kernels that all sets share.
///
/// There are two tables per process, each built on first use; they never change, so threads may
/// share them.
class QxKernelTable {
public:
    /// `avx2` selects the kernels compiled for AVX2, which may run only if
    /// `QxMachineProgram::HasAvx2`.
    [[nodiscard]] static const QxKernelTable& For(bool avx2);
    /// Finds a row by the name of a primitive, or "machine:..." for kernels that only the
    /// translation uses. Null if there is none. The row lives as long as the process.
    [[nodiscard]] const QxKernelRow* Find(std::string_view primitive) const;
    /// Finds the row for an instruction number of a file, which must have a layout. Null also for
    /// marks, such as jumps and brackets, which need no kernel.
    [[nodiscard]] const QxKernelRow* OfNumber(int number) const { return m_byNumber[number]; }

private:
    explicit QxKernelTable(bool avx2);

    std::map<std::string_view, const QxKernelRow*> m_byName;
    std::vector<const QxKernelRow*> m_byNumber;
};

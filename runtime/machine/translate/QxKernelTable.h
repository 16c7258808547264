#pragma once

#include <map>
#include <string_view>
#include <vector>

#include "kernels/QxKernel.h"

/// The kernels of all instructions, by name and by number: those that differ by instruction set, of
/// one set, and those that all sets share.
///
/// There are two tables for the whole process, each made when it is first wanted; they never
/// change, so threads may share them.
class QxKernelTable {
public:
    /// `avx2`: those compiled for AVX2, which must not run unless `QxMachineProgram::HasAvx2`.
    [[nodiscard]] static const QxKernelTable& For(bool avx2);
    /// By the name of a primitive, or "machine:..." for what only the translation writes. Null if
    /// there is none. The row lasts as long as the process.
    [[nodiscard]] const QxKernelRow* Find(std::string_view primitive) const;
    /// The same for the number of an instruction of a file, which is one that has a layout. Null
    /// also for marks, such as jumps and brackets, which need no kernel.
    [[nodiscard]] const QxKernelRow* OfNumber(int number) const { return m_byNumber[number]; }

private:
    explicit QxKernelTable(bool avx2);

    std::map<std::string_view, const QxKernelRow*> m_byName;
    std::vector<const QxKernelRow*> m_byNumber;
};

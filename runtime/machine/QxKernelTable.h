#pragma once

#include <map>
#include <string_view>
#include <vector>

#include "kernels/QxKernel.h"

/// The kernels of all instructions, by name.
class QxKernelTable {
public:
    /// `avx2`: the processor has it.
    [[nodiscard]] static const QxKernelTable& For(bool avx2);
    /// Null if there is none.
    [[nodiscard]] const QxKernelRow* Find(std::string_view primitive) const;
    /// The same for the number of an instruction of a file.
    [[nodiscard]] const QxKernelRow* OfNumber(int number) const { return m_byNumber[number]; }

private:
    explicit QxKernelTable(bool avx2);

    std::map<std::string_view, const QxKernelRow*> m_byName;
    std::vector<const QxKernelRow*> m_byNumber;
};

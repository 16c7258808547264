#pragma once

// Addresses and rows for operands of any type, used by the kernels for lists, references and
// shadeops. These are compiled only once, since no instruction set would make them faster.

#define QX_KERNEL_SET qxcommon
#define QX_KERNEL_CODE
#include "kernels/QxKernelForms.h"

namespace qxcommon {

using Vector = QxVector3;
using Text = const char*;

/// Returns the address of value number `place` of an operand; its first value has number 0.
[[nodiscard]] inline char* Address(const QxMachineState& state, const QxOperand& operand,
                                   std::size_t place)
{
    return static_cast<char*>(state.values[operand.variable]) + place * QxBytesOf(operand.stored);
}

/// Returns a row without requirements on the number and the storage of operands.
constexpr QxKernelRow Anything(SqxPrimitive primitive, QxKernel kernel)
{
    return ListRow<void>(primitive, kernel);
}

}  // namespace qxcommon

#pragma once

// Common parts of the kernels that would not be faster with any instruction set: addresses of
// operands of any kind, and rows of instructions that end in a list of them.

#define QX_KERNEL_SET qxcommon
#define QX_KERNEL_CODE
#include "kernels/QxKernelForms.h"

namespace qxcommon {

using Vector = QxVector3;
using Text = const char*;

/// Returns the address of the value of an operand at `place`, counted in values from its first one.
[[nodiscard]] inline char* Address(const QxMachineState& state, const QxOperand& operand,
                                   std::size_t place)
{
    return static_cast<char*>(state.values[operand.variable]) + place * QxBytesOf(operand.stored);
}

/// Returns the row of an instruction whose kernel examines the operands itself.
constexpr QxKernelRow Anything(SqxPrimitive primitive, QxKernel kernel)
{
    return ListRow<void>(primitive, kernel);
}

}  // namespace qxcommon

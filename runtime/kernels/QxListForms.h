#pragma once

// What the kernels have in common that no instruction set makes faster: operands of any kind by
// address, and rows of instructions that end in a list of them.

#define QX_KERNEL_SET qxcommon
#define QX_KERNEL_CODE
#include "kernels/QxKernelForms.h"

namespace qxcommon {

using Vector = QxVector3;
using Text = const char*;

/// What one value of this kind takes in memory.
[[nodiscard]] inline std::size_t BytesOf(QxStored stored)
{
    switch (stored) {
    case QxStored::Any:
    case QxStored::Number:
    case QxStored::Flag:
        break;
    case QxStored::Triple:
        return sizeof(Vector);
    case QxStored::Matrix:
        return sizeof(QxMatrix44);
    case QxStored::Text:
        return sizeof(Text);
    }
    return sizeof(float);
}

/// The address of an operand's value at `place`, counted in values from its first one.
[[nodiscard]] inline char* Address(const QxMachineState& state, const QxOperand& operand,
                                   std::size_t place)
{
    return static_cast<char*>(state.values[operand.variable]) + place * BytesOf(operand.stored);
}

/// The row of an instruction that looks at its operands itself.
constexpr QxKernelRow Anything(SqxPrimitive primitive, QxKernel kernel)
{
    return ListRow<void>(primitive, kernel);
}

}  // namespace qxcommon

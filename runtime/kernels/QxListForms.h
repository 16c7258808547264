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

/// Where the value of an operand at `place` stands, counted in values from its first one.
[[nodiscard]] inline char* Address(const QxMachineState& state, const QxOperand& operand,
                                   std::size_t place)
{
    return static_cast<char*>(state.values[operand.variable]) + place * BytesOf(operand.stored);
}

inline constexpr QxStored k_any = QxStored::Any;

/// The row of an instruction whose operands are of `Types`, and of `Rest` behind them: of any kind
/// and number if that is void.
template <class Rest, class... Types>
constexpr QxKernelRow ListRow(std::string_view primitive, QxKernel kernel)
{
    QxKernelRow row;
    row.primitive = primitive;
    row.all = row.masked = kernel;
    row.operands = k_stored<Types...>;
    row.operandCount = sizeof...(Types);
    row.rest = std::is_void_v<Rest> ? &k_any : k_stored<Rest>;
    return row;
}

/// The row of an instruction that looks at its operands itself.
constexpr QxKernelRow Anything(std::string_view primitive, QxKernel kernel)
{
    return ListRow<void>(primitive, kernel);
}

}  // namespace qxcommon

// References to elements of arrays, checks of indices, and copies of whole arrays. If all points
// refer to the same element, the reference has the address of the values of that element. Otherwise
// it contains an address for each point. An element that an instruction reads is copied to a
// variable before it, and an element that it writes is copied from a variable after it:
//
//     e = &a[i] at each point;  ADD e e 1     becomes     bind each;  load t;  ADD u t 1;  store u
//
// An array is stored element by element; if it is varying, an element has the values of all points.
// The array owns its texts, and these variables only borrow them. But an instruction that replaces
// a text frees the old text; so before it, a load moves the text to the variable, and the element
// is empty until the store.
//
// Tested with whole shaders by tests/host/AgreementTest.cpp.

#include "QxBuiltInNames.h"

#include "kernels/QxListForms.h"

namespace qxcommon {
namespace {

/// Returns the number of the element with this index, or of the nearest one if the index is outside
/// the array; 0 for NaN.
std::size_t ElementAt(float index, std::uint32_t size)
{
    if (!(index >= 1))
        return 0;
    return index < static_cast<float>(size) ? static_cast<std::size_t>(index) : size - 1;
}

/// Binds the reference to one element for all points.
void BindAll(QxMachineState& state, const QxCode& code, const QxPoints&)
{
    const QxOperand& array = code.operands[1];
    const std::size_t element =
        ElementAt(*static_cast<float*>(state.values[code.operands[2].variable]), array.size);
    const std::size_t points = array.step == 0 ? 1 : state.grid.Size();
    state.values[code.operands[0].variable] = Address(state, array, element * points);
}

/// Binds the reference to a separate element for each point.
void BindEach(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto reference = Operand<void*>(state, code, 0);
    const QxOperand& array = code.operands[1];
    const auto index = Operand<float>(state, code, 2);
    const std::size_t count = array.step == 0 ? 1 : state.grid.Size();
    for (unsigned int i = points.first; i < points.End(); ++i)
        if (points(i))
            QxAt(reference, i) = Address(state, array,
                                         ElementAt(QxAt(index, i), array.size) * count +
                                             std::size_t{i} * array.step);
}

/// Copies between a variable and the element that each point refers to.
template <bool load>
void Move(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto reference = Operand<void*>(state, code, load ? 1 : 0);
    const QxOperand& variable = code.operands[load ? 0 : 1];
    const std::size_t bytes = QxBytesOf(variable.stored);
    for (unsigned int i = points.first; i < points.End(); ++i) {
        if (!points(i))
            continue;
        void* const value = Address(state, variable, std::size_t{i} * variable.step);
        void* const element = QxAt(reference, i);
        std::memcpy(load ? value : element, load ? element : value, bytes);
        // Moves a text that will be replaced.
        if (load && code.number != 0 && variable.stored == QxStored::Text)
            *static_cast<Text*>(element) = nullptr;
    }
}

void CheckIndex(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto index = Operand<float>(state, code, 1);
    const float size = static_cast<float>(code.operands[0].size);
    for (unsigned int i = points.first; i < points.End(); ++i) {
        const float at = QxAt(index, i);
        if ((at > -1 && at < size) || !points(i))
            continue;
        const Text array = *static_cast<const Text*>(state.values[code.operands[0].variable]);
        const Text file = *static_cast<const Text*>(state.values[code.operands[2].variable]);
        state.Emit(i, false, QxBadArrayIndexText(file, code.number, array, at).Characters());
    }
}

/// Copies whole arrays of the same length.
void CopyArray(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const QxOperand& to = code.operands[0];
    const QxOperand& from = code.operands[1];
    const std::size_t toCount = to.step == 0 ? 1 : state.grid.Size();
    const std::size_t fromCount = from.step == 0 ? 1 : state.grid.Size();
    for (std::size_t element = 0; element < to.size; ++element)
        for (unsigned int i = points.first; i < points.End(); ++i) {
            if (!points(i))
                continue;
            void* const target = Address(state, to, element * toCount + std::size_t{i} * to.step);
            void* const source =
                Address(state, from, element * fromCount + std::size_t{i} * from.step);
            if (to.stored == QxStored::Text)
                QxAssignString(*static_cast<Text*>(target), *static_cast<Text*>(source));
            else
                std::memmove(target, source, QxBytesOf(to.stored));
        }
}

constexpr QxKernelRow k_rows[] = {
    Anything(SqxPrimitive::MACHINE_BIND_ALL, BindAll),
    Anything(SqxPrimitive::MACHINE_BIND_EACH, BindEach),
    Anything(SqxPrimitive::MACHINE_LOAD, Move<true>),
    Anything(SqxPrimitive::MACHINE_STORE, Move<false>),
    Row<Text, float, Text>(SqxPrimitive::CHECK_VALID_ARRAY_INDEX, CheckIndex),
    Anything(SqxPrimitive::CONVERT_ARRAY_DSO_TO, CopyArray),
    Anything(SqxPrimitive::CONVERT_ARRAY_DSO_FROM, CopyArray),
};

}  // namespace

QxKernelRows ReferenceKernels()
{
    return k_rows;
}

}  // namespace qxcommon

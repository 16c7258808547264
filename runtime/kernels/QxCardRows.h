#pragma once

#include "kernels/QxBatches.h"
#include "sqx/SqxCardReader.h"

// Generates rows of the table of kernels from cards, which state the types of the operands and the
// function that computes the result. The kernel kind of a card selects the form of the row: `Cheap`
// or `Each` in QxKernelForms.h, or `Elementary` below.
//
// Tested with whole shaders by tests/host/AgreementTest.cpp.

namespace QX_KERNEL_SET {

// Elementary functions are too expensive to be computed for inactive points. Without a mask, a
// vectorized loop reads the operands in place; with a mask, it reads batches, see QxBatches.h.

/// Computes a function of numbers, whose result is a number, for all points of a batch.
template <class Function, std::size_t... k>
inline void ComputeNumbers(Numbers& results, const Numbers* operands, unsigned int count,
                           std::index_sequence<k...>)
{
    QX_LOOP_OF_OPERANDS_APART
    for (unsigned int j = 0; j < count; ++j) {
        float value = 0;
        Function()(value, operands[k].at[j]...);
        results.at[j] = value;
    }
}

template <class Function, class... Types>
struct NumberLoops {
    static void Run(Numbers* results, const Numbers* operands, unsigned int count)
    {
        ComputeNumbers<Function>(*results, operands, count, std::index_sequence_for<Types...>());
    }
};

template <class... Types, class Function>
constexpr QxKernelRow Elementary(SqxPrimitive primitive, Function function)
{
    QxKernelRow row = Each<float&, Types...>(primitive, function);
    row.all = AllPoints<Function, float, Types...>;
    row.masked = PickedPoints<NumberLoops<Function, Types...>, Function, float, Types...>;
    return row;
}

// Generation from cards

/// The C++ type of a type of cards; void for a type that only hand-written kernels support.
template <SqxCardType type>
struct OperandType {
    using Type = void;
};
template <>
struct OperandType<SqxCardType::Float> {
    using Type = float;
};
template <>
struct OperandType<SqxCardType::String> {
    using Type = const char*;
};
template <>
struct OperandType<SqxCardType::Color> {
    using Type = QxRGBColor;
};
template <>
struct OperandType<SqxCardType::Matrix> {
    using Type = QxMatrix44;
};
template <>
struct OperandType<SqxCardType::Bool> {
    using Type = QxStopAndBool;
};
template <SqxCardType type>
requires(type == SqxCardType::Point || type == SqxCardType::Vector || type == SqxCardType::Normal ||
         type == SqxCardType::AnyPoint || type == SqxCardType::AnyVector) struct OperandType<type> {
    using Type = QxVector3;
};

/// The C++ type of a parameter; a reference if the parameter is written.
template <class Card, std::size_t i>
struct ParameterType {
    static constexpr SqxParameter parameter = Card::card.Carried()[i];
    static_assert(parameter.count == 1 && !parameter.isArray && !parameter.isRepeated,
                  "a card with a list of operands needs @custom");
    using Value = typename OperandType<parameter.type>::Type;
    using Type = std::conditional_t<parameter.isOutput || parameter.isAssigned, Value&, Value>;
};

/// Returns a row in the form of this kernel kind. `First` is the type of the first operand; for a
/// result it is a reference.
template <SqxKernelKind kind, class First, class... Types, class Function>
constexpr QxKernelRow RowOfKind(SqxPrimitive primitive, Function function)
{
    if constexpr (kind == SqxKernelKind::Cheap)
        return Cheap<Plain<First>, Types...>(primitive, function);
    else if constexpr (kind == SqxKernelKind::Vectors)
        return Elementary<Types...>(primitive, function);
    else
        return Each<First, Types...>(primitive, function);
}

/// Returns the row for a card. `Card::card` is a card with a function or an expression, which
/// `Card::Call` computes.
template <class Card, std::size_t... i>
constexpr QxKernelRow RowOfCard(std::index_sequence<i...>)
{
    constexpr const SqxCard& card = Card::card;
    if constexpr (card.result == SqxCardType::Void) {
        return RowOfKind<card.kernel, typename ParameterType<Card, i>::Type...>(
            card.primitive, [](auto&&... arguments) { Card::Call(arguments...); });
    } else {
        using Result = typename OperandType<card.result>::Type;
        return RowOfKind<card.kernel, Result&, typename ParameterType<Card, i>::Type...>(
            card.primitive,
            [](auto& r, const auto&... arguments) { r = Card::Call(arguments...); });
    }
}

/// Returns the row for a card, or an empty row if the card has no byte-code number or needs a
/// hand-written kernel.
template <class Card>
constexpr QxKernelRow RowOfCard()
{
    if constexpr (Card::card.kernel == SqxKernelKind::Custom || !Card::card.HasNumber())
        return {};
    else
        return RowOfCard<Card>(std::make_index_sequence<Card::card.Carried().size()>());
}

}  // namespace QX_KERNEL_SET

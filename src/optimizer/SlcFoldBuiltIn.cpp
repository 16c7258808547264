// Folds calls by calling the functions of the run time, which the cards name, so that a folded call
// has the same bits as one at run time.
//
// Tested by tests/runtime/FoldedCallsTest.cpp, tests/optimizer/OptimizerTest.cpp,
// TEST(SlcConvertConstOp, ...), and by all levels against each other in tests/random.

#include "optimizer/SlcFoldBuiltIn.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "QxCalls.h"
#include "sqx/SqxCardReader.h"

namespace {

using Arguments = std::span<const float>;

// For each function of arguments alone: its card, and a call of it with numbers.
#define SQX_CARD(primitive, text)
#define SQX_SCENE_FUNCTION(primitive, text, ...)
#define SQX_FUNCTION(primitive, text, ...)                                                         \
    struct Card_##primitive {                                                                      \
        static constexpr SqxCard card = SqxReadCard(SqxPrimitive::primitive, text, #__VA_ARGS__);  \
        template <class... Numbers>                                                                \
        static float Call(Numbers... numbers)                                                      \
        {                                                                                          \
            return __VA_ARGS__(numbers...);                                                        \
        }                                                                                          \
    };
#include "sqx/SqxCards.def"

/// Returns NaN outside -1..1, since no angle has this sine. Then the call is not folded, whereas
/// the function of the run time clamps the argument.
template <>
float Card_CALL_PRIM_ASIN::Call(float x)
{
    return qxmath::Asin(x);
}

struct Row {
    SqxPrimitive primitive{};
    std::size_t arguments = 0;
    float (*value)(Arguments) = nullptr;
};

/// True for a function of floats to a float that the compiler may evaluate.
constexpr bool IsFolded(const SqxCard& card)
{
    return card.isFoldable && card.result == SqxCardType::Float &&
           std::ranges::all_of(card.Formals(), [](const SqxParameter& parameter) {
               return parameter.type == SqxCardType::Float;
           });
}

template <class Card, std::size_t... i>
constexpr Row RowOf(std::index_sequence<i...>)
{
    return {Card::card.primitive, sizeof...(i), [](Arguments a) { return Card::Call(a[i]...); }};
}

template <class Card>
constexpr Row RowOf()
{
    if constexpr (IsFolded(Card::card))
        return RowOf<Card>(std::make_index_sequence<Card::card.Formals().size()>());
    else
        return {};
}

constexpr Row k_rows[] = {
#define SQX_CARD(primitive, text)
#define SQX_SCENE_FUNCTION(primitive, text, ...)
#define SQX_FUNCTION(primitive, text, ...) RowOf<Card_##primitive>(),
#include "sqx/SqxCards.def"
};

}  // namespace

std::optional<float> SlcFoldBuiltIn(SqxPrimitive primitive, std::span<const float> arguments)
{
    const auto row = std::find_if(std::begin(k_rows), std::end(k_rows), [&](const Row& r) {
        return r.value && r.primitive == primitive;
    });
    if (row == std::end(k_rows) || arguments.size() != row->arguments)
        return std::nullopt;
    return row->value(arguments);
}

// Rows of the table of kernels for operators whose card contains an expression, and for built-ins
// whose card names a function of the shading headers that needs only their arguments. They are
// generated from the cards, see QxCardRows.h. Cards that need a hand-written kernel, or have no
// byte-code number, have no row here.

#include <algorithm>
#include <array>
#include <iterator>

#include "QxCalls.h"
#include "kernels/QxCardRows.h"

namespace QX_KERNEL_SET {
namespace {

#define SQX_CARD(primitive, text)
#define SQX_SCENE_FUNCTION(primitive, text, ...)
#define SQX_FUNCTION(primitive, text, ...)                                                         \
    struct Card_##primitive {                                                                      \
        static constexpr SqxCard card = SqxReadCard(SqxPrimitive::primitive, text, #__VA_ARGS__);  \
        template <class... Arguments>                                                              \
        static auto Call(Arguments&... arguments)                                                  \
        {                                                                                          \
            return __VA_ARGS__(arguments...);                                                      \
        }                                                                                          \
    };
#define SQX_OPERATOR(primitive, text, operands, ...)                                               \
    struct Card_##primitive {                                                                      \
        static constexpr SqxCard card =                                                            \
            SqxReadCard(SqxPrimitive::primitive, text, {}, #__VA_ARGS__);                          \
        static auto Call operands { return __VA_ARGS__; }                                          \
    };
#define SQX_UNARY(primitive, text, ...)                                                            \
    SQX_OPERATOR(primitive, text, (const auto& source), __VA_ARGS__)
#define SQX_BINARY(primitive, text, ...)                                                           \
    SQX_OPERATOR(primitive, text, (const auto& left, const auto& right), __VA_ARGS__)
#include "sqx/SqxCards.def"

constexpr QxKernelRow k_all[] = {
#define SQX_CARD(primitive, text)
#define SQX_SCENE_FUNCTION(primitive, text, ...)
#define SQX_FUNCTION(primitive, text, ...) RowOfCard<Card_##primitive>(),
#define SQX_UNARY(primitive, text, ...) RowOfCard<Card_##primitive>(),
#define SQX_BINARY(primitive, text, ...) RowOfCard<Card_##primitive>(),
#include "sqx/SqxCards.def"
};

constexpr bool HasKernel(const QxKernelRow& row)
{
    return row.operandCount > 0;
}

constexpr auto k_rows = [] {
    std::array<QxKernelRow, std::count_if(std::begin(k_all), std::end(k_all), HasKernel)> rows;
    std::copy_if(std::begin(k_all), std::end(k_all), rows.begin(), HasKernel);
    return rows;
}();

}  // namespace

QxKernelRows CardKernels()
{
    return k_rows;
}

}  // namespace QX_KERNEL_SET

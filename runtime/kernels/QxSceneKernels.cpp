// Functions that query the scene separately for each point, including random numbers. Except for
// random numbers, the rows call macros of generated C++, in which `shaderSupport` is the scene.
// QxQuestionKernels.cpp contains the queries for many points at once.
//
// Tested with whole shaders by tests/host/AgreementTest.cpp.

#include <type_traits>

#include "QxBuiltInNames.h"
#include "QxSceneNames.h"

#define QX_KERNEL_SET qxcommon
#define QX_KERNEL_CODE
#include "kernels/QxKernelForms.h"

namespace qxcommon {
namespace {

using Vector = QxVector3;
using Color = QxRGBColor;

#define ASK(NAME, ...)                                                                             \
    Each<__VA_ARGS__>(SqxPrimitive::NAME,                                                          \
                      InRun([](QxMachineState& state, auto& r, auto&&... arguments) {              \
                          QxShaderSupport* const shaderSupport = state.support;                    \
                          NAME(r, arguments...);                                                   \
                      }))
#define ASK_PLAIN(NAME)                                                                            \
    Each<float&>(SqxPrimitive::NAME, InRun([](QxMachineState& state, float& r) {                   \
                     QxShaderSupport* const shaderSupport = state.support;                         \
                     NAME(r);                                                                      \
                 }))
void Assign(float& result, float number, int)
{
    result = number;
}

template <class Triple>
void Assign(Triple& result, float number, int component)
{
    result[component] = number;
}

/// A uniform result is drawn once, for all points.
template <class Result>
void Draw(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    constexpr int count = std::is_same_v<Result, float> ? 1 : 3;
    const auto result = Operand<Result>(state, code, 0);
    const auto drawAt = [&](unsigned int i, unsigned int point) {
        for (int k = 0; k < count; ++k)
            Assign(QxAt(result, i), state.support->RandomNumber(point, state.draws.Next(point)), k);
    };
    if (result.step == 0)
        return drawAt(points.first, QxDraws::k_allPoints);
    for (unsigned int i = points.first; i < points.End(); ++i)
        if (points(i))
            drawAt(i, i);
}

// clang-format off
constexpr QxKernelRow k_rows[] = {
    ASK_PLAIN(CALL_PRIM_ISSHADOWRAY),
    ASK_PLAIN(CALL_PRIM_ISINDIRECTRAY),
    ASK_PLAIN(CALL_PRIM_RAYLEVEL),
    ASK(CALL_PRIM_DEPTH, float&, Vector),
    Row<float>(SqxPrimitive::CALL_PRIM_RANDOM_FLOAT, Draw<float>),
    Row<Color>(SqxPrimitive::CALL_PRIM_RANDOM_COLOR, Draw<Color>),
    Row<Vector>(SqxPrimitive::CALL_PRIM_RANDOM_POINT, Draw<Vector>),
};
// clang-format on

}  // namespace

QxKernelRows SceneKernels()
{
    return k_rows;
}

}  // namespace qxcommon

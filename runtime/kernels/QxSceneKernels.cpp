// What each point asks the scene by itself, random numbers among it: the macros are those of
// generated C++, whose `shaderSupport` is the run's. QxQuestionKernels.cpp has what is asked for
// many points at once.
//
// Tested with whole shaders by tests/host/AgreementTest.cpp.

#include "QxBuiltInNames.h"
#include "QxSceneNames.h"

#define QX_KERNEL_SET qxcommon
#define QX_KERNEL_CODE
#include "kernels/QxKernelForms.h"

namespace qxcommon {
namespace {

using Vector = QxVector3;
using Color = QxRGBColor;
using Text = const char*;

#define ASK(NAME, ...)                                                                             \
    Each<__VA_ARGS__>(#NAME, InRun([](QxMachineState& state, auto& r, auto&&... arguments) {       \
                          QxShaderSupport* const shaderSupport = state.support;                    \
                          NAME(r, arguments...);                                                   \
                      }))
#define ASK_PLAIN(NAME)                                                                            \
    Each<float&>(#NAME, InRun([](QxMachineState& state, float& r) {                                \
                     QxShaderSupport* const shaderSupport = state.support;                         \
                     NAME(r);                                                                      \
                 }))
#define FIVE float, float, float, float, float

// clang-format off
constexpr QxKernelRow k_rows[] = {
    ASK(CALL_PRIM_RAYHITTEST, float&, Vector, Vector),
    ASK(CALL_PRIM_INDIRECTDIFFUSE, Color&, Vector, Vector, FIVE, Text, Vector, Vector&, float&),
    ASK_PLAIN(CALL_PRIM_ISSHADOWRAY),
    ASK_PLAIN(CALL_PRIM_ISINDIRECTRAY),
    ASK_PLAIN(CALL_PRIM_RAYLEVEL),
    ASK(CALL_PRIM_DEPTH, float&, Vector),
    ASK(CALL_PRIM_RANDOM_FLOAT, float&),
    ASK(CALL_PRIM_RANDOM_COLOR, Color&),
    ASK(CALL_PRIM_RANDOM_POINT, Vector&),
};
// clang-format on

}  // namespace

QxKernelRows SceneKernels()
{
    return k_rows;
}

}  // namespace qxcommon

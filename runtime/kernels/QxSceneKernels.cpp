// What asks the scene: textures, environments, shadows, rays and random numbers. Each point asks by
// itself, since what the host does costs more than any loop here, and the macros are those of
// generated C++, whose `shaderSupport` is the run's.
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
// name, channel, four corners, fidelity, samples, blurs, widths, filter
#define FIVE float, float, float, float, float
#define TEXTURE Text, FIVE, FIVE, FIVE, Text, float, float
#define CORNERS Text, float, Vector, Vector, Vector, Vector, FIVE, float, Text
#define SOURCES float, Vector, Vector, Vector, Vector
#define TEXTURE_ROWS(NAME, ...)                                                                    \
    ASK(NAME##_1D, float&, __VA_ARGS__), ASK(NAME##_3D, Color&, __VA_ARGS__)
#define SHADOW_ROWS(NAME, ...)                                                                     \
    TEXTURE_ROWS(NAME, __VA_ARGS__), ASK(NAME##_1D_LIGHT, float&, __VA_ARGS__),                    \
        ASK(NAME##_3D_LIGHT, Color&, __VA_ARGS__)

// clang-format off
constexpr QxKernelRow k_rows[] = {
    TEXTURE_ROWS(CALL_TEXTURE, TEXTURE),
    TEXTURE_ROWS(CALL_ENVIRONMENT, CORNERS, float, float),
    SHADOW_ROWS(CALL_SHADOW, CORNERS, float),
    SHADOW_ROWS(CALL_AREASHADOW, CORNERS, float, SOURCES),
    ASK(CALL_PRIM_RAYHITTEST, float&, Vector, Vector),
    ASK(CALL_PRIM_TRANSMISSION, Color&, Vector, Vector),
    ASK(CALL_PRIM_TRACE, Color&, Vector, Vector, float&),
    ASK(CALL_PRIM_OCCLUSION, float&, Vector, Vector, FIVE, Vector, Vector&),
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

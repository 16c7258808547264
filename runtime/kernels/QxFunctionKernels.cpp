// Functions of numbers, triples and matrices, under the names by which generated C++ calls them
// too.

#include "QxBuiltInNames.h"
#include "kernels/QxKernelForms.h"

namespace QX_KERNEL_SET {
namespace {

using Vector = QxVector3;
using Color = QxRGBColor;
using Matrix = QxMatrix44;
using Flag = QxStopAndBool;
using Text = const char*;

// A row of the table: name, type of the result, types of the arguments. A function that is cheap
// may be computed for points that did not ask for it.
#define CHEAP1(NAME, R, A) Cheap<R, A>(#NAME, [](R& r, const A& a) { NAME(r, a); })
#define CHEAP2(NAME, R, A, B)                                                                      \
    Cheap<R, A, B>(#NAME, [](R& r, const A& a, const B& b) { NAME(r, a, b); })
#define CHEAP3(NAME, R, A, B, C)                                                                   \
    Cheap<R, A, B, C>(#NAME, [](R& r, const A& a, const B& b, const C& c) { NAME(r, a, b, c); })
#define EACH1(NAME, R, A) Each<R, A>(#NAME, [](R r, const A& a) { NAME(r, a); })
#define EACH2(NAME, R, A, B)                                                                       \
    Each<R, A, B>(#NAME, [](R r, const A& a, const B& b) { NAME(r, a, b); })
#define EACH3(NAME, R, A, B, C)                                                                    \
    Each<R, A, B, C>(#NAME, [](R r, const A& a, const B& b, const C& c) { NAME(r, a, b, c); })
#define EACH4(NAME, R, A, B, C, D)                                                                 \
    Each<R, A, B, C, D>(                                                                           \
        #NAME, [](R r, const A& a, const B& b, const C& c, const D& d) { NAME(r, a, b, c, d); })
// For names with any number of arguments.
#define EACH(NAME, ...)                                                                            \
    Each<__VA_ARGS__>(#NAME, [](auto& r, const auto&... arguments) { NAME(r, arguments...); })
// The same for those that look spaces up.
#define EACH_IN_SPACE(NAME, ...)                                                                   \
    Each<__VA_ARGS__>(#NAME, InRun([](QxMachineState& state, auto& r, const auto&... arguments) {  \
                          const QxShadingContext& i_context = *state.context;                      \
                          NAME(r, arguments...);                                                   \
                      }))

// Powers. An exponent that is 1 for all points, as of a gamma that a user left alone, spares the
// slowest of the functions.

struct Power {
    void operator()(float& r, const float& x, const float& y) const { CALL_PRIM_POW(r, x, y); }
};

/// The power whose exponent is 1.
struct FirstPower {
    void operator()(float& r, const float& x, const float&) const { r = x == 0 ? 0 : x; }
};

template <Where where>
void Powers(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto exponent = Operand<float>(state, code, 2);
    if (exponent.step != 0 || *exponent.values != 1)
        Any<Power, where, float&, float, float>(state, code, points);
    else if (code.operands[0].step == 0 || code.operands[1].step == 0)
        Any<FirstPower, where, float&, float, float>(state, code, points);
    else
        Shaped<FirstPower, 1, where != Where::All, float, float, float>::Run(state, code, points);
}

constexpr QxKernelRow PowRow()
{
    QxKernelRow row = Each<float&, float, float>("CALL_PRIM_POW", Power());
    row.all = Powers<Where::All>;
    row.masked = Powers<Where::Masked>;
    return row;
}

// Between a numbered space and the current one.

template <template <class> class Call, class As>
QX_KERNEL_CODE void Transform(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const QxFrame3D frame = state.context->Space(code.number);
    const Call<As> call{frame};
    const auto result = Operand<Vector>(state, code, 0);
    const auto source = Operand<Vector>(state, code, 1);
    for (unsigned int i = points.first; i < points.End(); ++i)
        if (points(i))
            QxAt(result, i) = call(QxAt(source, i));
}

template <template <class> class Call, class As>
constexpr QxKernelRow TransformRow(std::string_view primitive)
{
    return RowPerPoint<Vector, Vector>(primitive, Transform<Call, As>);
}

void ConcatSpace(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto result = Operand<Matrix>(state, code, 0);
    const auto source = Operand<Matrix>(state, code, 1);
    for (unsigned int i = points.first; i < points.End(); ++i)
        if (points(i))
            QxAt(result, i) = QxAt(source, i) * state.context->Space(code.number).toCurrent;
}

// clang-format off
constexpr QxKernelRow k_rows[] = {
    CHEAP1(CALL_PRIM_ABS, float, float),
    CHEAP1(CALL_PRIM_CEIL, float, float),
    CHEAP1(CALL_PRIM_DEGREES, float, float),
    CHEAP1(CALL_PRIM_FLOOR, float, float),
    CHEAP1(CALL_PRIM_INVERSESQRT, float, float),
    CHEAP1(CALL_PRIM_RADIANS, float, float),
    CHEAP1(CALL_PRIM_ROUND, float, float),
    CHEAP1(CALL_PRIM_SIGN, float, float),
    CHEAP1(CALL_PRIM_SQRT, float, float),
    CHEAP2(CALL_PRIM_MAX2_FLOAT, float, float, float),
    CHEAP2(CALL_PRIM_MIN2_FLOAT, float, float, float),
    CHEAP2(CALL_PRIM_MOD, float, float, float),
    CHEAP2(CALL_PRIM_STEP, float, float, float),
    CHEAP3(CALL_PRIM_CLAMP_1D, float, float, float, float),
    CHEAP3(CALL_PRIM_SMOOTHSTEP, float, float, float, float),
    CHEAP3(CALL_PRIM_MIX_1D, float, float, float, float),
    CHEAP3(CALL_PRIM_CLAMP_3D, Vector, Vector, Vector, Vector),
    CHEAP3(CALL_PRIM_MIX_3D, Vector, Vector, Vector, float),
    EACH1(CALL_PRIM_ACOS, float&, float),
    EACH1(CALL_PRIM_ASIN, float&, float),
    EACH1(CALL_PRIM_ATAN, float&, float),
    EACH1(CALL_PRIM_COS, float&, float),
    EACH1(CALL_PRIM_EXP, float&, float),
    EACH1(CALL_PRIM_LOG, float&, float),
    EACH1(CALL_PRIM_SIN, float&, float),
    EACH1(CALL_PRIM_TAN, float&, float),
    EACH2(CALL_PRIM_ATAN2, float&, float, float),
    EACH2(CALL_PRIM_LOG2, float&, float, float),
    PowRow(),

    // Components
    CHEAP1(CALL_PRIM_XCOMP, float, Vector),
    CHEAP1(CALL_PRIM_YCOMP, float, Vector),
    CHEAP1(CALL_PRIM_ZCOMP, float, Vector),
    CHEAP1(CALL_PRIM_SETXCOMP, Vector, float),
    CHEAP1(CALL_PRIM_SETYCOMP, Vector, float),
    CHEAP1(CALL_PRIM_SETZCOMP, Vector, float),
    CHEAP2(CALL_PRIM_COMP, float, Vector, float),
    CHEAP2(CALL_PRIM_SETCOMP, Vector, float, float),
    EACH3(CALL_PRIM_COMP_MATRIX, float&, Matrix, float, float),
    EACH3(CALL_PRIM_SETCOMP_MATRIX, Matrix&, float, float, float),

    // Geometry; the point's own Ng stands behind the operands of the first one.
    Cheap<Vector, Vector, Vector, Vector>("CALL_PRIM_FACEFORWARD", [](Vector& r, const Vector& n, const Vector& incident, const Vector& Ng) {
        r = QxFaceForward(n, incident, Ng);
    }),
    CHEAP3(CALL_PRIM_FACEFORWARD2, Vector, Vector, Vector, Vector),
    CHEAP1(CALL_PRIM_LENGTH, float, Vector),
    CHEAP2(CALL_PRIM_DISTANCE, float, Vector, Vector),
    CHEAP1(CALL_PRIM_NORMALIZE, Vector, Vector),
    CHEAP2(CALL_PRIM_REFLECT, Vector, Vector, Vector),
    EACH3(CALL_PRIM_REFRACT, Vector&, Vector, Vector, float),
    EACH(CALL_PRIM_SPECULARBRDF, Color&, Vector, Vector, Vector, float),
    EACH3(CALL_PRIM_PTLINED, float&, Vector, Vector, Vector),
    EACH4(CALL_PRIM_ROTATE_POINT, Vector&, Vector, float, Vector, Vector),
    Each<Vector, Vector, float, float&, float&>("CALL_PRIM_FRESNEL5", [](const Vector& i, const Vector& n, float eta, float& kr, float& kt) {
        CALL_PRIM_FRESNEL5(i, n, eta, kr, kt);
    }),
    Each<Vector, Vector, float, float&, float&, Vector&, Vector&>("CALL_PRIM_FRESNEL7", [](const Vector& i, const Vector& n, float eta, float& kr, float& kt, Vector& r, Vector& t) {
        CALL_PRIM_FRESNEL7(i, n, eta, kr, kt, r, t);
    }),
    EACH1(CALL_PRIM_DETERMINANT, float&, Matrix),
    EACH1(CALL_PRIM_INVERSE, Matrix&, Matrix),
    EACH2(CALL_PRIM_TRANSLATE, Matrix&, Matrix, Vector),
    EACH2(CALL_PRIM_SCALE, Matrix&, Matrix, Vector),
    EACH3(CALL_PRIM_ROTATE, Matrix&, Matrix, float, Vector),

    // Spaces and colors
    RowPerPoint<Matrix, Matrix>("CONCAT_SPACE_MATRIX", ConcatSpace),
    TransformRow<QxToCurrentCall, QxAsPoint>("CALL_PRIM_TRANSFORM_TO_CURRENT"),
    TransformRow<QxFromCurrentCall, QxAsPoint>("CALL_PRIM_TRANSFORM_FROM_CURRENT"),
    EACH_IN_SPACE(CALL_PRIM_TRANSFORM, Vector&, Text, Text, Vector),
    EACH_IN_SPACE(CALL_PRIM_TRANSFORM2, Vector&, Text, Vector),
    EACH_IN_SPACE(CALL_PRIM_TRANSFORM_MATRIX, Vector&, Text, Matrix, Vector),
    EACH_IN_SPACE(CALL_PRIM_TRANSFORM2_MATRIX, Vector&, Matrix, Vector),
    TransformRow<QxToCurrentCall, QxAsVector>("CALL_PRIM_VTRANSFORM_TO_CURRENT"),
    TransformRow<QxFromCurrentCall, QxAsVector>("CALL_PRIM_VTRANSFORM_FROM_CURRENT"),
    EACH_IN_SPACE(CALL_PRIM_VTRANSFORM, Vector&, Text, Text, Vector),
    EACH_IN_SPACE(CALL_PRIM_VTRANSFORM2, Vector&, Text, Vector),
    EACH_IN_SPACE(CALL_PRIM_VTRANSFORM_MATRIX, Vector&, Text, Matrix, Vector),
    EACH_IN_SPACE(CALL_PRIM_VTRANSFORM2_MATRIX, Vector&, Matrix, Vector),
    TransformRow<QxToCurrentCall, QxAsNormal>("CALL_PRIM_NTRANSFORM_TO_CURRENT"),
    TransformRow<QxFromCurrentCall, QxAsNormal>("CALL_PRIM_NTRANSFORM_FROM_CURRENT"),
    EACH_IN_SPACE(CALL_PRIM_NTRANSFORM, Vector&, Text, Text, Vector),
    EACH_IN_SPACE(CALL_PRIM_NTRANSFORM2, Vector&, Text, Vector),
    EACH_IN_SPACE(CALL_PRIM_NTRANSFORM_MATRIX, Vector&, Text, Matrix, Vector),
    EACH_IN_SPACE(CALL_PRIM_NTRANSFORM2_MATRIX, Vector&, Matrix, Vector),
    EACH2(CALL_PRIM_CTRANSFORM_TO_RGB, Color&, Color, Text),
    EACH2(CALL_PRIM_CTRANSFORM_FROM_RGB, Color&, Color, Text),
    EACH(CALL_PRIM_CTRANSFORM, Color&, Text, Text, Color),
    EACH(CALL_PRIM_CTRANSFORM2, Color&, Text, Color),
};
// clang-format on

}  // namespace

QxKernelRows FunctionKernels()
{
    return k_rows;
}

}  // namespace QX_KERNEL_SET

// Rows of the table of kernels for functions that look up spaces or access components, for powers,
// and for `faceforward`. Most rows call the macro that generated C++ calls.

#include "QxBuiltInNames.h"
#include "kernels/QxCardRows.h"

namespace QX_KERNEL_SET {
namespace {

using Vector = QxVector3;
using Matrix = QxMatrix44;
using Text = const char*;

// A row for a cheap function of one argument. `NAME` is the primitive and the macro that computes
// it, `R` the type of the result, and `A` that of the argument.
#define CHEAP1(NAME, R, A) Cheap<R, A>(SqxPrimitive::NAME, [](R& r, const A& a) { NAME(r, a); })
// A row for a function that looks up spaces. `NAME` is the primitive and the macro; a reference
// type for the result and the types of any number of arguments follow.
#define EACH_IN_SPACE(NAME, ...)                                                                   \
    Each<__VA_ARGS__>(SqxPrimitive::NAME,                                                          \
                      InRun([](QxMachineState& state, auto& r, const auto&... arguments) {         \
                          const QxShadingContext& i_context = *state.context;                      \
                          NAME(r, arguments...);                                                   \
                      }))

// Powers are the slowest of the elementary functions. If the base and the result are varying,
// uniform exponents of 1, such as an unchanged gamma, and of 2 need no powers. Powers take a third
// less time if no base is negative.

struct PowerAtPoint {
    void operator()(float& r, const float& x, const float& y) const { r = QxPowAtPoint(x, y); }
};

struct AnyPower {
    void operator()(float& r, const float& x, const float& y) const { r = QxPowInVectors(x, y); }
};

struct PowerOfNonNegative {
    void operator()(float& r, const float& x, const float& y) const
    {
        r = QxPowOfNonNegative(x, y);
    }
};

struct FirstPower {
    void operator()(float& r, const float& x, const float&) const { r = x == 0 ? 0 : x; }
};

struct Square {
    void operator()(float& r, const float& x, const float&) const { r = x * x; }
};

QX_KERNEL_CODE bool IsAnyNegative(const float* numbers, unsigned int count)
{
    unsigned int any = 0;
    for (unsigned int j = 0; j < count; ++j)
        any |= numbers[j] < 0 ? 1u : 0u;
    return any != 0;
}

struct PowerLoops {
    static void Run(Numbers* results, const Numbers* operands, unsigned int count)
    {
        if (IsAnyNegative(operands[0].at, count))
            NumberLoops<AnyPower, float, float>::Run(results, operands, count);
        else
            NumberLoops<PowerOfNonNegative, float, float>::Run(results, operands, count);
    }
};

void PowersAtAll(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto base = Operand<float>(state, code, 1);
    if (code.operands[0].step == 0 || (base.step | code.operands[2].step) == 0)
        Any<PowerAtPoint, Where::All, float&, float, float>(state, code, points);
    else if (base.step == 0
                 ? *base.values < 0
                 : IsAnyNegative(base.values + points.first, points.End() - points.first))
        AllPoints<AnyPower, float, float, float>(state, code, points);
    else
        AllPoints<PowerOfNonNegative, float, float, float>(state, code, points);
}

template <bool masked>
void Powers(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    const auto exponent = Operand<float>(state, code, 2);
    const bool varies = code.operands[0].step != 0 && code.operands[1].step != 0;
    if (varies && exponent.step == 0 && *exponent.values == 1)
        Shaped<FirstPower, 1, masked, float, float, float>::Run(state, code, points);
    else if (varies && exponent.step == 0 && *exponent.values == 2)
        Shaped<Square, 1, masked, float, float, float>::Run(state, code, points);
    else if (masked)
        PickedPoints<PowerLoops, PowerAtPoint, float, float, float>(state, code, points);
    else
        PowersAtAll(state, code, points);
}

constexpr QxKernelRow PowRow()
{
    QxKernelRow row = Each<float&, float, float>(SqxPrimitive::CALL_PRIM_POW, PowerAtPoint());
    row.all = Powers<false>;
    row.masked = Powers<true>;
    return row;
}

// Transforms between a numbered space and the current one

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
constexpr QxKernelRow TransformRow(SqxPrimitive primitive)
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
    PowRow(),
    CHEAP1(CALL_PRIM_XCOMP, float, Vector),
    CHEAP1(CALL_PRIM_YCOMP, float, Vector),
    CHEAP1(CALL_PRIM_ZCOMP, float, Vector),
    CHEAP1(CALL_PRIM_SETXCOMP, Vector, float),
    CHEAP1(CALL_PRIM_SETYCOMP, Vector, float),
    CHEAP1(CALL_PRIM_SETZCOMP, Vector, float),

    // The translation appends the geometric normal of the grid to the operands.
    Cheap<Vector, Vector, Vector, Vector>(SqxPrimitive::CALL_PRIM_FACEFORWARD, [](Vector& r, const Vector& n, const Vector& incident, const Vector& Ng) {
        r = QxFaceForward(n, incident, Ng);
    }),

    // Spaces
    RowPerPoint<Matrix, Matrix>(SqxPrimitive::CONCAT_SPACE_MATRIX, ConcatSpace),
    TransformRow<QxToCurrentCall, QxAsPoint>(SqxPrimitive::CALL_PRIM_TRANSFORM_TO_CURRENT),
    TransformRow<QxFromCurrentCall, QxAsPoint>(SqxPrimitive::CALL_PRIM_TRANSFORM_FROM_CURRENT),
    EACH_IN_SPACE(CALL_PRIM_TRANSFORM, Vector&, Text, Text, Vector),
    EACH_IN_SPACE(CALL_PRIM_TRANSFORM2, Vector&, Text, Vector),
    EACH_IN_SPACE(CALL_PRIM_TRANSFORM_MATRIX, Vector&, Text, Matrix, Vector),
    EACH_IN_SPACE(CALL_PRIM_TRANSFORM2_MATRIX, Vector&, Matrix, Vector),
    TransformRow<QxToCurrentCall, QxAsVector>(SqxPrimitive::CALL_PRIM_VTRANSFORM_TO_CURRENT),
    TransformRow<QxFromCurrentCall, QxAsVector>(SqxPrimitive::CALL_PRIM_VTRANSFORM_FROM_CURRENT),
    EACH_IN_SPACE(CALL_PRIM_VTRANSFORM, Vector&, Text, Text, Vector),
    EACH_IN_SPACE(CALL_PRIM_VTRANSFORM2, Vector&, Text, Vector),
    EACH_IN_SPACE(CALL_PRIM_VTRANSFORM_MATRIX, Vector&, Text, Matrix, Vector),
    EACH_IN_SPACE(CALL_PRIM_VTRANSFORM2_MATRIX, Vector&, Matrix, Vector),
    TransformRow<QxToCurrentCall, QxAsNormal>(SqxPrimitive::CALL_PRIM_NTRANSFORM_TO_CURRENT),
    TransformRow<QxFromCurrentCall, QxAsNormal>(SqxPrimitive::CALL_PRIM_NTRANSFORM_FROM_CURRENT),
    EACH_IN_SPACE(CALL_PRIM_NTRANSFORM, Vector&, Text, Text, Vector),
    EACH_IN_SPACE(CALL_PRIM_NTRANSFORM2, Vector&, Text, Vector),
    EACH_IN_SPACE(CALL_PRIM_NTRANSFORM_MATRIX, Vector&, Text, Matrix, Vector),
    EACH_IN_SPACE(CALL_PRIM_NTRANSFORM2_MATRIX, Vector&, Matrix, Vector),
};
// clang-format on

}  // namespace

QxKernelRows FunctionKernels()
{
    return k_rows;
}

}  // namespace QX_KERNEL_SET

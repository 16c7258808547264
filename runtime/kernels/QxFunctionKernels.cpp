// Functions of numbers, triples and matrices, under the names by which generated C++ calls them
// too.

#include "QxBuiltInNames.h"
#include "kernels/QxBatches.h"

namespace QX_KERNEL_SET {
namespace {

using Vector = QxVector3;
using Color = QxRGBColor;
using Matrix = QxMatrix44;
using Flag = QxStopAndBool;
using Text = const char*;

// A row of the table: name, type of the result, types of the arguments. A function that is cheap
// may be computed for points that did not ask for it.
#define CHEAP1(NAME, R, A) Cheap<R, A>(SqxPrimitive::NAME, [](R& r, const A& a) { NAME(r, a); })
#define CHEAP2(NAME, R, A, B)                                                                      \
    Cheap<R, A, B>(SqxPrimitive::NAME, [](R& r, const A& a, const B& b) { NAME(r, a, b); })
#define CHEAP3(NAME, R, A, B, C)                                                                   \
    Cheap<R, A, B, C>(SqxPrimitive::NAME,                                                          \
                      [](R& r, const A& a, const B& b, const C& c) { NAME(r, a, b, c); })
#define EACH1(NAME, R, A) Each<R, A>(SqxPrimitive::NAME, [](R r, const A& a) { NAME(r, a); })
#define EACH2(NAME, R, A, B)                                                                       \
    Each<R, A, B>(SqxPrimitive::NAME, [](R r, const A& a, const B& b) { NAME(r, a, b); })
#define EACH3(NAME, R, A, B, C)                                                                    \
    Each<R, A, B, C>(SqxPrimitive::NAME,                                                           \
                     [](R r, const A& a, const B& b, const C& c) { NAME(r, a, b, c); })
#define EACH4(NAME, R, A, B, C, D)                                                                 \
    Each<R, A, B, C, D>(SqxPrimitive::NAME, [](R r, const A& a, const B& b, const C& c,            \
                                               const D& d) { NAME(r, a, b, c, d); })
// For names with any number of arguments.
#define EACH(NAME, ...)                                                                            \
    Each<__VA_ARGS__>(SqxPrimitive::NAME,                                                          \
                      [](auto& r, const auto&... arguments) { NAME(r, arguments...); })
// The same for those that look spaces up.
#define EACH_IN_SPACE(NAME, ...)                                                                   \
    Each<__VA_ARGS__>(SqxPrimitive::NAME,                                                          \
                      InRun([](QxMachineState& state, auto& r, const auto&... arguments) {         \
                          const QxShadingContext& i_context = *state.context;                      \
                          NAME(r, arguments...);                                                   \
                      }))

// Elementary functions cost too much to be computed where nobody asked for them. Without a mask a
// loop of vectors takes the operands where they stand; under a mask it takes batches.

/// One loop for numbers of a batch.
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

/// The loops over all points for each choice of varying arguments but the first one, which has
/// none.
template <class Shapes, class Function, class... Types>
struct ElementaryShapes;

template <std::size_t... i, class Function, class... Types>
struct ElementaryShapes<std::index_sequence<i...>, Function, Types...> {
    static constexpr QxKernel kernels[] = {Shaped<Function, i + 1, false, float, Types...>::Run...};
};

template <class Function, class... Types>
void ElementaryAtAll(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    unsigned int shape = 0;
    for (unsigned int k = 0; k < sizeof...(Types); ++k)
        shape |= code.operands[k + 1].step != 0 ? 1u << k : 0;
    if (shape == 0 || code.operands[0].step == 0)
        return Any<Function, Where::All, float&, Types...>(state, code, points);
    using Shapes = std::make_index_sequence<(std::size_t{1} << sizeof...(Types)) - 1>;
    ElementaryShapes<Shapes, Function, Types...>::kernels[shape - 1](state, code, points);
}

template <class... Types, class Function>
constexpr QxKernelRow Elementary(SqxPrimitive primitive, Function function)
{
    QxKernelRow row = Each<float&, Types...>(primitive, function);
    row.all = ElementaryAtAll<Function, Types...>;
    row.masked = PickedPoints<NumberLoops<Function, Types...>, Function, float, Types...>;
    return row;
}

#define ELEMENTARY1(NAME)                                                                          \
    Elementary<float>(SqxPrimitive::NAME, [](float& r, const float& a) { NAME(r, a); })
#define ELEMENTARY2(NAME)                                                                          \
    Elementary<float, float>(SqxPrimitive::NAME,                                                   \
                             [](float& r, const float& a, const float& b) { NAME(r, a, b); })

// Powers. A uniform exponent of 1, as of a gamma that a user left alone, or of 2 spares the slowest
// of the functions, and bases of which none is negative a third of it.

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
        ElementaryAtAll<AnyPower, float, float>(state, code, points);
    else
        ElementaryAtAll<PowerOfNonNegative, float, float>(state, code, points);
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
    ELEMENTARY1(CALL_PRIM_ACOS),
    ELEMENTARY1(CALL_PRIM_ASIN),
    ELEMENTARY1(CALL_PRIM_ATAN),
    ELEMENTARY1(CALL_PRIM_COS),
    ELEMENTARY1(CALL_PRIM_EXP),
    ELEMENTARY1(CALL_PRIM_LOG),
    ELEMENTARY1(CALL_PRIM_SIN),
    ELEMENTARY1(CALL_PRIM_TAN),
    ELEMENTARY2(CALL_PRIM_ATAN2),
    ELEMENTARY2(CALL_PRIM_LOG2),
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
    Cheap<Vector, Vector, Vector, Vector>(SqxPrimitive::CALL_PRIM_FACEFORWARD, [](Vector& r, const Vector& n, const Vector& incident, const Vector& Ng) {
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
    Each<Vector, Vector, float, float&, float&>(SqxPrimitive::CALL_PRIM_FRESNEL5, [](const Vector& i, const Vector& n, float eta, float& kr, float& kt) {
        CALL_PRIM_FRESNEL5(i, n, eta, kr, kt);
    }),
    Each<Vector, Vector, float, float&, float&, Vector&, Vector&>(SqxPrimitive::CALL_PRIM_FRESNEL7, [](const Vector& i, const Vector& n, float eta, float& kr, float& kt, Vector& r, Vector& t) {
        CALL_PRIM_FRESNEL7(i, n, eta, kr, kt, r, t);
    }),
    EACH1(CALL_PRIM_DETERMINANT, float&, Matrix),
    EACH1(CALL_PRIM_INVERSE, Matrix&, Matrix),
    EACH2(CALL_PRIM_TRANSLATE, Matrix&, Matrix, Vector),
    EACH2(CALL_PRIM_SCALE, Matrix&, Matrix, Vector),
    EACH3(CALL_PRIM_ROTATE, Matrix&, Matrix, float, Vector),

    // Spaces and colors
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

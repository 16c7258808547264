// The operations of built-ins for components, vectors, matrices, coordinate spaces and color
// spaces, at one point.

#include "QxCalls.h"
#include "QxColorSpaces.h"
#include "machine/SqxCall.h"
#include "machine/SqxMachine.h"

namespace {

using enum SqxPrimitive;

using Vector = QxVector3;
using Color = QxRGBColor;
using Matrix = QxMatrix44;

/// Calls a function object of the run time with arguments of the given types; sets its result.
template <class Function, class... Arguments>
void Call(const SqxCall& call)
{
    call.Set(0, std::apply(Function(), call.GetAll<Arguments...>(1)));
}

template <int component>
void GetComponent(const SqxCall& call)
{
    call.Set(0, call.Part<Vector>(1)[component]);
}

template <int component>
void SetComponent(const SqxCall& call)
{
    Vector value = call.Part<Vector>(0);
    value[component] = call.Get<float>(1);
    call.Set(0, value);
}

void Component(const SqxCall& call)
{
    call.Set(0, QxComponent(call.Part<Vector>(1), call.Get<float>(2)));
}

void SetAnyComponent(const SqxCall& call)
{
    Vector value = call.Part<Vector>(0);
    QxSetComponent(value, call.Get<float>(1), call.Get<float>(2));
    call.Set(0, value);
}

void MatrixComponent(const SqxCall& call)
{
    call.Set(0, QxComponent(call.Part<Matrix>(1), call.Get<float>(2), call.Get<float>(3)));
}

void SetMatrixComponent(const SqxCall& call)
{
    Matrix value = call.Part<Matrix>(0);
    QxSetComponent(value, call.Get<float>(1), call.Get<float>(2), call.Get<float>(3));
    call.Set(0, value);
}

void FaceForward(const SqxCall& call)
{
    const Vector trueNormal = call.Machine().PredefinedTriple("Ng", call.Point());
    call.Set(0, QxFaceForward(call.Get<Vector>(1), call.Get<Vector>(2), trueNormal));
}

/// Writes the reflected and the transmitted share of light and, if the call has seven operands,
/// their directions.
void Fresnel(const SqxCall& call)
{
    const auto shares = QxFresnel(call.Get<Vector>(0), call.Get<Vector>(1), call.Get<float>(2));
    call.Set(3, shares.reflected);
    call.Set(4, shares.transmitted);
    if (call.Count() > 5) {
        call.Set(5, shares.reflection);
        call.Set(6, shares.refraction);
    }
}

void RotatePoint(const SqxCall& call)
{
    call.Set(0, QxRotatePoint(call.Get<Vector>(1), call.Get<float>(2), call.Get<Vector>(3),
                              call.Get<Vector>(4)));
}

template <Matrix (*function)(const Matrix&, const Vector&)>
void Move(const SqxCall& call)
{
    call.Set(0, function(call.Get<Matrix>(1), call.Get<Vector>(2)));
}

void Rotate(const SqxCall& call)
{
    call.Set(0, QxRotate(call.Get<Matrix>(1), call.Get<float>(2), call.Get<Vector>(3)));
}

void Inverse(const SqxCall& call)
{
    call.Set(0, QxInverse(call.Get<Matrix>(1)));
}

void Determinant(const SqxCall& call)
{
    call.Set(0, QxDeterminant(call.Get<Matrix>(1)));
}

void Depth(const SqxCall& call)
{
    call.Set(0, call.Machine().Support().Depth(call.Get<Vector>(1)));
}

// These operations use spaces by their numbers in the file.

template <class As>
void ToCurrent(const SqxCall& call)
{
    const QxFrame3D& frame = call.Machine().SpaceByNumber(call.Operand(2));
    call.Set(0, As::Through(call.Get<Vector>(1), frame.toCurrent, frame.fromCurrent));
}

template <class As>
void FromCurrent(const SqxCall& call)
{
    const QxFrame3D& frame = call.Machine().SpaceByNumber(call.Operand(2));
    call.Set(0, As::Through(call.Get<Vector>(1), frame.fromCurrent, frame.toCurrent));
}

void ConcatSpace(const SqxCall& call)
{
    call.Set(0, call.Get<Matrix>(1) * call.Machine().SpaceByNumber(call.Operand(2)).toCurrent);
}

// These operations use spaces whose names the shader computes, or matrices.

const QxFrame3D& NamedSpace(const SqxCall& call, std::size_t place)
{
    return call.Machine().Space(call.Get<std::string>(place));
}

QxFrame3D FrameAt(const SqxCall& call, std::size_t place)
{
    if (call.Variable(place).type == SqxType::String)
        return NamedSpace(call, place);
    // The matrix transforms from the current space to the other one.
    return QxFrame3D(QxInverse(call.Get<Matrix>(place)));
}

template <class As>
void ToSpace(const SqxCall& call)
{
    const QxFrame3D to = FrameAt(call, 1);
    call.Set(0, As::Through(call.Get<Vector>(2), to.fromCurrent, to.toCurrent));
}

template <class As>
void BetweenSpaces(const SqxCall& call)
{
    const QxFrame3D from = NamedSpace(call, 1);
    const QxFrame3D to = FrameAt(call, 2);
    const Vector current = As::Through(call.Get<Vector>(3), from.toCurrent, from.fromCurrent);
    call.Set(0, As::Through(current, to.fromCurrent, to.toCurrent));
}

void ColorToRgb(const SqxCall& call)
{
    call.Set(0, QxColorToRgb(call.Get<Color>(1), call.Get<std::string>(2).c_str()));
}

void ColorFromRgb(const SqxCall& call)
{
    call.Set(0, QxColorFromRgb(call.Get<Color>(1), call.Get<std::string>(2).c_str()));
}

void ColorToSpace(const SqxCall& call)
{
    call.Set(0, QxColorFromRgb(call.Get<Color>(2), call.Get<std::string>(1).c_str()));
}

void ColorBetweenSpaces(const SqxCall& call)
{
    call.Set(0, QxColorTransform(call.Get<Color>(3), call.Get<std::string>(1).c_str(),
                                 call.Get<std::string>(2).c_str()));
}

// clang-format off
constexpr SqxOperationRow k_geometry[] = {
    {CALL_PRIM_XCOMP,                   GetComponent<0>},
    {CALL_PRIM_YCOMP,                   GetComponent<1>},
    {CALL_PRIM_ZCOMP,                   GetComponent<2>},
    {CALL_PRIM_SETXCOMP,                SetComponent<0>},
    {CALL_PRIM_SETYCOMP,                SetComponent<1>},
    {CALL_PRIM_SETZCOMP,                SetComponent<2>},
    {CALL_PRIM_COMP,                    Component},
    {CALL_PRIM_SETCOMP,                 SetAnyComponent},
    {CALL_PRIM_COMP_MATRIX,             MatrixComponent},
    {CALL_PRIM_SETCOMP_MATRIX,          SetMatrixComponent},
    {CALL_PRIM_LENGTH,                  Call<QxLengthCall, Vector>},
    {CALL_PRIM_DISTANCE,                Call<QxDistanceCall, Vector, Vector>},
    {CALL_PRIM_NORMALIZE,               Call<QxNormalizeCall, Vector>},
    {CALL_PRIM_PTLINED,                 Call<QxPointLineCall, Vector, Vector, Vector>},
    {CALL_PRIM_FACEFORWARD2,            Call<QxFaceForwardCall, Vector, Vector, Vector>},
    {CALL_PRIM_FACEFORWARD,             FaceForward},
    {CALL_PRIM_REFLECT,                 Call<QxReflectCall, Vector, Vector>},
    {CALL_PRIM_REFRACT,                 Call<QxRefractCall, Vector, Vector, float>},
    {CALL_PRIM_FRESNEL5,                Fresnel},
    {CALL_PRIM_FRESNEL7,                Fresnel},
    {CALL_PRIM_ROTATE_POINT,            RotatePoint},
    {CALL_PRIM_INVERSE,                 Inverse},
    {CALL_PRIM_DETERMINANT,             Determinant},
    {CALL_PRIM_TRANSLATE,               Move<QxTranslate>},
    {CALL_PRIM_SCALE,                   Move<QxScale>},
    {CALL_PRIM_ROTATE,                  Rotate},
    {CALL_PRIM_DEPTH,                   Depth},
    {CALL_PRIM_TRANSFORM_TO_CURRENT,    ToCurrent<QxAsPoint>},
    {CALL_PRIM_VTRANSFORM_TO_CURRENT,   ToCurrent<QxAsVector>},
    {CALL_PRIM_NTRANSFORM_TO_CURRENT,   ToCurrent<QxAsNormal>},
    {CALL_PRIM_TRANSFORM_FROM_CURRENT,  FromCurrent<QxAsPoint>},
    {CALL_PRIM_VTRANSFORM_FROM_CURRENT, FromCurrent<QxAsVector>},
    {CALL_PRIM_NTRANSFORM_FROM_CURRENT, FromCurrent<QxAsNormal>},
    {CONCAT_SPACE_MATRIX,               ConcatSpace},
    {CALL_PRIM_TRANSFORM2,              ToSpace<QxAsPoint>},
    {CALL_PRIM_TRANSFORM2_MATRIX,       ToSpace<QxAsPoint>},
    {CALL_PRIM_VTRANSFORM2,             ToSpace<QxAsVector>},
    {CALL_PRIM_VTRANSFORM2_MATRIX,      ToSpace<QxAsVector>},
    {CALL_PRIM_NTRANSFORM2,             ToSpace<QxAsNormal>},
    {CALL_PRIM_NTRANSFORM2_MATRIX,      ToSpace<QxAsNormal>},
    {CALL_PRIM_TRANSFORM,               BetweenSpaces<QxAsPoint>},
    {CALL_PRIM_TRANSFORM_MATRIX,        BetweenSpaces<QxAsPoint>},
    {CALL_PRIM_VTRANSFORM,              BetweenSpaces<QxAsVector>},
    {CALL_PRIM_VTRANSFORM_MATRIX,       BetweenSpaces<QxAsVector>},
    {CALL_PRIM_NTRANSFORM,              BetweenSpaces<QxAsNormal>},
    {CALL_PRIM_NTRANSFORM_MATRIX,       BetweenSpaces<QxAsNormal>},
    {CALL_PRIM_CTRANSFORM_TO_RGB,       ColorToRgb},
    {CALL_PRIM_CTRANSFORM_FROM_RGB,     ColorFromRgb},
    {CALL_PRIM_CTRANSFORM2,             ColorToSpace},
    {CALL_PRIM_CTRANSFORM,              ColorBetweenSpaces},
};
// clang-format on

}  // namespace

std::span<const SqxOperationRow> SqxGeometryTable()
{
    return k_geometry;
}

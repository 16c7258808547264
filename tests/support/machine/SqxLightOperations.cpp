// The operations of light statements and of the reflection of light, at one point.

#include "QxLights.h"
#include "machine/SqxCall.h"
#include "machine/SqxMachine.h"

namespace {

using enum SqxPrimitive;

using Vector = QxVector3;

/// Returns the point of the grid. Throws `SqxFault` outside of points, where there is no light.
unsigned int PointOf(const SqxCall& call)
{
    if (call.Point() == k_uniformPoint)
        throw SqxFault{"Light is asked for outside the points of the grid"};
    return static_cast<unsigned int>(call.Point());
}

void Ambient(const SqxCall& call)
{
    call.Set(0, QxAmbientCall(call.Machine().Lights())(PointOf(call)));
}

void Diffuse(const SqxCall& call)
{
    call.Set(0, QxDiffuseCall(call.Machine().Lights())(PointOf(call), call.Get<Vector>(1)));
}

template <class Answer>
void Highlight(const SqxCall& call)
{
    call.Set(0, Answer(call.Machine().Lights())(PointOf(call), call.Get<Vector>(1),
                                                call.Get<Vector>(2), call.Get<float>(3)));
}

void SpecularBrdf(const SqxCall& call)
{
    call.Set(0, QxSpecularBrdfCall()(call.Get<Vector>(1), call.Get<Vector>(2), call.Get<Vector>(3),
                                     call.Get<float>(4)));
}

// Operands: flag, position, axis, angle, Ps, L
void Illuminate(const SqxCall& call)
{
    Vector L;
    const bool reached = QxIlluminateCall()(call.Get<Vector>(1), call.Get<Vector>(2),
                                            call.Get<float>(3), call.Get<Vector>(4), L);
    call.Set(0, reached);
    call.Set(5, L);
}

// Operands: flag, position, Ps, L
void IlluminateNoCone(const SqxCall& call)
{
    Vector L;
    call.Set(0, QxIlluminateNoConeCall()(call.Get<Vector>(1), call.Get<Vector>(2), L));
    call.Set(3, L);
}

// Operands: flag, axis, angle, L
void Solar(const SqxCall& call)
{
    Vector L;
    call.Set(0, QxSolarCall()(L, call.Get<Vector>(1), call.Get<float>(2)));
    call.Set(3, L);
}

// Operands: flag, position, axis, angle
void Illuminance(const SqxCall& call)
{
    const Vector toLight = call.Machine().CurrentLight().L[PointOf(call)];
    call.Set(0, QxIsWithinCone(toLight, call.Get<Vector>(2), call.Get<float>(3)));
}

// clang-format off
constexpr SqxOperationRow k_lights[] = {
    {CALL_PRIM_AMBIENT,      Ambient},
    {CALL_PRIM_DIFFUSE,      Diffuse},
    {CALL_PRIM_SPECULAR,     Highlight<QxSpecularCall>},
    {CALL_PRIM_SPECULARSTD,  Highlight<QxSpecularCall>},
    {CALL_PRIM_SPECULARBRDF, SpecularBrdf},
    {CALL_PRIM_PHONG,        Highlight<QxPhongCall>},
    {ILLUMINATE,             Illuminate},
    {ILLUMINATE_NO_CONE,     IlluminateNoCone},
    {SOLAR,                  Solar},
    {ILLUMINANCE,            Illuminance},
};
// clang-format on

}  // namespace

std::span<const SqxOperationRow> SqxLightTable()
{
    return k_lights;
}

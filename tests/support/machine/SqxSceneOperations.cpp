// The operations that query the scene: textures, environments, shadows and rays, at one point.

#include "QxSceneCalls.h"
#include "machine/SqxCall.h"
#include "machine/SqxMachine.h"

namespace {

using enum SqxPrimitive;

using Vector = QxVector3;
using Color = QxRGBColor;

float Number(const SqxCall& call, std::size_t place)
{
    return call.Get<float>(place);
}

/// Returns a point or vector; a default value may be a single number instead, which becomes all
/// three components.
Vector Triple(const SqxCall& call, std::size_t place)
{
    if (call.Numbers(place).size() == 3)
        return call.Get<Vector>(place);
    const float value = Number(call, place);
    return {value, value, value};
}

/// Sets the result of an access: the color, or only its first component if the result is a number.
void Answer(const SqxCall& call, const Color& color)
{
    if (call.Numbers(0).size() == 1)
        call.Set(0, color.r);
    else
        call.Set(0, color);
}

void Texture(const SqxCall& call)
{
    const std::string name = call.Get<std::string>(1);
    const std::string filter = call.Get<std::string>(17);
    QxTextureQuery query = {};
    query.name = name.c_str();
    query.channel = Number(call, 2);
    for (std::size_t i = 0; i < 4; ++i) {
        query.s[i] = Number(call, 3 + 2 * i);
        query.t[i] = Number(call, 4 + 2 * i);
    }
    query.fidelity = Number(call, 11);
    query.samples = Number(call, 12);
    query.sBlur = Number(call, 13);
    query.tBlur = Number(call, 14);
    query.sWidth = Number(call, 15);
    query.tWidth = Number(call, 16);
    query.filter = filter.c_str();
    query.fill = Number(call, 18);
    query.lerp = Number(call, 19);
    Answer(call, call.Machine().Support().Texture(query));
}

/// Reads the arguments that environments and shadows share; the texts must outlive the query.
QxPointsQuery PointsQuery(const SqxCall& call, const std::string& name, const std::string& filter)
{
    return QxMakePointsQuery(name.c_str(), Number(call, 2), call.Get<Vector>(3),
                             call.Get<Vector>(4), call.Get<Vector>(5), call.Get<Vector>(6),
                             Number(call, 7), Number(call, 8), Number(call, 9), Number(call, 10),
                             Number(call, 11), Number(call, 12), filter.c_str());
}

void Environment(const SqxCall& call)
{
    const std::string name = call.Get<std::string>(1);
    const std::string filter = call.Get<std::string>(13);
    QxPointsQuery query = PointsQuery(call, name, filter);
    query.lerp = Number(call, 14);
    query.fill = Number(call, 15);
    Answer(call, call.Machine().Support().Environment(query));
}

void Shadow(const SqxCall& call)
{
    const std::string name = call.Get<std::string>(1);
    const std::string filter = call.Get<std::string>(13);
    QxPointsQuery query = PointsQuery(call, name, filter);
    query.bias = Number(call, 14);
    query.inLight = call.Machine().IsLight();
    if (call.Count() > 15) {
        query.sourceCount = QxToInt(Number(call, 15), 0, 4);
        for (std::size_t i = 0; i < 4; ++i)
            query.sources[i] = Triple(call, 16 + i);
    }
    Answer(call, call.Machine().Support().Shadow(query));
}

// Operations of rays. An output that the call left out is a constant, which is not written.

void Give(const SqxCall& call, std::size_t place, float value)
{
    if (call.Variable(place).kind != SqxVariableKind::Constant)
        call.Set(place, value);
}

void Give(const SqxCall& call, std::size_t place, const Vector& value)
{
    if (call.Variable(place).kind != SqxVariableKind::Constant)
        call.Set(place, value);
}

QxRayQuery RayQuery(const SqxCall& call)
{
    QxRayQuery query = {};
    query.position = call.Get<Vector>(1);
    query.direction = call.Get<Vector>(2);
    query.environment = "";
    return query;
}

/// Reads the two vectors and the five numbers after them, for `Occlusion` and `IndirectDiffuse`.
QxRayQuery GatherQuery(const SqxCall& call)
{
    QxRayQuery query = RayQuery(call);
    query.samples = Number(call, 3);
    query.angle = Number(call, 4);
    query.bias = Number(call, 5);
    query.maxDistance = Number(call, 6);
    query.variance = Number(call, 7);
    return query;
}

void RayHit(const SqxCall& call)
{
    call.Set(0, call.Machine().Support().RayHit(RayQuery(call)));
}

void Transmission(const SqxCall& call)
{
    call.Set(0, call.Machine().Support().Transmission(RayQuery(call)));
}

void Trace(const SqxCall& call)
{
    float distance = 0;
    call.Set(0, call.Machine().Support().Trace(RayQuery(call), distance));
    Give(call, 3, distance);
}

void Occlusion(const SqxCall& call)
{
    QxRayQuery query = GatherQuery(call);
    query.axis = Triple(call, 8);
    Vector open = query.direction;
    const float occlusion = call.Machine().Support().Occlusion(query, open);
    call.Set(0, occlusion);
    Give(call, 9, open);
}

void IndirectDiffuse(const SqxCall& call)
{
    QxRayQuery query = GatherQuery(call);
    const bool named = call.Variable(8).type == SqxType::String;
    const std::string environment = named ? call.Get<std::string>(8) : "";
    query.environment = environment.c_str();
    query.axis = Triple(call, 9);
    Vector open = query.direction;
    float occlusion = 0;
    call.Set(0, call.Machine().Support().IndirectDiffuse(query, open, occlusion));
    Give(call, 10, open);
    Give(call, 11, occlusion);
}

void IsShadowRay(const SqxCall& call)
{
    call.Set(0, call.Machine().Support().IsShadowRay() ? 1.0F : 0.0F);
}

void IsIndirectRay(const SqxCall& call)
{
    call.Set(0, call.Machine().Support().IsIndirectRay() ? 1.0F : 0.0F);
}

void RayLevel(const SqxCall& call)
{
    call.Set(0, call.Machine().Support().RayLevel());
}

// clang-format off
constexpr SqxOperationRow k_scene[] = {
    {CALL_TEXTURE_1D,           Texture},
    {CALL_TEXTURE_3D,           Texture},
    {CALL_ENVIRONMENT_1D,       Environment},
    {CALL_ENVIRONMENT_3D,       Environment},
    {CALL_SHADOW_1D,            Shadow},
    {CALL_SHADOW_1D_LIGHT,      Shadow},
    {CALL_SHADOW_3D,            Shadow},
    {CALL_SHADOW_3D_LIGHT,      Shadow},
    {CALL_AREASHADOW_1D,        Shadow},
    {CALL_AREASHADOW_1D_LIGHT,  Shadow},
    {CALL_AREASHADOW_3D,        Shadow},
    {CALL_AREASHADOW_3D_LIGHT,  Shadow},
    {CALL_PRIM_RAYHITTEST,      RayHit},
    {CALL_PRIM_TRANSMISSION,    Transmission},
    {CALL_PRIM_TRACE,           Trace},
    {CALL_PRIM_OCCLUSION,       Occlusion},
    {CALL_PRIM_INDIRECTDIFFUSE, IndirectDiffuse},
    {CALL_PRIM_ISSHADOWRAY,     IsShadowRay},
    {CALL_PRIM_ISINDIRECTRAY,   IsIndirectRay},
    {CALL_PRIM_RAYLEVEL,        RayLevel},
};
// clang-format on

}  // namespace

std::span<const SqxOperationRow> SqxSceneTable()
{
    return k_scene;
}

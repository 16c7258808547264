// Embree finds what a ray meets; what the place looks like is computed here.

#include "Geometry.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>
#include <tuple>

#include "QxMath.h"

namespace {

/// The value between three corners.
template <class Value>
Value Between(const std::vector<Value>& values, const std::array<unsigned int, 3>& corners,
              const Hit& hit)
{
    return values[corners[0]] * (1 - hit.second - hit.third) + values[corners[1]] * hit.second +
           values[corners[2]] * hit.third;
}

}  // namespace

std::array<float, 2> SphereParameters(const QxVector3& direction)
{
    const float around = std::atan2(direction.x, -direction.z);
    const float down = std::acos(std::clamp(direction.y, -1.0F, 1.0F));
    return {0.5F + around / (2 * QX_PI_FLOAT), down / QX_PI_FLOAT};
}

/// The derivatives solve dP = dPdu ds + dPdv dt along two edges.
SurfacePoint Mesh::At(const Hit& hit) const
{
    const auto& corners = triangles[hit.triangle];
    const QxVector3 first = P[corners[0]];
    const QxVector3 edges[] = {P[corners[1]] - first, P[corners[2]] - first};
    const QxVector3 Ng = QxNormalize(QxCross(edges[0], edges[1]));
    std::array<float, 2> places[3] = {{0, 0}, {1, 0}, {0, 1}};  // s and t of the corners
    for (int i = 0; i < 3 && !st.empty(); ++i)
        places[i] = st[corners[i]];
    for (int i = 1; i < 3 && isRound; ++i)
        places[i][0] += std::round(places[0][0] - places[i][0]);
    const float ds[] = {places[1][0] - places[0][0], places[2][0] - places[0][0]};
    const float dt[] = {places[1][1] - places[0][1], places[2][1] - places[0][1]};
    SurfacePoint point = {first + edges[0] * hit.second + edges[1] * hit.third,
                          N.empty() ? Ng : QxNormalize(Between(N, corners, hit)),
                          Ng,
                          edges[0],
                          edges[1],
                          places[0][0] + ds[0] * hit.second + ds[1] * hit.third,
                          places[0][1] + dt[0] * hit.second + dt[1] * hit.third,
                          isRound};
    if (const float area = ds[0] * dt[1] - ds[1] * dt[0]; area != 0) {
        point.dPdu = (edges[0] * dt[1] - edges[1] * dt[0]) / area;
        point.dPdv = (edges[1] * ds[0] - edges[0] * ds[1]) / area;
    }
    return point;
}

Geometry::Geometry() : m_device(rtcNewDevice(nullptr)), m_scene(rtcNewScene(m_device.get()))
{
    rtcSetSceneFlags(m_scene.get(), RTC_SCENE_FLAG_ROBUST);  // no ray slips between two triangles
}

void Geometry::Add(Mesh mesh)
{
    const RTCGeometry geometry = rtcNewGeometry(m_device.get(), RTC_GEOMETRY_TYPE_TRIANGLE);
    void* const places = rtcSetNewGeometryBuffer(
        geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, sizeof mesh.P[0], mesh.P.size());
    void* const corners =
        rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                                sizeof mesh.triangles[0], mesh.triangles.size());
    if (!places || !corners)
        throw std::runtime_error("Embree has no memory for so many triangles");
    std::copy(mesh.P.begin(), mesh.P.end(), static_cast<QxVector3*>(places));
    std::memcpy(corners, mesh.triangles.data(), mesh.triangles.size() * sizeof mesh.triangles[0]);
    rtcCommitGeometry(geometry);
    rtcAttachGeometryByID(m_scene.get(), geometry, static_cast<unsigned int>(m_meshes.size()));
    rtcReleaseGeometry(geometry);
    m_meshes.push_back(std::move(mesh));
}

void Geometry::Commit()
{
    rtcCommitScene(m_scene.get());
    if (rtcGetDeviceError(m_device.get()) != RTC_ERROR_NONE)
        throw std::runtime_error("Embree cannot hold the scene");
}

std::optional<Hit> Geometry::Intersect(const Ray& ray) const
{
    RTCRayHit query = {};
    std::tie(query.ray.org_x, query.ray.org_y, query.ray.org_z) =
        std::tie(ray.origin.x, ray.origin.y, ray.origin.z);
    std::tie(query.ray.dir_x, query.ray.dir_y, query.ray.dir_z) =
        std::tie(ray.direction.x, ray.direction.y, ray.direction.z);
    query.ray.tnear = ray.near;
    query.ray.tfar = ray.far;
    query.ray.mask = ~0U;
    query.hit.geomID = RTC_INVALID_GEOMETRY_ID;
    RTCIntersectContext context;
    rtcInitIntersectContext(&context);
    rtcIntersect1(m_scene.get(), &context, &query);
    if (query.hit.geomID == RTC_INVALID_GEOMETRY_ID)
        return std::nullopt;
    return Hit{query.hit.geomID, query.hit.primID, query.ray.tfar, query.hit.u, query.hit.v};
}

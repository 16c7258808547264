#include "Geometry.h"

#include <cmath>
#include <stdexcept>

Geometry::Geometry() : m_device(rtcNewDevice(nullptr)), m_scene(rtcNewScene(m_device.get()))
{
    rtcSetSceneFlags(m_scene.get(), RTC_SCENE_FLAG_ROBUST);  // no ray slips between two triangles
}

void Geometry::Add(Mesh mesh)
{
    static_assert(sizeof(Vertex) == 8 * sizeof(float));
    const RTCGeometry geometry = rtcNewGeometry(m_device.get(), RTC_GEOMETRY_TYPE_TRIANGLE);
    rtcSetGeometryVertexAttributeCount(geometry, 1);
    const auto share = [geometry](RTCBufferType type, RTCFormat format, const auto& values) {
        rtcSetSharedGeometryBuffer(geometry, type, 0, format, values.data(), 0, sizeof values[0],
                                   values.size());
    };
    share(RTC_BUFFER_TYPE_VERTEX, RTC_FORMAT_FLOAT3, mesh.vertices);
    share(RTC_BUFFER_TYPE_VERTEX_ATTRIBUTE, RTC_FORMAT_FLOAT8, mesh.vertices);
    share(RTC_BUFFER_TYPE_INDEX, RTC_FORMAT_UINT3, mesh.triangles);
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
    for (float near = ray.near;;) {
        RTCRayHit query = {};
        const QxVector3& org = ray.origin;
        const QxVector3& dir = ray.direction;
        query.ray = {org.x, org.y, org.z, near, dir.x, dir.y, dir.z, 0, ray.far, ~0U, 0, 0};
        query.hit.geomID = RTC_INVALID_GEOMETRY_ID;
        RTCIntersectContext context;
        rtcInitIntersectContext(&context);
        rtcIntersect1(m_scene.get(), &context, &query);
        if (query.hit.geomID == RTC_INVALID_GEOMETRY_ID)
            return std::nullopt;
        const Hit hit = {query.hit.geomID, query.hit.primID, query.ray.tfar, query.hit.u,
                         query.hit.v};
        if (hit.object != ray.start || hit.distance >= ray.bias)
            return hit;
        near = std::nextafter(hit.distance, k_endless);
    }
}

/// The derivatives are the solution of dP = dPdu ds + dPdv dt along two edges. If s and t do not
/// determine it, they are the edges themselves.
void Geometry::FillPoint(const QxHiddenVariables& points, std::size_t point, const Hit& hit) const
{
    Vertex at;
    Vertex a;  // edges, from the first corner to the others
    Vertex b;
    rtcInterpolate1(rtcGetGeometry(m_scene.get(), hit.object), hit.triangle, hit.second, hit.third,
                    RTC_BUFFER_TYPE_VERTEX_ATTRIBUTE, 0, &at.P.x, &a.P.x, &b.P.x, 8);
    const float area = a.s * b.t - b.s * a.t;
    points.P[point] = at.P;
    points.N[point] = QxNormalize(at.N);
    points.Ng[point] = QxNormalize(QxCross(a.P, b.P));
    points.dPdu[point] = area == 0 ? a.P : (a.P * b.t - b.P * a.t) / area;
    points.dPdv[point] = area == 0 ? b.P : (b.P * a.s - a.P * b.s) / area;
    points.u[point] = points.s[point] = at.s;
    points.v[point] = points.t[point] = at.t;
}

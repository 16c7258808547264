#pragma once

#include <array>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include <embree3/rtcore.h>

#include "QxGeometry.h"
#include "QxShading.h"

constexpr float k_endless = std::numeric_limits<float>::infinity();
constexpr unsigned int k_noObject = RTC_INVALID_GEOMETRY_ID;

/// A ray in world space. Its direction has length 1, so `near`, `far` and `bias` are distances.
struct Ray {
    QxVector3 origin;
    QxVector3 direction;
    float near = 0;  // hits before `near` and after `far` are ignored
    float far = k_endless;
    // Hits near the origin on the surface that the ray starts on are rounding errors. Hits on other
    // objects may be at any distance, for example where a wall meets a mirror.
    unsigned int start = k_noObject;  // the object that the ray starts on, or has passed last
    float bias = 0;                   // hits on the object `start` before this distance are ignored
};

/// The first hit of a ray.
struct Hit {
    unsigned int object;  // numbered in the order in which the objects were added
    unsigned int triangle;
    float distance;
    float second;  // barycentric coordinates of the second and the third corner
    float third;
};

/// A vertex of a mesh; Embree interpolates its eight floats.
struct Vertex {
    QxVector3 P;
    QxVector3 N;
    float s;  // place in a texture, to the right
    float t;  // and down
};

/// Triangles in world space. Their `Ng` is the cross product of the edges from the first corner to
/// the second and to the third.
struct Mesh {
    std::vector<Vertex> vertices;
    std::vector<std::array<unsigned int, 3>> triangles;

    void AddTriangle(std::size_t first, std::size_t second, std::size_t third)
    {
        triangles.push_back({static_cast<unsigned int>(first), static_cast<unsigned int>(second),
                             static_cast<unsigned int>(third)});
    }
};

/// The triangles of all objects. After `Commit` any number of threads may intersect them.
class Geometry {
public:
    Geometry();
    /// Adds the triangles of the next object.
    void Add(Mesh mesh);
    /// Must be called after the last `Add`. Throws `std::runtime_error` if Embree reports an error.
    void Commit();
    /// Returns the first hit that the ray does not ignore; nothing if there is none.
    [[nodiscard]] std::optional<Hit> Intersect(const Ray& ray) const;
    /// Sets P, N, Ng, s, t, u, v, dPdu and dPdv of one shading point.
    void FillPoint(const QxHiddenVariables& points, std::size_t point, const Hit& hit) const;

private:
    struct Release {
        void operator()(RTCDevice device) const { rtcReleaseDevice(device); }
        void operator()(RTCScene scene) const { rtcReleaseScene(scene); }
    };

    std::vector<Mesh> m_meshes;  // Embree keeps pointers to their vertices and triangles
    std::unique_ptr<RTCDeviceTy, Release> m_device;
    std::unique_ptr<RTCSceneTy, Release> m_scene;
};

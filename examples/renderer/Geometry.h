#pragma once

#include <array>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include <embree3/rtcore.h>

#include "QxGeometry.h"

/// A ray in the world's space. Its direction has length 1, so that all lengths are distances.
struct Ray {
    QxVector3 origin;
    QxVector3 direction;
    float near;  // nothing nearer or farther is hit
    float far;
};

constexpr float k_endless = std::numeric_limits<float>::infinity();

/// What a ray meets first.
struct Hit {
    unsigned int object;  // the objects are numbered in the order in which they were added
    unsigned int triangle;
    float distance;
    float second;  // barycentric coordinates of the second and the third corner
    float third;
};

/// What a surface shader needs to know about a place.
struct SurfacePoint {
    QxVector3 P;
    QxVector3 N;   // of length 1
    QxVector3 Ng;  // the same of the triangle
    QxVector3 dPdu;
    QxVector3 dPdv;
    float s;       // to the right
    float t;       // down
    bool isRound;  // after 1, s goes on with 0
};

/// Triangles in the world's space; their corners turn left around the normal.
struct Mesh {
    std::vector<QxVector3> P;
    std::vector<QxVector3> N;              // of each corner; empty: those of the triangles
    std::vector<std::array<float, 2>> st;  // of each corner; may be empty
    std::vector<std::array<unsigned int, 3>> triangles;
    bool isRound = false;  // after 1, s goes on with 0

    [[nodiscard]] SurfacePoint At(const Hit& hit) const;
};

/// The place on a sphere of a direction of length 1: s leads around the y axis, t down from its
/// upper end. A map of the surroundings has the same layout.
[[nodiscard]] std::array<float, 2> SphereParameters(const QxVector3& direction);

/// The triangles of all objects in a tree, for any number of threads once `Commit` was called.
class Geometry {
public:
    Geometry();
    void Add(Mesh mesh);
    void Commit();
    [[nodiscard]] std::optional<Hit> Intersect(const Ray& ray) const;
    [[nodiscard]] SurfacePoint PointAt(const Hit& hit) const
    {
        return m_meshes[hit.object].At(hit);
    }

private:
    struct Release {
        void operator()(RTCDevice device) const { rtcReleaseDevice(device); }
        void operator()(RTCScene scene) const { rtcReleaseScene(scene); }
    };

    std::vector<Mesh> m_meshes;  // by object
    std::unique_ptr<RTCDeviceTy, Release> m_device;
    std::unique_ptr<RTCSceneTy, Release> m_scene;
};

#pragma once

#include <string>

#include "Geometry.h"
#include "QxMatrixMath.h"

class QxHostScene;
class QxShaderInstance;

// `toWorld` transforms all meshes to world space.

/// Returns a square of side 2 around the origin that faces up: s grows along x, t against z.
[[nodiscard]] Mesh MakePlane(const QxMatrix44& toWorld);

/// Returns a sphere of radius 1 around the origin, with `detail` squares of two triangles along a
/// quarter of a turn around the y axis, and flat poles. s grows around the y axis, t downward. The
/// displacement shader, if it is not null, displaces the points. Throws what its run throws, such
/// as `QxHostError`.
[[nodiscard]] Mesh MakeSphere(const QxMatrix44& toWorld, unsigned int detail,
                              QxShaderInstance* displacement, QxHostScene& scene);

/// Reads an OBJ file: points, texture coordinates, normals, and convex faces with any number of
/// corners. Other lines are ignored. Throws `std::runtime_error` if the file cannot be read, a line
/// is damaged or there are no faces.
[[nodiscard]] Mesh ReadObjFile(const std::string& path, const QxMatrix44& toWorld);

/// Returns the s and t of a unit direction on a sphere: s grows around the y axis, t downward from
/// its upper end. Maps of the surroundings have the same layout.
[[nodiscard]] std::array<float, 2> SphereParameters(const QxVector3& direction);

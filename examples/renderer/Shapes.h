#pragma once

#include <string>

#include "Geometry.h"
#include "QxMatrixMath.h"

class QxHostScene;
class QxShaderInstance;

/// A square of side 2 around the origin that faces upward: s leads along x, t against z.
[[nodiscard]] Mesh MakePlane(const QxMatrix44& toWorld);

/// A sphere of radius 1 around the origin as a net of small triangles, with `detail` squares along
/// a quarter of a turn. s leads around the y axis, t down. The displacement shader, if it is not
/// null, moves the points. Throws `QxHostError`.
[[nodiscard]] Mesh MakeSphere(const QxMatrix44& toWorld, unsigned int detail,
                              QxShaderInstance* displacement, QxHostScene& scene);

/// The triangles of an OBJ file: points, texture coordinates and normals, and faces of any number
/// of corners, which must be convex. All else in it is ignored. Throws `std::runtime_error`.
[[nodiscard]] Mesh ReadObjFile(const std::string& path, const QxMatrix44& toWorld);

/// The s and t on a sphere of a direction of length 1: s leads around the y axis, t down from its
/// upper end. A map of the surroundings has the same layout.
[[nodiscard]] std::array<float, 2> SphereParameters(const QxVector3& direction);

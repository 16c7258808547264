#pragma once

#include <string>

#include "Geometry.h"

/// Reads the triangles of an OBJ file: places, texture places and normals, and faces of any number
/// of corners, which must be convex. All else in it is passed over. Throws `std::runtime_error`.
[[nodiscard]] Mesh ReadObjFile(const std::string& path, const QxMatrix44& toWorld);

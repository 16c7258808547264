#pragma once

#include "Geometry.h"
#include "QxMatrixMath.h"

class QxHostScene;
class QxShaderInstance;

/// A square of side 2 around the origin that faces upward: s leads along x, t against z.
[[nodiscard]] Mesh MakePlane(const QxMatrix44& toWorld);

/// A sphere of radius 1 around the origin as a net of small triangles: a cube that was blown up,
/// with `detail` squares along an edge. A displacement shader, if there is one, moves its points.
/// Throws `QxHostError`.
[[nodiscard]] Mesh MakeSphere(const QxMatrix44& toWorld, unsigned int detail,
                              QxShaderInstance* displacement, QxHostScene& scene);

// Each face of the cube that becomes a sphere is one grid for the displacement shader. The grid
// reaches one point over the edges of its face: derivatives are less exact at the border of a grid,
// and the faces would show their seams.

#include "Shapes.h"

#include <cmath>

#include "host/QxHost.h"

namespace {

/// Face of a cube: its middle, and where u and v lead on it.
struct Face {
    QxVector3 middle;
    QxVector3 alongU;
    QxVector3 alongV;
};

// The product of `alongU` and `alongV` leads outward.
constexpr Face k_faces[] = {
    {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{-1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
    {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}}, {{0, -1, 0}, {1, 0, 0}, {0, 0, 1}},
    {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}, {{0, 0, -1}, {0, 1, 0}, {1, 0, 0}},
};

/// Directions of length 1 to the points of a face with its margin.
std::vector<QxVector3> DirectionsOf(const Face& face, unsigned int detail)
{
    std::vector<QxVector3> directions;
    const auto along = [detail](unsigned int i) {
        return 2 * (static_cast<float>(i) - 1) / static_cast<float>(detail) - 1;
    };
    for (unsigned int row = 0; row < detail + 3; ++row)
        for (unsigned int column = 0; column < detail + 3; ++column)
            directions.push_back(
                QxNormalize(face.middle + face.alongU * along(column) + face.alongV * along(row)));
    return directions;
}

void PlaceGrid(QxHostGrid& grid, const std::vector<QxVector3>& directions, unsigned int detail,
               const QxFrame3D& frame)
{
    const QxHiddenVariables at = grid.Hidden();
    *at.du = *at.dv = 2 / static_cast<float>(detail);
    for (std::size_t i = 0; i < grid.Size(); ++i) {
        at.P[i] = QxTransformPoint(directions[i], frame.toCurrent);
        at.N[i] = at.Ng[i] = QxNormalize(QxTransformNormal(directions[i], frame.fromCurrent));
        at.I[i] = at.P[i];
        const auto [s, t] = SphereParameters(directions[i]);
        at.s[i] = i == 0 ? s : s + std::round(at.s[0] - s);  // on one side of the seam
        at.u[i] = at.s[i];
        at.v[i] = at.t[i] = t;
    }
    QxDerivative(at.dPdu, at.P, *at.du, grid.Layout(), QxGridAxis::U);
    QxDerivative(at.dPdv, at.P, *at.dv, grid.Layout(), QxGridAxis::V);
}

/// Adds the points of a grid without its margin, and two triangles for each of its squares.
void AddFace(Mesh& mesh, QxHostGrid& grid, unsigned int detail)
{
    const QxHiddenVariables at = grid.Hidden();
    const auto first = static_cast<unsigned int>(mesh.P.size());
    const unsigned int edge = detail + 1;
    for (unsigned int row = 0; row < edge; ++row)
        for (unsigned int column = 0; column < edge; ++column) {
            const std::size_t point = (row + 1UL) * (detail + 3) + column + 1;
            mesh.P.push_back(at.P[point]);
            mesh.N.push_back(QxNormalize(at.N[point]));
            mesh.st.push_back({at.s[point], at.t[point]});
            if (row == detail || column == detail)
                continue;
            const unsigned int corner = first + row * edge + column;
            mesh.triangles.push_back({corner, corner + 1, corner + edge + 1});
            mesh.triangles.push_back({corner, corner + edge + 1, corner + edge});
        }
}

}  // namespace

Mesh MakePlane(const QxMatrix44& toWorld)
{
    Mesh square = {{{-1, 0, 1}, {1, 0, 1}, {1, 0, -1}, {-1, 0, -1}},
                   {},
                   {{0, 0}, {1, 0}, {1, 1}, {0, 1}},
                   {{0, 1, 2}, {0, 2, 3}}};
    for (QxVector3& place : square.P)
        place = QxTransformPoint(place, toWorld);
    return square;
}

Mesh MakeSphere(const QxMatrix44& toWorld, unsigned int detail, QxShaderInstance* displacement,
                QxHostScene& scene)
{
    Mesh mesh;
    mesh.isRound = true;
    const QxFrame3D frame(toWorld);
    QxHostGrid grid(detail + 3, detail + 3);
    for (const Face& face : k_faces) {
        PlaceGrid(grid, DirectionsOf(face, detail), detail, frame);
        if (displacement)
            displacement->Run(grid, scene);
        AddFace(mesh, grid, detail);
    }
    return mesh;
}

// A sphere is one grid over its parameters, which a displacement shader can shade. The grid has one
// extra column on each side, since derivatives are less exact at the border of a grid, which would
// make the seam visible. Its rows end half a step before the poles, where u has no direction.

#include "Shapes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "QxMath.h"
#include "host/QxHost.h"

namespace {

/// Adds the triangles of a polygon. Its vertices are those of the mesh from `first` on. If they
/// have no normal, they get that of the polygon's first triangle, not of unit length.
void AddPolygon(Mesh& mesh, std::size_t first)
{
    std::vector<Vertex>& vertices = mesh.vertices;
    for (std::size_t i = first + 2; i < vertices.size(); ++i)
        mesh.AddTriangle(first, i - 1, i);
    for (std::size_t i = first; i < vertices.size() && first + 2 < vertices.size(); ++i)
        if (QxLength(vertices[i].N) == 0)
            vertices[i].N = QxCross(vertices[first + 1].P - vertices[first].P,
                                    vertices[first + 2].P - vertices[first].P);
}

using ObjValues = std::vector<QxVector3>[3];  // points, texture coordinates, normals

/// Adds a vertex for a corner such as "7", "7/3", "7//2" or "7/3/2"; negative numbers count back
/// from the last value. Returns false if the corner is invalid.
bool AddCorner(Mesh& mesh, const ObjValues& values, const std::string& corner)
{
    QxVector3 found[3] = {};
    std::istringstream parts(corner);
    std::string part;
    for (int kind = 0; kind < 3 && std::getline(parts, part, '/'); ++kind) {
        if (part.empty() && kind > 0)
            continue;
        char* end = nullptr;
        const long number = std::strtol(part.c_str(), &end, 10);
        const auto count = static_cast<long>(values[kind].size());
        const long place = number < 0 ? number + count : number - 1;
        if (*end || place < 0 || place >= count)
            return false;
        found[kind] = values[kind][place];
    }
    mesh.vertices.push_back({found[0], found[2], found[1].x, found[1].y});
    return true;
}

}  // namespace

std::array<float, 2> SphereParameters(const QxVector3& direction)
{
    const float around = std::atan2(direction.x, -direction.z);
    const float down = std::acos(std::clamp(direction.y, -1.0F, 1.0F));
    return {0.5F + around / (2 * QX_PI_FLOAT), down / QX_PI_FLOAT};
}

Mesh MakePlane(const QxMatrix44& toWorld)
{
    Mesh square;
    for (const auto& [s, t] : {std::pair(0.0F, 0.0F), {1.0F, 0.0F}, {1.0F, 1.0F}, {0.0F, 1.0F}})
        square.vertices.push_back({QxTransformPoint({2 * s - 1, 0, 1 - 2 * t}, toWorld), {}, s, t});
    AddPolygon(square, 0);
    return square;
}

Mesh MakeSphere(const QxMatrix44& toWorld, unsigned int detail, QxShaderInstance* displacement,
                QxHostScene& scene)
{
    const QxFrame3D frame(toWorld);
    const unsigned int columns = 4 * detail + 3;
    const unsigned int rows = 2 * detail;
    QxHostGrid grid(columns, rows);
    const QxHiddenVariables at = grid.Hidden();
    *at.du = 1 / static_cast<float>(4 * detail);
    *at.dv = 1 / static_cast<float>(rows);
    for (std::size_t i = 0; i < grid.Size(); ++i) {
        at.u[i] = at.s[i] = (static_cast<float>(i % columns) - 1) * *at.du;
        at.v[i] = at.t[i] = (static_cast<float>(i / columns) + 0.5F) * *at.dv;
        const float around = 2 * QX_PI_FLOAT * (at.s[i] - 0.5F);
        const float down = QX_PI_FLOAT * at.t[i];
        const QxVector3 direction = {std::sin(down) * std::sin(around), std::cos(down),
                                     -std::sin(down) * std::cos(around)};
        at.P[i] = at.I[i] = QxTransformPoint(direction, frame.toCurrent);
        at.N[i] = at.Ng[i] = QxNormalize(QxTransformNormal(direction, frame.fromCurrent));
    }
    QxDerivative(at.dPdu, at.P, *at.du, grid.Layout(), QxGridAxis::U);
    QxDerivative(at.dPdv, at.P, *at.dv, grid.Layout(), QxGridAxis::V);
    if (displacement)
        displacement->Run(grid, scene);

    Mesh mesh;
    for (std::size_t i = 0; i < grid.Size(); ++i)
        mesh.vertices.push_back({at.P[i], QxNormalize(at.N[i]), at.s[i], at.t[i]});
    const std::size_t last = grid.Size() - columns;  // first point of the last row
    for (std::size_t column = 1; column + 2 < columns; ++column) {
        for (std::size_t i = column; i < last; i += columns) {
            mesh.AddTriangle(i, i + 1, i + columns + 1);
            mesh.AddTriangle(i, i + columns + 1, i + columns);
        }
        mesh.AddTriangle(1, column + 1, column);
        mesh.AddTriangle(last + 1, last + column, last + column + 1);
    }
    return mesh;
}

Mesh ReadObjFile(const std::string& path, const QxMatrix44& toWorld)
{
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error("Cannot read '" + path + "'");
    ObjValues values;
    Mesh mesh;
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        std::istringstream words(line.substr(0, line.find('#')));
        std::string word;
        QxVector3 value = {};
        words >> word;
        bool good = true;
        if (word == "f") {
            const std::size_t first = mesh.vertices.size();
            while (good && words >> word)
                good = AddCorner(mesh, values, word);
            AddPolygon(mesh, first);
        } else if (word == "vt") {
            good = !!(words >> value.x >> value.y);
            values[1].push_back({value.x, 1 - value.y, 0});  // pictures start with the top row
        } else if (word == "v" || word == "vn") {
            good = !!(words >> value.x >> value.y >> value.z);
            values[word == "v" ? 0 : 2].push_back(
                word == "v" ? QxTransformPoint(value, toWorld)
                            : QxTransformNormal(value, QxInverse(toWorld)));
        }
        if (!good)
            throw std::runtime_error(path + ":" + std::to_string(number) + ": Damaged line");
    }
    if (mesh.triangles.empty())
        throw std::runtime_error("There are no faces in '" + path + "'");
    return mesh;
}

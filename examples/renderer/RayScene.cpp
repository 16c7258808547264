// Many rays are followed at a time. Their hits are grouped by object, and the points of each object
// are shaded as one grid, so that its surface shader and the lights run once:
//
//     rays     hits     grid of B     Each row of the grid has the rays of a row of the picture, so
//     . . .    A A A                  that derivatives lead to the pixel's neighbours. Where a ray
//     . . .    A B B    B B           of the row hit another object, the grid repeats a point
//     . . .    A A B    b B           nearby (b), and the result is dropped.
//
// Rays that pass a transparent surface continue as a second layer, and so on.
//
// If a shader calls `trace`, the same functions follow this single ray, one level deeper; the
// library allows an instance to be run while it is running.

#include "RayScene.h"

#include <algorithm>
#include <cmath>

#include "QxGeometry.h"
#include "QxMath.h"

namespace {

constexpr QxRGBColor k_white = {1, 1, 1};
constexpr int k_mostLayers = 64;              // of transparent surfaces
constexpr float k_leastThrough = 1 / 512.0F;  // less transmitted light is ignored

/// Returns the distance within which rounding errors may make a ray hit the surface that it starts
/// on.
float BiasAt(const QxVector3& place)
{
    return 2e-4F * std::max({std::abs(place.x), std::abs(place.y), std::abs(place.z), 1.0F});
}

/// Continues the ray on the other side of the hit surface.
void PassHit(Ray& ray, const Hit& hit)
{
    ray.near = std::nextafter(hit.distance, k_endless);
    ray.start = hit.object;
    ray.bias = hit.distance + BiasAt(ray.origin + ray.direction * hit.distance);
}

bool IsDark(const QxRGBColor& color)
{
    return std::max({color.r, color.g, color.b}) < k_leastThrough;
}

QxRGBColor SkyAt(const World& world, const QxVector3& way)
{
    return world.skyMap ? world.sky * world.skyMap->Look(QueryAround({way, way, way, way}))
                        : world.sky;
}

/// Returns a direction in the hemisphere around `axis`, which has unit length. `rise` is the
/// squared sine of the angle to the axis, `turn` the rotation around it, in turns.
QxVector3 DirectionAround(const QxVector3& axis, float rise, float turn)
{
    const QxVector3 other = std::abs(axis.x) < 0.5F ? QxVector3{1, 0, 0} : QxVector3{0, 1, 0};
    const QxVector3 x = QxNormalize(QxCross(other, axis));
    const QxVector3 y = QxCross(axis, x);
    const float sine = std::sqrt(rise);
    const float angle = 2 * QX_PI_FLOAT * turn;
    return x * (sine * std::cos(angle)) + y * (sine * std::sin(angle)) + axis * std::sqrt(1 - rise);
}

/// The smallest rectangle in a layout of paths that contains all paths whose next hit is on one
/// object. There must be such a path.
struct Part {
    Part(const QxGrid& layout, const std::vector<Path>& paths, unsigned int object)
        : layoutColumns(layout.columns)
    {
        unsigned int lastColumn = 0;
        unsigned int lastRow = 0;
        for (unsigned int i = 0; i < paths.size(); ++i)
            if (paths[i].Hits(object)) {
                firstColumn = std::min(firstColumn, i % layout.columns);
                lastColumn = std::max(lastColumn, i % layout.columns);
                firstRow = std::min(firstRow, i / layout.columns);
                lastRow = i / layout.columns;
            }
        columns = lastColumn - firstColumn + 1;
        rows = lastRow - firstRow + 1;
    }

    /// Returns the index of the path of a point of the rectangle.
    [[nodiscard]] std::size_t PathOf(std::size_t point) const
    {
        return (firstRow + point / columns) * layoutColumns + firstColumn + point % columns;
    }

    unsigned int layoutColumns;
    unsigned int firstColumn = ~0U;
    unsigned int firstRow = ~0U;
    unsigned int columns;
    unsigned int rows;
};

}  // namespace

std::unique_ptr<QxShaderInstance> ShaderSetting::NewInstance(QxHostSpaces& spaces,
                                                             const QxMatrix44& toWorld) const
{
    auto instance = std::make_unique<QxShaderInstance>(shader, spaces);
    instance->Spaces().Define("shader", QxFrame3D(toWorld));
    instance->Spaces().Define("object", QxFrame3D(toWorld));
    instance->Use(&values);
    return instance;
}

RayScene::RayScene(const World& world) : TextureScene(world.textures), m_world(world)
{
    // The current space is world space.
    Spaces().Define("world", QxFrame3D());
    Spaces().Define("camera", QxFrame3D(world.camera));
    for (const PlacedObject& object : world.objects)
        m_surfaces.push_back(object.surface->NewInstance(Spaces(), object.toWorld));
    for (const PlacedLight& light : world.lights) {
        m_lights.push_back(light.shader->NewInstance(Spaces(), light.toWorld));
        AddLight(*m_lights.back());
    }
}

RayScene::Level& RayScene::LevelAt(std::size_t depth)
{
    while (m_levels.size() <= depth)
        m_levels.emplace_back();
    return m_levels[depth];
}

std::span<const Path> RayScene::Follow(Level& level, const QxGrid& layout,
                                       std::span<const Ray> rays)
{
    level.paths.clear();
    for (const Ray& ray : rays)
        level.paths.push_back({ray});
    for (int layer = 0; layer < k_mostLayers && FindHits(level.paths); ++layer)
        for (const Path& path : level.paths)
            if (path.hit)
                ShadeObject(level, layout, path.hit->object);
    return level.paths;
}

/// Finds the next hit of each path that still transmits light. A path without a hit gets the color
/// of the sky and ends. Returns true if there is any hit.
bool RayScene::FindHits(std::vector<Path>& paths) const
{
    bool found = false;
    for (Path& path : paths) {
        if (IsDark(path.through))
            continue;
        path.hit = m_world.geometry.Intersect(path.ray);
        if (path.hit) {
            found = true;
            if (path.distance < 0)
                path.distance = path.hit->distance;
        } else {
            path.color = path.color + path.through * SkyAt(m_world, path.ray.direction);
            path.through = {0, 0, 0};
        }
    }
    return found;
}

/// Shades all hits on one object, adds the results to their paths, and lets the rays of these paths
/// continue after the hits.
void RayScene::ShadeObject(Level& level, const QxGrid& layout, unsigned int object)
{
    const Part part(layout, level.paths, object);
    level.grid.Resize(part.columns, part.rows);
    std::size_t nearest = 0;  // path whose point is repeated in gaps
    for (std::size_t point = 0; point < level.grid.Size(); ++point) {
        // A gap at the start of a row repeats the row's first hit, or if there is none, the last
        // hit of the rows before. Any other gap repeats the point before it.
        const std::size_t end = point % part.columns == 0 ? point + part.columns : point + 1;
        for (std::size_t other = point; other < end; ++other)
            if (level.paths[part.PathOf(other)].Hits(object)) {
                nearest = part.PathOf(other);
                break;
            }
        FillPoint(level.grid, point, level.paths[nearest]);
    }
    Shade(level, object);
    const QxHiddenVariables at = level.grid.Hidden();
    for (std::size_t point = 0; point < level.grid.Size(); ++point) {
        Path& path = level.paths[part.PathOf(point)];
        if (!path.Hits(object))
            continue;
        path.color = path.color + path.through * at.Ci[point];
        path.through = path.through * (k_white - at.Oi[point]);
        PassHit(path.ray, *path.hit);
        path.hit.reset();
    }
}

void RayScene::FillPoint(QxHostGrid& grid, std::size_t point, const Path& path) const
{
    const PlacedObject& object = m_world.objects[path.hit->object];
    const QxHiddenVariables at = grid.Hidden();
    m_world.geometry.FillPoint(at, point, *path.hit);
    if (object.isRound)  // keeps neighbours on the same side of the seam
        at.u[point] = at.s[point] += std::round(at.s[0] - at.s[point]);
    at.I[point] = path.ray.direction * path.hit->distance;
    at.Cs[point] = object.color;
    at.Os[point] = object.opacity;
}

void RayScene::Shade(Level& level, unsigned int object)
{
    const QxHiddenVariables at = level.grid.Hidden();
    // Columns and rows of the grid are rays, not steps of u and v.
    *at.du = *at.dv = 1;
    level.grid.Set("E", QxTransformPoint({0, 0, 0}, m_world.camera));
    level.object = object;
    m_surfaces[object]->Run(level.grid, *this);
}

Ray RayScene::RayOf(const QxRayQuery& query, const QxVector3& direction)
{
    Ray ray = {query.position, QxNormalize(direction), query.bias};
    if (query.maxDistance > 0)
        ray.far = query.maxDistance;
    ray.start = LevelAt(OuterGrids()).object;
    ray.bias = std::max(query.bias, BiasAt(query.position));
    return ray;
}

/// Returns black and no hit for rays that are nested deeper than `rayLevels`, or that have no
/// direction.
QxRGBColor RayScene::Trace(const QxRayQuery& query, float& distance)
{
    distance = -1;
    if (OuterGrids() >= m_world.rayLevels || QxLength(query.direction) == 0)
        return {0, 0, 0};
    const Ray ray = RayOf(query, query.direction);
    Level& level = LevelAt(OuterGrids() + 1);
    level.isShadowRay = IsShadowRay();
    const Path& path = Follow(level, {1, 1}, {&ray, 1}).front();
    distance = path.distance;
    return path.color;
}

float RayScene::RayHit(const QxRayQuery& query)
{
    const auto hit = m_world.geometry.Intersect(RayOf(query, query.direction));
    return hit ? hit->distance : -1;
}

/// Multiplies the transparencies of the objects between the two positions, up to `k_mostLayers`
/// hits. An object is transparent as its `shadow` says; if the shader that asks is nested deeper
/// than `rayLevels`, each object blocks all light.
QxRGBColor RayScene::Transmission(const QxRayQuery& query)
{
    const QxVector3 way = query.direction - query.position;
    Ray ray = RayOf(query, way);
    ray.far = QxLength(way) - std::max(query.bias, BiasAt(query.direction));
    QxRGBColor through = k_white;
    for (int layer = 0; layer < k_mostLayers && !IsDark(through) && ray.near < ray.far; ++layer) {
        const auto hit = m_world.geometry.Intersect(ray);
        if (!hit)
            return through;
        const ShadowKind kind = m_world.objects[hit->object].shadow;
        const bool isTooDeep = OuterGrids() > m_world.rayLevels;
        if (kind == ShadowKind::Opaque || (kind == ShadowKind::Shader && isTooDeep))
            return {0, 0, 0};
        if (kind == ShadowKind::Shader)
            through = through * (k_white - OpacityAt({ray, hit}));
        PassHit(ray, *hit);
    }
    return IsDark(through) ? QxRGBColor{0, 0, 0} : through;
}

QxRGBColor RayScene::OpacityAt(const Path& path)
{
    Level& level = LevelAt(OuterGrids() + 1);
    level.isShadowRay = true;
    level.grid.Resize(1, 1);
    FillPoint(level.grid, 0, path);
    Shade(level, path.hit->object);
    return level.grid.Hidden().Oi[0];
}

/// Averages the transmission to random positions between the four corners, one in each cell of a
/// square raster.
QxRGBColor RayScene::Shadow(const QxPointsQuery& query)
{
    if (query.sourceCount != 4)
        return QxHostScene::Shadow(query);
    const QxVector3 place =
        (query.points[0] + query.points[1] + query.points[2] + query.points[3]) / 4;
    const int edge = QxToInt(std::sqrt(query.samples), 1, 16);
    const auto count = static_cast<float>(edge);
    QxRGBColor light = {0, 0, 0};
    for (int cell = 0; cell < edge * edge; ++cell) {
        const int row = cell / edge;
        const float u = (static_cast<float>(cell - row * edge) + Random()) / count;
        const float v = (static_cast<float>(row) + Random()) / count;
        QxRayQuery ray = {};
        ray.position = place;
        ray.direction = QxMix(QxMix(query.sources[0], query.sources[1], u),
                              QxMix(query.sources[3], query.sources[2], u), v);
        ray.bias = query.bias;
        light = light + Transmission(ray);
    }
    return k_white - light / (count * count);
}

/// Chooses directions with a density proportional to the cosine of the angle to the axis, so that
/// all rays have the same weight. They only test for a hit; nothing is shaded.
float RayScene::Occlusion(const QxRayQuery& query, QxVector3& openDirection)
{
    constexpr float k_golden = 0.61803399F;  // golden ratio: spreads the rotations evenly
    const QxVector3 axis = QxNormalize(QxLength(query.axis) > 0 ? query.axis : query.direction);
    const int count = query.samples >= 1 ? QxToInt(query.samples, 1, 4096) : 16;
    const float angle = query.angle < 0 ? QX_PI_FLOAT / 2 : std::min(query.angle, QX_PI_FLOAT / 2);
    const float widest = std::sin(angle) * std::sin(angle);
    const float turn = Random();
    float hits = 0;
    QxVector3 open = {0, 0, 0};
    for (int i = 0; i < count; ++i) {
        const auto number = static_cast<float>(i);
        const float rise = widest * (number + Random()) / static_cast<float>(count);
        const QxVector3 direction = DirectionAround(axis, rise, turn + number * k_golden);
        if (m_world.geometry.Intersect(RayOf(query, direction)))
            ++hits;
        else
            open = open + direction;
    }
    openDirection = QxLength(open) > 0 ? QxNormalize(open) : axis;
    return hits / static_cast<float>(count);
}

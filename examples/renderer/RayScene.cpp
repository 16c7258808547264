// Rays are followed many at a time. What they hit is sorted by object, and each object's points are
// shaded as one grid, so that its surface shader and the lights run once:
//
//     rays     hits     grid of B     A row of the grid has the rays of a row of the picture, so
//     . . .    A A A                  that derivatives lead to the pixel's neighbours. Where a ray
//     . . .    A B B    B B           of it hit something else, the grid repeats the place beside
//     . . .    A A B    b B           it (b), and the result is dropped.
//
// Where surfaces let light through, what comes through them follows as a second layer, and so on.
//
// A shader that asks for a ray is answered by the same functions with a single ray, one level
// deeper: the library allows a shader to be run while it runs.

#include "RayScene.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "QxGeometry.h"
#include "QxMath.h"

namespace {

constexpr int k_mostLayers = 64;              // of surfaces that let light through
constexpr float k_leastThrough = 1 / 512.0F;  // less light than that is none

/// How far from a surface rays begin, so that they do not hit it where they start.
float BiasAt(const QxVector3& place, float wanted)
{
    const float size = std::max({std::abs(place.x), std::abs(place.y), std::abs(place.z), 1.0F});
    return std::max(wanted, 2e-4F * size);
}

Ray RayOf(const QxRayQuery& query, const QxVector3& direction)
{
    Ray ray = {query.position, QxNormalize(direction), BiasAt(query.position, query.bias),
               k_endless};
    if (query.maxDistance > 0)
        ray.far = query.maxDistance;
    return ray;
}

bool IsDark(const QxRGBColor& color)
{
    return std::max({color.r, color.g, color.b}) < k_leastThrough;
}

/// Direction in the hemisphere around `axis`: `rise` is the square of the sine of its angle.
QxVector3 DirectionAround(const QxVector3& axis, float rise, float turn)
{
    const QxVector3 other = std::abs(axis.x) < 0.5F ? QxVector3{1, 0, 0} : QxVector3{0, 1, 0};
    const QxVector3 x = QxNormalize(QxCross(other, axis));
    const QxVector3 y = QxCross(axis, x);
    const float sine = std::sqrt(rise);
    const float angle = 2 * QX_PI_FLOAT * turn;
    return x * (sine * std::cos(angle)) + y * (sine * std::sin(angle)) + axis * std::sqrt(1 - rise);
}

}  // namespace

std::unique_ptr<QxShaderInstance> ShaderSetting::NewInstance(QxHostSpaces& spaces,
                                                             const QxMatrix44& toWorld) const
{
    auto instance = std::make_unique<QxShaderInstance>(shader, spaces);
    instance->Spaces().Define("shader", QxFrame3D(toWorld));
    instance->Spaces().Define("object", QxFrame3D(toWorld));
    for (const auto& [name, value] : values)
        instance->Set(name, value);
    return instance;
}

/// Enters the next level, and leaves it also when a shader throws.
class RayScene::LevelScope {
public:
    LevelScope(RayScene& scene, bool isShadowRay)
        : m_scene(scene),
          m_outer(std::exchange(scene.m_isShadowRay, isShadowRay))
    {
        if (scene.m_levels.size() == scene.m_depth)
            scene.m_levels.emplace_back();
        ++scene.m_depth;
    }
    ~LevelScope()
    {
        --m_scene.m_depth;
        m_scene.m_isShadowRay = m_outer;
    }
    LevelScope(const LevelScope&) = delete;
    LevelScope& operator=(const LevelScope&) = delete;

private:
    RayScene& m_scene;
    bool m_outer;
};

RayScene::RayScene(const World& world) : TextureScene(world.textures), m_world(world)
{
    // The current space is the world's.
    Spaces().Define("world", QxFrame3D());
    Spaces().Define("camera", QxFrame3D(world.camera.toWorld));
    for (const PlacedObject& object : world.objects)
        m_surfaces.push_back(object.surface->NewInstance(Spaces(), object.toWorld));
    for (const PlacedLight& light : world.lights) {
        m_lights.push_back(light.shader->NewInstance(Spaces(), light.toWorld));
        AddLight(*m_lights.back());
    }
}

QxRGBColor RayScene::Sky(const QxVector3& direction) const
{
    return m_world.skyMap ? m_world.sky * LookAround(*m_world.skyMap, direction) : m_world.sky;
}

void RayScene::Follow(const QxGrid& layout, std::span<const Ray> rays, std::span<Arrival> arrivals)
{
    const LevelScope scope(*this, m_isShadowRay);
    Level& level = m_levels[m_depth - 1];
    level.rays.assign(rays.begin(), rays.end());
    level.through.assign(rays.size(), {1, 1, 1});
    level.hits.assign(rays.size(), {});
    std::fill(arrivals.begin(), arrivals.end(), Arrival{{0, 0, 0}, -1});
    for (int layer = 0; layer < k_mostLayers && FindHits(level, arrivals); ++layer)
        for (const std::optional<Hit>& hit : level.hits)
            if (hit)
                ShadeObject(level, layout, hit->object, arrivals);
}

/// Rays without a hit bring the color of the sky and end. True if there is a hit.
bool RayScene::FindHits(Level& level, std::span<Arrival> arrivals) const
{
    bool found = false;
    for (std::size_t i = 0; i < level.rays.size(); ++i) {
        QxRGBColor& through = level.through[i];
        if (IsDark(through))
            continue;
        level.hits[i] = m_world.geometry.Intersect(level.rays[i]);
        if (level.hits[i]) {
            found = true;
            if (arrivals[i].distance < 0)
                arrivals[i].distance = level.hits[i]->distance;
            continue;
        }
        arrivals[i].color = arrivals[i].color + through * Sky(level.rays[i].direction);
        through = {0, 0, 0};
    }
    return found;
}

/// The rays that hit the object continue behind it, and their hits are done.
void RayScene::ShadeObject(Level& level, const QxGrid& layout, unsigned int object,
                           std::span<Arrival> arrivals)
{
    const Part part = FindPart(level, layout, object);
    FillGrid(level, layout, part, object);
    m_surfaces[object]->Run(level.grid, *this);
    const QxHiddenVariables at = level.grid.Hidden();
    std::size_t point = 0;
    for (unsigned int row = part.firstRow; row <= part.lastRow; ++row)
        for (unsigned int column = part.firstColumn; column <= part.lastColumn; ++column, ++point) {
            const std::size_t i = std::size_t{row} * layout.columns + column;
            std::optional<Hit>& hit = level.hits[i];
            if (!hit || hit->object != object)
                continue;
            QxRGBColor& through = level.through[i];
            arrivals[i].color = arrivals[i].color + through * at.Ci[point];
            through = through * (QxRGBColor{1, 1, 1} - at.Oi[point]);
            level.rays[i].near = hit->distance + BiasAt(at.P[point], 0);
            hit.reset();
        }
}

RayScene::Part RayScene::FindPart(const Level& level, const QxGrid& layout, unsigned int object)
{
    Part part = {layout.columns, layout.rows, 0, 0};
    for (unsigned int row = 0; row < layout.rows; ++row)
        for (unsigned int column = 0; column < layout.columns; ++column) {
            const auto& hit = level.hits[std::size_t{row} * layout.columns + column];
            if (!hit || hit->object != object)
                continue;
            part.firstColumn = std::min(part.firstColumn, column);
            part.lastColumn = std::max(part.lastColumn, column);
            part.firstRow = std::min(part.firstRow, row);
            part.lastRow = row;
        }
    return part;
}

void RayScene::FillGrid(Level& level, const QxGrid& layout, const Part& part,
                        unsigned int object) const
{
    const unsigned int columns = part.lastColumn - part.firstColumn + 1;
    level.grid.Resize(columns, part.lastRow - part.firstRow + 1);
    const auto isHit = [&](std::size_t i) {
        return level.hits[i] && level.hits[i]->object == object;
    };
    std::size_t nearest = 0;  // ray of which the place is repeated
    for (std::size_t point = 0; point < level.grid.Size(); ++point) {
        const std::size_t column = part.firstColumn + point % columns;
        const std::size_t i = (part.firstRow + point / columns) * layout.columns + column;
        if (isHit(i)) {
            nearest = i;
        } else if (column == part.firstColumn) {
            // A row that begins with a gap takes its first hit; one without hits, the last row's.
            for (std::size_t k = i + 1; k < i + columns; ++k)
                if (isHit(k)) {
                    nearest = k;
                    break;
                }
        }
        FillPoint(level.grid, point, level.rays[nearest], *level.hits[nearest]);
    }
    const QxHiddenVariables at = level.grid.Hidden();
    // One step along u is one to the next ray, which `Du` cannot know better.
    *at.du = *at.dv = 1;
    level.grid.Set("E", m_world.camera.Eye());
}

void RayScene::FillPoint(QxHostGrid& grid, std::size_t point, const Ray& ray, const Hit& hit) const
{
    const PlacedObject& object = m_world.objects[hit.object];
    const SurfacePoint place = m_world.geometry.PointAt(hit);
    const QxHiddenVariables at = grid.Hidden();
    at.P[point] = place.P;
    at.N[point] = place.N;
    at.Ng[point] = place.Ng;
    at.dPdu[point] = place.dPdu;
    at.dPdv[point] = place.dPdv;
    at.I[point] = ray.direction * hit.distance;
    at.s[point] = place.s;
    if (place.isRound)  // neighbours must not lie on different sides of the seam
        at.s[point] += std::round(at.s[0] - place.s);
    at.u[point] = at.s[point];
    at.t[point] = at.v[point] = place.t;
    at.Cs[point] = object.color;
    at.Os[point] = object.opacity;
}

/// Beyond the deepest level there is no light.
QxRGBColor RayScene::Trace(const QxRayQuery& query, float& distance)
{
    distance = -1;
    if (m_depth > m_world.rayLevels || QxLength(query.direction) == 0)
        return {0, 0, 0};
    const Ray ray = RayOf(query, query.direction);
    Arrival arrival = {};
    Follow({1, 1}, {&ray, 1}, {&arrival, 1});
    distance = arrival.distance;
    return arrival.color;
}

float RayScene::RayHit(const QxRayQuery& query)
{
    const auto hit = m_world.geometry.Intersect(RayOf(query, query.direction));
    return hit ? hit->distance : -1;
}

/// The share of the light that comes through all that is in the way.
QxRGBColor RayScene::Transmission(const QxRayQuery& query)
{
    const QxVector3 way = query.direction - query.position;
    Ray ray = RayOf(query, way);
    ray.far = QxLength(way) - BiasAt(query.direction, query.bias);
    QxRGBColor through = {1, 1, 1};
    for (int layer = 0; layer < k_mostLayers && !IsDark(through) && ray.near < ray.far; ++layer) {
        const auto hit = m_world.geometry.Intersect(ray);
        if (!hit)
            return through;
        const ShadowKind kind = m_world.objects[hit->object].shadow;
        if (kind == ShadowKind::Opaque || m_depth > m_world.rayLevels + 1)
            return {0, 0, 0};
        if (kind == ShadowKind::Shader)
            through = through * (QxRGBColor{1, 1, 1} - OpacityAt(ray, *hit));
        ray.near = hit->distance + BiasAt(ray.origin + ray.direction * hit->distance, 0);
    }
    return IsDark(through) ? QxRGBColor{0, 0, 0} : through;
}

QxRGBColor RayScene::OpacityAt(const Ray& ray, const Hit& hit)
{
    const LevelScope scope(*this, true);
    Level& level = m_levels[m_depth - 1];
    level.rays.assign(1, ray);
    level.hits.assign(1, hit);
    FillGrid(level, {1, 1}, {0, 0, 0, 0}, hit.object);
    m_surfaces[hit.object]->Run(level.grid, *this);
    return level.grid.Hidden().Oi[0];
}

/// The mean over places on a square between the four corners, one in each of its cells.
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
        const QxVector3 lower = query.sources[0] * (1 - u) + query.sources[1] * u;
        const QxVector3 upper = query.sources[3] * (1 - u) + query.sources[2] * u;
        QxRayQuery ray = {};
        ray.position = place;
        ray.direction = lower * (1 - v) + upper * v;
        ray.bias = query.bias;
        light = light + Transmission(ray);
    }
    return QxRGBColor{1, 1, 1} - light / (count * count);
}

/// Rays are spread by the cosine to the axis, so that each carries the same share of light.
float RayScene::Occlusion(const QxRayQuery& query, QxVector3& openDirection)
{
    constexpr float k_golden = 0.61803399F;  // turns by it never meet
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

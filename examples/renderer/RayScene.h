#pragma once

#include <deque>
#include <optional>
#include <span>
#include <vector>

#include "World.h"

/// A ray and the result of following it.
struct Path {
    Ray ray;                         // ignores the transparent surfaces passed so far
    std::optional<Hit> hit = {};     // the next hit, until it is shaded
    QxRGBColor through = {1, 1, 1};  // product of the transparencies passed so far
    QxRGBColor color = {0, 0, 0};    // sum of the light so far
    float distance = -1;             // of the first hit; below 0: none

    [[nodiscard]] bool Hits(unsigned int object) const { return hit && hit->object == object; }
};

/// The scene of one thread: instances of the shaders of all objects and lights, and answers that
/// trace rays. An answer that needs the color or opacity of what its rays hit shades it with the
/// same instances, nested in the run that asks.
class RayScene : public TextureScene {
public:
    /// The world must outlive the scene.
    explicit RayScene(const World& world);

    /// Restarts the random numbers; the sequence that follows depends only on `seed`.
    void SetSeed(unsigned int seed) { m_random = QxRandomStream(seed); }
    /// Follows camera rays, one for each point of the layout. Hits on one object are shaded as one
    /// grid, so neighbouring rays should hit neighbouring points. The paths are valid until the
    /// next call. Throws what a shader throws.
    std::span<const Path> Follow(const QxGrid& layout, std::span<const Ray> rays)
    {
        return Follow(LevelAt(0), layout, rays);
    }

    QxRGBColor Trace(const QxRayQuery& query, float& distance) override;
    float RayHit(const QxRayQuery& query) override;
    QxRGBColor Transmission(const QxRayQuery& query) override;
    /// Traces the shadow of an area light that is given by four corners. Any other shadow is none,
    /// since there are no shadow maps.
    QxRGBColor Shadow(const QxPointsQuery& query) override;
    float Occlusion(const QxRayQuery& query, QxVector3& openDirection) override;
    bool IsShadowRay() override { return LevelAt(OuterGrids()).isShadowRay; }
    float Random() override { return m_random.Next(); }

private:
    /// The memory for following rays. Shaders may trace further rays, so each depth of nesting has
    /// its own level, which is reused.
    struct Level {
        bool isShadowRay = false;
        unsigned int object = k_noObject;  // the object that is being shaded
        QxHostGrid grid{1, 1};
        std::vector<Path> paths;
    };

    /// Returns the number of grids around the one whose shader asks.
    [[nodiscard]] std::size_t OuterGrids() { return static_cast<std::size_t>(RayLevel()); }
    [[nodiscard]] Level& LevelAt(std::size_t depth);
    std::span<const Path> Follow(Level& level, const QxGrid& layout, std::span<const Ray> rays);
    [[nodiscard]] bool FindHits(std::vector<Path>& paths) const;
    void ShadeObject(Level& level, const QxGrid& layout, unsigned int object);
    void FillPoint(QxHostGrid& grid, std::size_t point, const Path& path) const;
    void Shade(Level& level, unsigned int object);
    [[nodiscard]] Ray RayOf(const QxRayQuery& query, const QxVector3& direction);
    [[nodiscard]] QxRGBColor OpacityAt(const Path& path);

    const World& m_world;
    std::vector<std::unique_ptr<QxShaderInstance>> m_surfaces;  // by object
    std::vector<std::unique_ptr<QxShaderInstance>> m_lights;
    std::deque<Level> m_levels;
    QxRandomStream m_random;
};

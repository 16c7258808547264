#pragma once

#include <deque>
#include <optional>
#include <span>
#include <vector>

#include "World.h"

/// A ray and the result of following it.
struct Path {
    Ray ray;                         // the rest of it, after surfaces that let light through
    std::optional<Hit> hit = {};     // that is not shaded yet
    QxRGBColor through = {1, 1, 1};  // share of the light that still comes through
    QxRGBColor color = {0, 0, 0};    // that has come so far
    float distance = -1;             // to the first hit; below 0: none

    [[nodiscard]] bool Hits(unsigned int object) const { return hit && hit->object == object; }
};

/// A thread's view of the world: instances of all shaders, and the answers that take rays. An
/// answer shades what its rays hit, with the same instances, within the run that asks.
class RayScene : public TextureScene {
public:
    /// The world must outlive the scene.
    explicit RayScene(const World& world);

    /// All random numbers from here on depend on this number alone.
    void SetSeed(unsigned int seed) { m_random = QxRandomStream(seed); }
    /// Follows camera rays, one for each point of the layout. Neighbours should hit neighbouring
    /// places: what they hit of one object is shaded as one grid. The paths last until the next
    /// call.
    std::span<const Path> Follow(const QxGrid& layout, std::span<const Ray> rays)
    {
        return Follow(LevelAt(0), layout, rays);
    }

    QxRGBColor Trace(const QxRayQuery& query, float& distance) override;
    float RayHit(const QxRayQuery& query) override;
    QxRGBColor Transmission(const QxRayQuery& query) override;
    /// Answers for a light whose corners are given; there are no shadow maps.
    QxRGBColor Shadow(const QxPointsQuery& query) override;
    float Occlusion(const QxRayQuery& query, QxVector3& openDirection) override;
    bool IsShadowRay() override { return LevelAt(OuterGrids()).isShadowRay; }
    float Random() override { return m_random.Next(); }

private:
    /// What following rays needs. Shaders may follow more of them, so each depth has its own level,
    /// which keeps its memory for the next time.
    struct Level {
        bool isShadowRay = false;
        unsigned int object = k_noObject;  // whose grid is being shaded
        QxHostGrid grid{1, 1};
        std::vector<Path> paths;
    };

    /// Grids around the one whose shader asks.
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

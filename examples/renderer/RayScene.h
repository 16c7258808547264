#pragma once

#include <deque>
#include <optional>
#include <span>
#include <vector>

#include "TextureScene.h"

/// What a ray brings back.
struct Arrival {
    QxRGBColor color;
    float distance;  // to what it hits first; below 0: nothing
};

/// A thread's view of the world: instances of all shaders, and the answers that take rays. An
/// answer shades what its rays hit, with the same instances, within the run that asks.
class RayScene : public TextureScene {
public:
    /// The world must outlive the scene.
    explicit RayScene(const World& world);

    /// What is random from here on depends on the number alone.
    void SetSeed(unsigned int seed) { m_random = QxRandomStream(seed); }
    /// Follows rays, one for each point of the layout. Neighbours should hit neighbouring places:
    /// what they hit of one object is shaded as one grid.
    void Follow(const QxGrid& layout, std::span<const Ray> rays, std::span<Arrival> arrivals);

    QxRGBColor Trace(const QxRayQuery& query, float& distance) override;
    float RayHit(const QxRayQuery& query) override;
    QxRGBColor Transmission(const QxRayQuery& query) override;
    /// Only for a light whose corners are given; there are no shadow maps.
    QxRGBColor Shadow(const QxPointsQuery& query) override;
    float Occlusion(const QxRayQuery& query, QxVector3& openDirection) override;
    bool IsShadowRay() override { return m_isShadowRay; }
    float RayLevel() override { return static_cast<float>(m_depth) - 1; }
    float Random() override { return m_random.Next(); }

private:
    /// What following rays needs while shaders run that may follow more of them. Each depth has its
    /// own and keeps its memory for the next time.
    struct Level {
        QxHostGrid grid{1, 1};
        std::vector<Ray> rays;
        std::vector<std::optional<Hit>> hits;
        std::vector<QxRGBColor> through;  // share of the light that still comes through
    };
    class LevelScope;
    /// The points of a layout from one corner to another, both included.
    struct Part {
        unsigned int firstColumn;
        unsigned int firstRow;
        unsigned int lastColumn;
        unsigned int lastRow;
    };

    [[nodiscard]] bool FindHits(Level& level, std::span<Arrival> arrivals) const;
    void ShadeObject(Level& level, const QxGrid& layout, unsigned int object,
                     std::span<Arrival> arrivals);
    [[nodiscard]] static Part FindPart(const Level& level, const QxGrid& layout,
                                       unsigned int object);
    void FillGrid(Level& level, const QxGrid& layout, const Part& part, unsigned int object) const;
    void FillPoint(QxHostGrid& grid, std::size_t point, const Ray& ray, const Hit& hit) const;
    [[nodiscard]] QxRGBColor OpacityAt(const Ray& ray, const Hit& hit);
    [[nodiscard]] QxRGBColor Sky(const QxVector3& direction) const;

    const World& m_world;
    std::vector<std::unique_ptr<QxShaderInstance>> m_surfaces;  // by object
    std::vector<std::unique_ptr<QxShaderInstance>> m_lights;
    std::deque<Level> m_levels;
    std::size_t m_depth = 0;  // levels that are in use
    bool m_isShadowRay = false;
    QxRandomStream m_random;
};

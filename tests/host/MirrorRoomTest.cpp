// Shades a room of mirrors by tracing rays in callbacks, and compares the picture with what optics
// predicts: a ray between mirrors is a straight line through mirrored copies of the room. So the
// expected color of a reflection is computed without the reflections before it.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "QxGeometry.h"
#include "helpers/ShaderFolder.h"
#include "host/QxHost.h"

namespace {

constexpr int k_levels = 10;
constexpr float k_mirrored = 0.8F;  // fraction of the light
constexpr QxVector3 k_room = {3, 2, 4};
constexpr QxVector3 k_eye = {1.1F, 0.9F, 0.7F};
constexpr QxVector3 k_lamp = {1.8F, 1.2F, 2.6F};

// A wall emits a color that depends on the place, and scatters the light of the lamp. Points whose
// s is 0 trace no ray.
constexpr const char* k_mirror = R"(
surface mirror(float Kr = 0; vector room = 1)
{
    Oi = 1;
    Ci = color(xcomp(P) / xcomp(room), ycomp(P) / ycomp(room), zcomp(P) / zcomp(room)) + diffuse(N);
    if (s > 0.5 && raylevel() < 10)
        Ci += Kr * trace(P, reflect(normalize(I), N));
}
)";
constexpr const char* k_light =
    "light lamp(point from = 0) { illuminate (from) Cl = 1 / (L . L); }";

class MirrorRoom : public QxHostScene {
public:
    MirrorRoom(const std::string& mirror, const std::string& lamp)
        : m_mirror(QxShader::Open(mirror), Spaces()),
          m_lamp(QxShader::Open(lamp), Spaces())
    {
        m_mirror.Set("Kr", k_mirrored);
        m_mirror.Set("room", k_room);
        m_lamp.Set("from", k_lamp);
        AddLight(m_lamp);
    }

    /// Places a point of the grid where the ray hits a wall from inside.
    static void Place(QxHostGrid& grid, std::size_t point, const QxVector3& from,
                      const QxVector3& along)
    {
        float distance = 1e9F;
        QxVector3 N = {0, 0, 0};
        for (int i = 0; i < 3; ++i) {
            const float there = ((along[i] > 0 ? k_room[i] : 0) - from[i]) / along[i];
            if (along[i] == 0 || there >= distance)
                continue;
            distance = there;
            N = {0, 0, 0};
            N[i] = along[i] > 0 ? -1.0F : 1.0F;
        }
        grid.Values<QxVector3>("P")[point] = from + along * distance;
        grid.Values<QxVector3>("N")[point] = N;
        grid.Values<QxVector3>("I")[point] = along * distance;
        grid.Values<float>("s")[point] = 1;
    }
    void Shade(QxHostGrid& grid) { m_mirror.Run(grid, *this); }

    /// Shades the hit as the last point of a grid, which at some levels is larger than the grids of
    /// the outer runs.
    QxRGBColor Trace(const QxRayQuery& query, float& /*distance*/) override
    {
        QxHostGrid grid(1 + static_cast<unsigned int>(RayLevel()) % 3 * 80, 1);
        grid.Set("s", 0);
        Place(grid, grid.Size() - 1, query.position, query.direction);
        Shade(grid);
        return grid.Values<QxRGBColor>("Ci")[grid.Size() - 1];
    }

private:
    QxShaderInstance m_mirror;
    QxShaderInstance m_lamp;
};

/// Maps a coordinate in the row of mirrored copies to the coordinate in the room that is seen
/// there.
double Fold(double x, double size)
{
    const double rest = std::fmod(std::abs(x), 2 * size);
    return rest <= size ? rest : 2 * size - rest;
}

/// Returns the color that a ray from the eye sees: the sum of the light of the first walls that the
/// straight line crosses, up to `k_levels` reflections.
QxRGBColor Expected(const QxVector3& along)
{
    std::vector<std::pair<double, int>> crossings;  // distance and axis
    for (int i = 0; i < 3; ++i)
        for (int wall = -40; wall <= 40 && along[i] != 0; ++wall)
            crossings.emplace_back((static_cast<double>(k_room[i]) * wall - k_eye[i]) / along[i],
                                   i);
    std::erase_if(crossings, [](const auto& crossing) { return crossing.first <= 0; });
    std::sort(crossings.begin(), crossings.end());
    QxRGBColor sum = {0, 0, 0};
    for (int level = 0; level <= k_levels; ++level) {
        const auto& [distance, axis] = crossings[level];
        QxVector3 place = {0, 0, 0};
        for (int i = 0; i < 3; ++i)
            place[i] = static_cast<float>(Fold(k_eye[i] + distance * along[i], k_room[i]));
        const QxVector3 toLamp = k_lamp - place;
        const float lit = std::abs(QxNormalize(toLamp)[axis]) / QxDot(toLamp, toLamp);
        for (int i = 0; i < 3; ++i)
            sum[i] +=
                static_cast<float>(std::pow(k_mirrored, level)) * (place[i] / k_room[i] + lit);
    }
    return sum;
}

}  // namespace

TEST(HostRecursion, TenLevelsOfMirrorsAgreeWithOptics)
{
    constexpr unsigned int columns = 12;
    constexpr unsigned int rows = 9;
    const ShaderFolder folder;
    for (const char* kind : {"--int", "--dso"}) {
        MirrorRoom room(folder.Build("mirror", k_mirror, kind),
                        folder.Build("lamp", k_light, kind));
        std::vector<QxVector3> directions;
        QxHostGrid picture(columns, rows);
        for (std::size_t i = 0; i < picture.Size(); ++i) {
            const float x = static_cast<float>(i % columns) / columns - 0.52F;
            const float y = static_cast<float>(i / columns) / rows - 0.47F;
            directions.push_back(QxNormalize({x, y, 0.7F}));
            MirrorRoom::Place(picture, i, k_eye, directions.back());
        }
        room.Shade(picture);
        for (std::size_t i = 0; i < picture.Size(); ++i) {
            const QxRGBColor expected = Expected(directions[i]);
            const QxRGBColor seen = picture.Values<QxRGBColor>("Ci")[i];
            for (int channel = 0; channel < 3; ++channel)
                EXPECT_NEAR(seen[channel], expected[channel], 2e-4F) << kind << ", pixel " << i;
        }
    }
}

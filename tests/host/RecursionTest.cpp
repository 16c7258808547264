// Renderers that shade while they answer a call: the surface that a ray hits, and the object that
// occludes a light.

#include <cmath>

#include "QxLights.h"
#include "host/HostFixture.h"

namespace {

/// Shades a grid in place of each answer, once in each.
class ShadingScene : public QxHostScene {
public:
    QxShaderInstance* inner = nullptr;
    unsigned int side = 1;
    unsigned int levels = 1;

    QxRGBColor Trace(const QxRayQuery&, float& distance) override
    {
        distance = RayLevel();
        return Shade("Ci");
    }
    QxRGBColor Transmission(const QxRayQuery&) override { return Shade("Oi"); }

private:
    QxRGBColor Shade(const char* result)
    {
        if (!inner || RayLevel() >= static_cast<float>(levels))
            return {0.5F, 0.5F, 0.5F};
        QxHostGrid grid(side, side);
        inner->Run(grid, *this);
        return grid.Values<QxRGBColor>(result)[0];
    }
};

class Recursion : public Host {};

/// The inside of a cube of side 2, whose walls mirror each other, with a lamp in it.
class MirrorRoom : public QxHostScene {
public:
    static constexpr float k_deepest = 10;
    static constexpr QxVector3 k_lamp = {0.2F, 0.5F, -0.3F};

    struct Hit {
        QxVector3 P;
        QxVector3 N;  // into the room
        QxRGBColor Cs;
    };
    QxShaderInstance* mirror = nullptr;

    static Hit Find(const QxVector3& from, const QxVector3& way)
    {
        int wall = 0;
        float nearest = 1e30F;
        for (int axis = 0; axis < 3; ++axis) {
            const float distance = ((way[axis] < 0 ? -1.0F : 1.0F) - from[axis]) / way[axis];
            if (way[axis] != 0 && distance < nearest) {
                nearest = distance;
                wall = axis;
            }
        }
        QxVector3 normal = {0, 0, 0};
        (&normal.x)[wall] = way[wall] < 0 ? 1.0F : -1.0F;
        const float shade = 0.3F + 0.1F * static_cast<float>(wall);
        return {from + way * nearest, normal, {shade, way[wall] < 0 ? 0.9F : 0.2F, 0.4F}};
    }
    void Fill(QxHostGrid& grid, unsigned int point, const QxVector3& from, const QxVector3& way)
    {
        const Hit hit = Find(from, way);
        grid.Values<QxVector3>("P")[point] = hit.P;
        grid.Values<QxVector3>("N")[point] = grid.Values<QxVector3>("Ng")[point] = hit.N;
        grid.Values<QxVector3>("I")[point] = hit.P - from;
        grid.Values<QxRGBColor>("Cs")[point] = hit.Cs;
    }
    QxRGBColor Trace(const QxRayQuery& query, float& distance) override
    {
        distance = 1;
        if (RayLevel() == k_deepest)
            return {0, 0, 0};
        QxHostGrid grid(1, 1);
        Fill(grid, 0, query.position, query.direction);
        mirror->Run(grid, *this);
        return grid.Values<QxRGBColor>("Ci")[0];
    }
    /// What the shaders compute, by hand.
    static QxRGBColor Reference(const QxVector3& from, const QxVector3& way, int level)
    {
        const Hit hit = Find(from, way);
        const QxVector3 I = hit.P - from;
        const QxVector3 away = k_lamp - hit.P;
        const float cosine = std::max(0.0F, QxDot(QxNormalize(away), hit.N));
        QxRGBColor seen = {0, 0, 0};
        if (static_cast<float>(level) < k_deepest)
            seen = Reference(hit.P, QxReflect(I, hit.N), level + 1);
        return hit.Cs * (cosine / QxDot(away, away)) + 0.8F * seen;
    }
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Kinds, Recursion, ::testing::Values("--dso", "--int"),
                         [](const auto& info) { return std::string(info.param).substr(2); });

TEST_P(Recursion, LeavesTheOuterGridAsItIs)
{
    const auto lamp = Open("lamp", R"(light lamp(float power = 1) {
        illuminate (point "shader" (0, 0, 0)) Cl = power / (L . L); })");
    const auto veiled = Open("veiled", R"(light veiled() {
        illuminate (point "shader" (0, 0, 0)) Cl = transmission(Ps, point "shader" (0, 0, 0)); })");
    const auto sky = Open("sky", "light sky() { Cl = transmission(Ps, E); }");
    const auto leaf = Open("leaf", "surface leaf() { Oi = 0.5; Ci = diffuse(N) + ambient(); }");
    const auto mirror = Open("mirror", R"(
        surface mirror(output varying color lit = 0) {
            varying string own = format("%f", u); color seen = trace(P, N); point Q = P + N;
            illuminance (Q, N, PI) lit += Cl;
            Ci = seen + lit + ambient(); Oi = own == format("%f", u) ? 0.5 : 0; })");
    const struct {
        std::shared_ptr<const QxShader> light;
        std::shared_ptr<const QxShader> inner;  // null: the outer instance
    } cases[] = {{lamp, leaf}, {veiled, leaf}, {sky, leaf}, {lamp, nullptr}, {veiled, nullptr}};
    for (const auto& c : cases)
        for (const unsigned int outer : {1U, 4U, 16U})
            for (const unsigned int inner : {0U, 1U, 4U, 16U, 4U}) {
                ShadingScene scene;
                QxShaderInstance light(c.light, scene.Spaces());
                QxShaderInstance first(mirror, scene.Spaces());
                QxShaderInstance second(leaf, scene.Spaces());
                scene.AddLight(light);
                std::vector<Numbers> lit;
                for (const bool nested : {false, true, true}) {
                    if (nested && inner > 0)
                        scene.inner = c.inner ? &second : &first;
                    scene.side = std::max(1U, inner);
                    QxHostGrid grid(outer, outer);
                    first.Run(grid, scene);
                    if (c.light == lamp)
                        lit.push_back(first.Get("lit").numbers);
                    EXPECT_EQ(grid.Get("Oi").numbers,
                              Numbers(std::size_t{3} * outer * outer, 0.5F));
                }
                if (!lit.empty()) {
                    EXPECT_TRUE(lit[0] == lit[1] && lit[1] == lit[2]) << outer << ' ' << inner;
                }
            }
}

TEST_P(Recursion, ShowsARoomOfMirrors)
{
    MirrorRoom room;
    QxShaderInstance lamp(Open("lamp", R"(light lamp(point from = 0) {
                              illuminate (from) Cl = 1 / (L . L); })"),
                          room.Spaces());
    lamp.Set("from", MirrorRoom::k_lamp);
    room.AddLight(lamp);
    QxShaderInstance mirror(
        Open("mirror",
             "surface mirror() { Ci = Cs * diffuse(N) + 0.8 * trace(P, reflect(I, N)); }"),
        room.Spaces());
    room.mirror = &mirror;
    QxHostGrid grid(16, 16);
    const auto wayOf = [](unsigned int point) {
        return QxVector3{0.07F * static_cast<float>(point % 16) - 0.5F,
                         0.06F * static_cast<float>(point / 16) - 0.4F, 1};
    };
    for (unsigned int i = 0; i < grid.Size(); ++i)
        room.Fill(grid, i, {0.1F, 0.1F, -0.9F}, wayOf(i));
    mirror.Run(grid, room);
    for (unsigned int i = 0; i < grid.Size(); ++i) {
        const QxRGBColor expected = MirrorRoom::Reference({0.1F, 0.1F, -0.9F}, wayOf(i), 0);
        const QxRGBColor shaded = grid.Values<QxRGBColor>("Ci")[i];
        for (int channel = 0; channel < 3; ++channel)
            EXPECT_NEAR(shaded[channel], expected[channel], 2e-4 * expected[channel]) << i;
    }
}

TEST_P(Recursion, EndsAtTheLimit)
{
    Load("surface test() { float d; Ci = trace(P, N, d) + d; }");
    ShadingScene scene;
    scene.inner = m_shader.get();
    scene.levels = 1000;
    scene.SetRayLevelLimit(5);
    EXPECT_EQ(ErrorOf([&] { m_shader->Run(m_grid, scene); }),
              "Rays are nested deeper than the limit of 5 levels");
    scene.levels = 5;
    m_shader->Run(m_grid, scene);
    EXPECT_EQ(m_grid.Values<QxRGBColor>("Ci")[3].g, 0.5F + 0 + 1 + 2 + 3 + 4 + 5);
    EXPECT_EQ(scene.RayLevel(), 0);

    struct Bare : QxShaderSupport {
        QxShaderInstance* inner = nullptr;
        QxRGBColor Trace(const QxRayQuery&, float&) override
        {
            QxHostGrid grid(1, 1);
            inner->Run(grid, *this, 0);
            return {};
        }
    } bare;
    bare.inner = m_shader.get();
    EXPECT_NE(ErrorOf([&] { m_shader->Run(m_grid, bare, 0); }).find("runs of itself"),
              std::string::npos);
}

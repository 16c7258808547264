// Tests renderers that shade while they answer a query: the surface that a ray hits, or the object
// that occludes a light.

#include <algorithm>

#include "host/HostFixture.h"

namespace {

/// Answers `trace` and `transmission` by shading one grid with `inner`; with gray if `inner` is
/// null or the ray level has reached `levels`.
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

}  // namespace

INSTANTIATE_TEST_SUITE_P(Kinds, Recursion, ::testing::Values("--dso", "--int"),
                         [](const auto& info) { return std::string(info.param).substr(2); });

TEST_P(Recursion, DoesNotChangeTheOuterGrid)
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

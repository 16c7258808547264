// Checks what random numbers depend on, and what they do not depend on.

#include <algorithm>
#include <cstdio>

#include "host/HostFixture.h"

namespace {

// Calls random() in all ways: once for all points, under conditions, in loops that points leave,
// for elements of arrays, and in default values of both kinds.
constexpr const char* k_draws = R"(
float Doubled(float by) { return by * random(); }
surface draws(float once = random(); varying float each = random() + u;
              output varying float sum = 0; output varying color tint = 0)
{
    uniform float all = random();
    varying float list[3];
    float i;

    sum = random() + random() + all;
    if (u > 0.5)
        sum += random();
    for (i = 0; i < 5 * v; i += 1) {
        if (random() > 0.8)
            break;
        sum += comp(color random(), 1) * Doubled(v);
    }
    list[1] = random();
    list[2 * u] = random();
    tint = color random();
    sum += list[0] + list[1] + once + each + xcomp(point random());
    Ci = tint;
    Oi = random();
}
)";

/// Returns the outputs `sum` and `tint` of `draws` at all points of a new grid.
Numbers SumsOf(QxShaderInstance& shader, QxHostScene& scene, const QxGrid& layout)
{
    QxHostGrid grid(layout.columns, layout.rows);
    shader.Run(grid, scene);
    Numbers all = shader.Get("sum").numbers;
    const Numbers tints = shader.Get("tint").numbers;
    all.insert(all.end(), tints.begin(), tints.end());
    return all;
}

TEST(RandomNumbers, AreTheSameInBothOutputsAndAtAllLevels)
{
    ShaderFolder folder;
    for (const QxGrid layout : {QxGrid{1, 1}, QxGrid{4, 3}, QxGrid{30, 20}}) {
        Numbers expected;
        for (const char* options : {"-O2", "-O0", "-O3", "--dso -O0", "--dso -O2", "--dso -O3"}) {
            QxHostScene scene;
            scene.SetRandomSeed(7);
            QxShaderInstance shader(QxShader::Open(folder.Build("draws", k_draws, options)),
                                    scene.Spaces());
            const Numbers sums = SumsOf(shader, scene, layout);
            if (expected.empty())
                expected = sums;
            EXPECT_EQ(sums, expected) << options << ", " << layout.columns;
        }
    }
}

class Random : public Host {};

TEST_P(Random, DependsOnSeedAndRunAlone)
{
    const auto opened = Open("draws", k_draws);
    m_shader = std::make_unique<QxShaderInstance>(opened, m_scene.Spaces());
    const QxGrid layout = {4, 3};
    const Numbers first = SumsOf(*m_shader, m_scene, layout);
    EXPECT_EQ(std::count(first.begin(), first.end(), first[0]), 1);
    EXPECT_EQ(SumsOf(*m_shader, m_scene, layout), first);
    m_scene.SetRun(1);
    const Numbers second = SumsOf(*m_shader, m_scene, layout);
    EXPECT_NE(second, first);
    m_scene.SetRun(0);
    EXPECT_EQ(SumsOf(*m_shader, m_scene, layout), first);

    // Another host begins with run 1, with a separate instance.
    QxHostScene other;
    QxShaderInstance shader(opened, other.Spaces());
    other.SetRun(1);
    EXPECT_EQ(SumsOf(shader, other, layout), second);
    other.SetRandomSeed(1);
    EXPECT_NE(SumsOf(shader, other, layout), second);
}

/// The surface calls ambient() for the whole grid and for single points.
TEST_P(Random, DiffersFromPointToPointInAmbientLights)
{
    constexpr const char* body = R"(
        varying float each = 0; uniform float all = random();
        if (all >= 0) each = random();
        Cl = color(each, all, %s); })";
    QxHostGrid grid(4, 3);
    for (const char* place : {"0", "zcomp(Ps)"}) {
        char text[200];
        std::snprintf(text, sizeof text, body, place);
        QxShaderInstance light(Open("sky", std::string("light sky() {") + text), m_scene.Spaces());
        const QxLightHandle handle = m_scene.AddLight(light);
        Load("surface test() { Ci = ambient(); if (u >= 0) Oi = ambient(); }");
        std::vector<float> expected;
        for (int run = 0; run < 2; ++run) {
            m_shader->Run(grid, m_scene);
            std::vector<float> each;
            for (std::size_t i = 0; i < grid.Size(); ++i) {
                const QxRGBColor color = grid.Values<QxRGBColor>("Ci")[i];
                EXPECT_EQ(color, grid.Values<QxRGBColor>("Oi")[i]);
                EXPECT_EQ(color.g, grid.Values<QxRGBColor>("Ci")[0].g);
                each.push_back(color.r);
            }
            if (run == 0)
                expected = each;
            EXPECT_EQ(each, expected);
            std::sort(each.begin(), each.end());
            EXPECT_EQ(std::unique(each.begin(), each.end()) - each.begin(), 12) << place;
        }
        for (unsigned int i = 0; i < grid.Size(); ++i)
            EXPECT_EQ(m_scene.AmbientAt({0, 0, 1}, i).r, expected[i]) << "also without a grid";
        m_scene.RemoveLight(handle);
    }
}

/// These hosts have no `QxHostScene`.
struct Bare : QxShaderSupport {};
struct Counting : QxShaderSupport {
    float next = 0;
    float Random() override { return next += 0.001F; }
};

TEST_P(Random, HostsMayOverrideTheGenerator)
{
    Load("surface test(output varying float a = 0; output varying float b = 0)"
         "{ a = random(); b = random(); }");
    Bare bare;
    m_shader->Run(m_grid, bare, 0);
    const Numbers a = m_shader->Get("a").numbers;
    const Numbers b = m_shader->Get("b").numbers;
    Numbers all = a;
    all.insert(all.end(), b.begin(), b.end());
    std::sort(all.begin(), all.end());
    EXPECT_EQ(std::unique(all.begin(), all.end()) - all.begin(), 8);
    EXPECT_GE(all.front(), 0);
    EXPECT_LT(all.back(), 1);
    m_shader->Run(m_grid, bare, 0);
    EXPECT_EQ(m_shader->Get("b").numbers, b);

    Counting counting;
    m_shader->Run(m_grid, counting, 0);
    EXPECT_FLOAT_EQ(counting.next, 0.008F);
    EXPECT_FLOAT_EQ(m_shader->Get("a").numbers[0], 0.001F);
}

INSTANTIATE_TEST_SUITE_P(Kinds, Random, ::testing::Values("--dso", "--int"),
                         [](const auto& info) { return std::string(info.param).substr(2); });

}  // namespace

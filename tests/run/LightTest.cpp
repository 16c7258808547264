// Checks light statements, loops over lights, and when the lights are evaluated.

#include <charconv>
#include <iterator>
#include <set>

#include <gtest/gtest.h>

#include "shaders/RunShader.h"

namespace {

/// Lights from above: the first has the intensity 1 - z at a point, the second 2 - z, and so on.
class LightsAbove : public QxShaderSupport {
public:
    void EvaluateLights(const QxVector3* positions, unsigned int points, QxLightInput* lights,
                        unsigned int count) override
    {
        ++m_runs;
        for (unsigned int light = 0; light < count; ++light)
            for (unsigned int i = 0; i < points; ++i) {
                const float strength = static_cast<float>(light + 1) - positions[i].z;
                lights[light].L[i] = {0, static_cast<float>(light), 1};
                lights[light].Cl[i] = {strength, strength, strength};
                lights[light].Ol[i] = {1, 1, 1};
            }
    }
    QxRGBColor Ambient(const QxVector3&) override { return {0.5F, 0.5F, 0.5F}; }
    [[nodiscard]] int Runs() const { return m_runs; }

private:
    int m_runs = 0;
};

struct LightCase {
    const char* source;
    std::size_t lights;
    const char* r;
    int runs;  // evaluations of the lights
};

/// Returns the first number of a variable at each point: "1 2 3 4 5 6" for the six points, "1 2 3"
/// if both rows are equal, and "1" if all numbers are equal.
std::string ValuesOf(SqxMachine& machine, const char* name)
{
    std::string row[2];
    std::set<std::string> numbers;
    for (std::size_t i = 0; i < 6; ++i) {
        char text[32];
        // Minus zero counts as zero.
        const float value = machine.ValueOf(name, i).at(0) + 0.0F;
        const std::string number(text, std::to_chars(text, std::end(text), value).ptr);
        numbers.insert(number);
        row[i / 3] += (i % 3 == 0 ? "" : " ") + number;
    }
    if (numbers.size() == 1)
        return *numbers.begin();
    return row[0] == row[1] ? row[0] : row[0] + ' ' + row[1];
}

}  // namespace

TEST(Light, RunsLoopsOverLights)
{
    const std::vector<float> flat(18, 0);
    static const LightCase cases[] = {
        {"r = comp(ambient(), 0);", 2, "0.5", 1},
        {"r = comp(diffuse(normal(0, 0, 1)), 0);", 1, "1", 1},
        {"illuminance (P) { r += comp(Cl, 0); }", 2, "3", 1},
        {"illuminance (P) { r += comp(Cl, 0); }", 0, "0", 1},
        // The second light is at 45 degrees.
        {"illuminance (P, vector(0, 0, 1), 0.5) { r += comp(Cl, 0); }", 2, "1", 1},
        {"if (u > 0.25) illuminance (P, vector(0, 0, 1), 0.5) { r += comp(Cl, 0); }", 2, "0 1 1",
         1},
        // The cone is computed before the loop; what the body changes has no effect on it.
        {"vector a = vector(0, 0, 1); illuminance (P, a, 0.9) { r += comp(Cl, 0);"
         " a = vector(0, -1, 0); }",
         2, "3", 1},
        {"float w = 0.9; uniform vector a[1] = {vector(0, 0, 1)}; illuminance (P, a[0], w) {"
         " r += comp(Cl, 0); w = 0.1 * u; }",
         2, "3", 1},
        {"varying vector a[2]; a[0] = vector(0, 0, 1); float w(float x) { extern vector a[2];"
         " illuminance (P, a[0], x) { r += comp(Cl, 0); a[0] = vector(0, -1, 0); } return r; }"
         "if (u > 0.25) r = w(0.9) + u;",
         2, "0 3.5 4", 1},
        {"N = normal(0, 0, 1); illuminance (N, N, 0.9) { r += comp(Cl, 0);"
         " N = normal(0, -1, 0); }",
         2, "1", 1},
        // The lights are evaluated once for P, and again after P has changed.
        {"illuminance (P) { r += comp(Cl, 0); } illuminance (P) { r += comp(Cl, 0); }", 1, "2", 1},
        {"illuminance (P) { r += comp(Cl, 0); } P += vector(0, 0, -u);"
         "illuminance (P) { r += 10 * comp(Cl, 0); }",
         1, "11 16 21", 2},
        {"illuminance (P) { r += comp(Cl, 0); } setzcomp(P, -1);"
         "r += comp(diffuse(normal(0, 0, 1)), 0);",
         1, "3", 2},
        // A loop over the lights at another point is no evaluation for P.
        {"illuminance (point(0, 0, -1)) { r += comp(Cl, 0); } r += comp(diffuse(normal(0, 0, 1)), "
         "0);",
         1, "3", 2},
        {"illuminance (P) { if (u > 0.25) r += comp(Cl, 0) * zcomp(L); }", 2, "0 3 3", 1},
        // break, continue and return leave the light loop too, so they skip the remaining lights.
        {"uniform float i; for (i = 0; i < 3; i += 1) {"
         " illuminance (P) { if (u > 0.25) break; r += comp(Cl, 0); } r += 100; }",
         2, "309 0 0", 1},
        {"uniform float i; for (i = 0; i < 3; i += 1) {"
         " illuminance (P) { r += comp(Cl, 0); if (u > 0.25) continue; } r += 100; }",
         2, "309 3 3", 1},
        {"float bright() { extern varying float u; illuminance (P) { if (comp(Cl, 0) > 1 + u)"
         " return 5; } } r = bright();",
         2, "5 5 0", 1},
        // A call in a light loop that evaluates the lights for P does not change the lights of the
        // loop, even if the point of the loop changes.
        {"illuminance (point(0, 0, -1)) { r += comp(Cl, 0);"
         " r += 10 * comp(diffuse(normal(0, 0, 1)), 0); r += 100 * comp(Cl, 0); }",
         1, "212", 3},
        {"point q = point(0, 0, -1); illuminance (q) { r += comp(Cl, 0); q = point 0;"
         " r += 10 * comp(diffuse(normal(0, 0, 1)), 0); r += 100 * comp(Cl, 0); }",
         1, "212", 3},
        {"illuminance (P) { r += comp(Cl, 0); P += vector(0, 0, -1);"
         " r += 10 * comp(diffuse(normal(0, 0, 1)), 0); r += 100 * comp(Cl, 0); }",
         1, "121", 3},
    };
    for (const LightCase& c : cases) {
        const std::string source =
            std::string("surface test(output varying float r = 0;) { ") + c.source + " }";
        for (int level = 0; level <= 3; ++level) {
            LightsAbove lights;
            SqxMachine machine;
            machine.SetSupport(&lights);
            machine.SetLightCount(c.lights);
            machine.Set("P", flat);
            ASSERT_TRUE(machine.LoadText(ByteCodeOf(source, level))) << machine.Message();
            ASSERT_TRUE(machine.Run()) << machine.Message() << " -O" << level << ": " << c.source;
            EXPECT_EQ(ValuesOf(machine, "r"), c.r) << "-O" << level << ": " << c.source;
            EXPECT_EQ(lights.Runs(), c.runs) << "-O" << level << ": " << c.source;
        }
    }
}

TEST(Light, RunsLightStatements)
{
    struct SourceCase {
        const char* body;
        const char* Cl;
        const char* L;  // x of the direction
    };
    // Ps is (u, v, 0).
    static const SourceCase cases[] = {
        {"illuminate (point(0, 0, -1)) Cl = 2;", "2", "0 0.5 1"},
        // Only the point below the light is in its cone.
        {"illuminate (point(0, 0, -1), vector(0, 0, 1), 0.2) Cl = 2;", "2 0 0 0 0 0", "0 0.5 1"},
        {"if (u > 0.25) illuminate (point(0, 0, -1)) Cl = 2;", "0 2 2", "0 0.5 1"},
        {"if (u > 0.25) { illuminate (point(1, 0, -1), vector(0, 0, 1), 0.2) Cl = 2; }"
         " else Cl = 3;",
         "3 0 2 3 0 0", "0 -0.5 0"},
        {"illuminate (point(u, 0, -1)) Cl = 2;", "2", "0"},
        {"solar (vector(1, 0, 0), 0) Cl = 4;", "4", "1"},
        {"solar (vector(u, 0, 0), 0.1) Cl = 4;", "4", "0 0.5 1"},
        {"if (u > 0.25) solar (vector(1, 0, 0), 0) Cl = 4;", "0 4 4", "0 1 1"},
        {"solar () Cl = 4;", "4", "-0.5 0 0.5"},
    };
    for (const SourceCase& c : cases) {
        const std::string source = std::string("light test() { ") + c.body + " }";
        for (int level = 0; level <= 3; ++level) {
            SqxMachine machine;
            machine.Set("Ps", {0, 0, 0, 0.5, 0, 0, 1, 0, 0, 0, 1, 0, 0.5, 1, 0, 1, 1, 0});
            ASSERT_TRUE(machine.LoadText(ByteCodeOf(source, level))) << machine.Message();
            ASSERT_TRUE(machine.Run()) << machine.Message() << " -O" << level << ": " << c.body;
            EXPECT_EQ(ValuesOf(machine, "Cl"), c.Cl) << "-O" << level << ": " << c.body;
            EXPECT_EQ(ValuesOf(machine, "L"), c.L) << "-O" << level << ": " << c.body;
        }
    }
}

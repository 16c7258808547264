// Checks what a run counts against its limits: the instructions that backward jumps repeat, in the
// strip that repeats most, and the memory of its variables. Also checks predefined variables that
// the host does not provide, and the value of L after loops over lights.

#include <gtest/gtest.h>

#include "QxHostError.h"
#include "host/QxHost.h"
#include "machine/FileParts.h"

namespace {

/// Returns the smallest step limit that suffices for four strips of points and two lights, where Kd
/// is 5; 1000 if a larger one is necessary. `s` has one value for each strip.
std::size_t StepsOf(const char* code, const std::vector<float>& s)
{
    FileParts parts;
    parts.code = code;
    QxHostScene scene;
    scene.AddDistantLight({0, 0, 1}, {1, 1, 1});
    scene.AddDistantLight({0, 0, 1}, {2, 2, 2});
    QxShaderInstance shader(QxShader::Read(parts.Text(), "test"), scene.Spaces());
    shader.Set("Kd", 5);
    QxHostGrid grid(256, 4);
    for (std::size_t i = 0; i < grid.Size(); ++i)
        grid.Values<float>("s")[i] = s[i / 256];
    const auto suffices = [&](std::size_t limit) {
        shader.SetStepLimit(limit);
        try {
            shader.Run(grid, scene);
        } catch (const QxHostError& error) {
            EXPECT_NE(std::string(error.what()).find("does not end within"), std::string::npos);
            return false;
        }
        return true;
    };
    std::size_t limit = 0;
    while (limit < 1000 && !suffices(limit))
        ++limit;
    return limit;
}

}  // namespace

TEST(QxMachineRun, CountsInstructionsThatJumpsRepeat)
{
    // The loop jumps back over three instructions four times.
    EXPECT_EQ(StepsOf("ADD_FLOAT_FLOAT uf uf #1 BOOL_LESS_THEN_FLOAT_FLOAT ub uf Kd "
                      "IF_TRUE_GOTO ub 0",
                      {0, 0, 0, 0}),
              12U);
    // In each strip the loop jumps back over four instructions, as often as the points need: the
    // end of the brackets is none, and the jump tests the varying flag.
    constexpr const char* loop = "BEGIN_PARALLEL BOOL_LESS_THEN_FLOAT_FLOAT vb vf s IF_TRUE vb "
                                 "ADD_FLOAT_FLOAT vf vf #1 END_IF END_PARALLEL "
                                 "SET_UNIFORM_BOOL_FLAG ub vb IF_TRUE_GOTO ub 0";
    EXPECT_EQ(StepsOf(loop, {0, 0, 0, 0}), 0U);
    EXPECT_EQ(StepsOf(loop, {4, 4, 4, 4}), 16U);
    EXPECT_EQ(StepsOf(loop, {1, 4, 0, 2}), 16U);
    // For each of the two loops, the strip that repeats most counts.
    const std::string twice = std::string(loop) + " CALL_PRIM_AREA_SIMD vf P " +
                              "BEGIN_PARALLEL BOOL_LESS_THEN_FLOAT_FLOAT vb vf s IF_TRUE vb "
                              "ADD_FLOAT_FLOAT vf vf #1 END_IF END_PARALLEL "
                              "SET_UNIFORM_BOOL_FLAG ub vb IF_TRUE_GOTO ub 22";
    EXPECT_EQ(StepsOf(twice.c_str(), {4, 0, 0, 1}), 32U);
}

TEST(QxMachineRun, CountsTheMemoryOfVariables)
{
    static const struct {
        const char* predefined;
        const char* code;
        std::size_t bytesOfPoint;
    } cases[] = {
        // An array of three numbers; the address and the dummy element of a reference.
        {"P\nCi\nE\n", "BEGIN_PARALLEL ARRAY_REF ve va uf END_PARALLEL", 12 + 4 + sizeof(void*)},
        // Zeros in place of L, which is written, and of Cl, and the dummy element.
        {"L\nCl\nCi\n",
         "BEGIN_PARALLEL ASSIGN_COLOR_FLOAT s #1 ASSIGN_COLOR_COLOR Ci P END_PARALLEL",
         12 + 12 + 4},
    };
    for (const auto& c : cases) {
        FileParts parts;
        parts.predefined = std::string("3\n") + c.predefined;
        parts.parameters = "2\n\"Kd\" \"uniform float\" \"\" 2 1 1\n"
                           "\"w\" \"uniform color\" \"\" 2 3 1\n";
        parts.code = c.code;
        const auto shader = QxShader::Read(parts.Text(), "test");
        const auto smallestLimit = [&](unsigned int points) {
            QxHostScene scene;
            std::vector<QxRGBColor> colors(points);
            QxHostPoints given = {{points, 1}, {}, {0, 0, 0}};
            given.variables.Ci = colors.data();
            given.variables.P = reinterpret_cast<QxVector3*>(colors.data());
            std::size_t limit = 1 << 20;
            for (std::size_t step = limit / 2; step > 0; step /= 2) {
                QxShaderInstance instance(shader, scene.Spaces());
                instance.SetMemoryLimit(limit - step);
                try {
                    instance.Run(given, scene);
                    limit -= step;
                } catch (const QxHostError&) {
                }
            }
            return limit;
        };
        EXPECT_EQ(smallestLimit(2048) - smallestLimit(1024), 1024 * c.bytesOfPoint) << c.code;
    }
}

TEST(QxMachineRun, KeepsMissingVariablesApart)
{
    FileParts parts;
    parts.predefined = "3\nL\nCl\nCi\n";
    // Ci = L + Cl;  L = 1;  Ci += Cl
    parts.code = "BEGIN_PARALLEL ADD_COLOR_COLOR Ci s P ASSIGN_COLOR_FLOAT s #1 "
                 "ADD_COLOR_COLOR Ci Ci P END_PARALLEL";
    QxHostScene scene;
    QxShaderInstance shader(QxShader::Read(parts.Text(), "test"), scene.Spaces());
    QxRGBColor colors[2] = {};
    QxHostPoints points = {{2, 1}, {}, {0, 0, 0}};
    points.variables.Ci = colors;
    for (int run = 0; run < 2; ++run) {
        shader.Run(points, scene);
        EXPECT_EQ(colors[1], (QxRGBColor{0, 0, 0})) << run;
    }
}

TEST(QxMachineRun, EndsLoopsOverLightsThatAJumpLeaves)
{
    // L belongs to a light only in the loop, however often the loop was left. The blocks leave it
    // at once, from within another loop, and in each of five turns, and then store L.
    for (const char* code :
         {"EVAL_LIGHTS_FOR_P BEGIN_ILLUMINANCE 7 GOTO 7 END_ILLUMINANCE 3 "
          "ASSIGN_COLOR_COLOR_SIMD Ci s",
          "EVAL_LIGHTS_FOR_P BEGIN_ILLUMINANCE 11 BEGIN_ILLUMINANCE 9 GOTO 11 END_ILLUMINANCE 5 "
          "END_ILLUMINANCE 3 ASSIGN_COLOR_COLOR_SIMD Ci s",
          "EVAL_LIGHTS_FOR_P BEGIN_ILLUMINANCE 8 IF_TRUE_GOTO #t 8 END_ILLUMINANCE 3 "
          "ADD_FLOAT_FLOAT uf uf #1 BOOL_LESS_THEN_FLOAT_FLOAT ub uf Kd IF_TRUE_GOTO ub 1 "
          "ASSIGN_COLOR_COLOR_SIMD Ci s"})
        for (const unsigned int side : {1U, 2U}) {
            FileParts parts;
            parts.predefined = "3\nL\nP\nCi\n";
            parts.code = code;
            QxHostScene scene;
            scene.AddDistantLight({0, 0, 1}, {1, 1, 1});
            QxShaderInstance shader(QxShader::Read(parts.Text(), "test"), scene.Spaces());
            shader.Set("Kd", 5);
            QxHostGrid grid(side, side);
            grid.Set("L", QxVector3{7, 8, 9});
            shader.Run(grid, scene);
            EXPECT_EQ(grid.Values<QxRGBColor>("Ci")[0], (QxRGBColor{7, 8, 9})) << code;
        }
    constexpr const char* nested =
        "EVAL_LIGHTS_FOR_P BEGIN_ILLUMINANCE 15 BEGIN_ILLUMINANCE 9 GOTO 9 "
        "END_ILLUMINANCE 5 ADD_FLOAT_FLOAT uf uf #1 END_ILLUMINANCE 3";
    // The outer loop jumps back over five instructions for each light.
    EXPECT_EQ(StepsOf(nested, {0, 0, 0, 0}), 10U);
}

TEST(QxMachineRun, AsksTheOuterLightAfterAnInnerLoop)
{
    struct : QxHostScene {
        std::vector<unsigned int> asked;
        bool LightMessage(unsigned int light, const char*, const QxMessageValue&) override
        {
            asked.push_back(light);
            return false;
        }
    } scene;
    scene.AddDistantLight({0, 0, 1}, {1, 1, 1});
    scene.AddDistantLight({0, 0, 1}, {2, 2, 2});
    FileParts parts;
    parts.code = "EVAL_LIGHTS_FOR_P BEGIN_ILLUMINANCE 16 BEGIN_ILLUMINANCE 7 END_ILLUMINANCE 5 "
                 "CALL_PRIM_LIGHTSOURCE uf us uf #1 #1 #1 END_ILLUMINANCE 3";
    QxShaderInstance shader(QxShader::Read(parts.Text(), "test"), scene.Spaces());
    for (const unsigned int side : {1U, 2U}) {
        QxHostGrid grid(side, side);
        scene.asked.clear();
        shader.Run(grid, scene);
        EXPECT_EQ(scene.asked, (std::vector<unsigned int>{0, 1})) << side;
    }
}

// Tests the host library with shaders that are compiled from source, and with files that are no
// shaders.

#include <gtest/gtest.h>

#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <malloc.h>
#include <memory>
#include <thread>

#include "host/HostFixture.h"

namespace {

using HostFiles = Host;

constexpr const char* k_values = R"(
surface test(float scale = 2; color tint = color(0.5, 0.25, 1); string name = "plain";
             float weights[2] = {1, 2}; point place = point(0, 0, 1); varying float each = 3;
             matrix frame = 2;
             output float sum = 10; output varying color seen = 0; output string said = "";
             output varying float pair[2] = {0, 0})
{
    sum += scale + weights[0] + weights[1];
    seen = tint * each;
    said = concat(name, "!");
    pair[0] = u;
    pair[1] = v;
    Ci = tint * scale * Cs;
    Oi = comp(frame, 0, 0) + zcomp(place);
}
)";

}  // namespace

INSTANTIATE_TEST_SUITE_P(Kinds, Host, ::testing::Values("--dso", "--int"),
                         [](const auto& info) { return std::string(info.param).substr(2); });

TEST_P(Host, PassesParametersInAndOut)
{
    Load(k_values);
    EXPECT_EQ(m_shader->Shader().Type(), QxShaderInterface::e_typeSurface);
    EXPECT_EQ(m_shader->Shader().Parameters().at(3).length, 2U);
    EXPECT_TRUE(m_shader->Shader().Parameters().at(7).output);
    EXPECT_TRUE(m_shader->Shader().Uses("Cs"));
    EXPECT_FALSE(m_shader->Shader().Uses("dPdu"));

    Run();
    EXPECT_EQ(m_shader->Get("sum").numbers, Numbers{15});
    EXPECT_EQ(m_shader->Get("said").texts, std::vector<std::string>{"plain!"});
    EXPECT_EQ(m_shader->Get("pair").numbers, (Numbers{0, 1, 0, 1, 0, 0, 1, 1}));
    EXPECT_EQ(m_grid.Get("Oi").numbers[0], 3);

    m_shader->Set("scale", 1);
    m_shader->Set("weights", Numbers{5, 6});
    m_shader->Set("tint", QxRGBColor{1, 2, 3});
    m_shader->Set("name", "other");
    m_shader->Set("place", QxVector3{0, 0, 4});
    m_shader->Set("frame", QxMatrix44::Scaling(7));
    m_shader->SetForEachPoint("each", Numbers{1, 2, 3, 4});
    m_grid.Set("Cs", QxRGBColor{1, 0.5F, 0});
    Run();
    EXPECT_EQ(m_shader->Get("sum").numbers, Numbers{22})
        << "an output has its initial value again in each run";
    EXPECT_EQ(m_shader->Get("seen").numbers, (Numbers{1, 2, 3, 2, 4, 6, 3, 6, 9, 4, 8, 12}));
    EXPECT_EQ(m_shader->Get("said").texts, std::vector<std::string>{"other!"});
    EXPECT_EQ(m_grid.Get("Oi").numbers[0], 11);
    EXPECT_EQ(m_grid.Values<QxRGBColor>("Ci")[3], (QxRGBColor{1, 1, 0}));
}

TEST_P(Host, ShadesGridsOfDifferentSizesInTurn)
{
    Load(k_values);
    QxHostGrid resized(4, 4);
    for (const unsigned int columns : {3U, 1U, 5U, 20U}) {
        QxHostGrid grid(columns, 2);
        resized.Resize(columns, 2);
        for (QxHostGrid* shaded : {&grid, &resized}) {
            m_shader->Run(*shaded, m_scene);
            EXPECT_EQ(m_shader->Get("seen").Count(), 2 * columns);
            EXPECT_EQ(m_shader->Get("seen").numbers.back(), 3);
            EXPECT_EQ(shaded->Values<float>("du").size(), 1U);
            EXPECT_EQ(shaded->Get("Cs").numbers, Numbers(6UL * columns, 1));
        }
    }
    EXPECT_THROW(resized.Resize(0, 2), QxHostError);
}

TEST_P(Host, RefusesValuesThatDoNotFit)
{
    Load(k_values);
    const struct {
        const char* name;
        QxHostValue value;
        const char* message;
    } cases[] = {
        {"scale", QxRGBColor{}, "Parameter 'scale' is a float, but is set to a color"},
        {"tint", QxVector3{}, "Parameter 'tint' is a color, but is set to a point"},
        {"name", 1, "Parameter 'name' is a string, but is set to a float"},
        {"scale", "1", "Parameter 'scale' is a float, but is set to a string"},
        {"weights", 1, "Parameter 'weights' is a float[2], but is set to 1 values"},
        {"scale", Numbers{1, 2}, "Parameter 'scale' is a float, but is set to 2 values"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ErrorOf([&] { m_shader->Set(c.name, c.value); }), c.message);
    EXPECT_NE(ErrorOf([&] { m_shader->Set("Kd", 1); }).find("has no parameter 'Kd'"),
              std::string::npos);
    EXPECT_NE(ErrorOf([&] { (void)m_shader->Get("Kd"); }), "");
    EXPECT_EQ(ErrorOf([&] {
                  m_shader->SetForEachPoint("scale", Numbers{1, 2, 3, 4});
              }),
              "Parameter 'scale' is uniform, it has one value for all points");
    m_shader->SetForEachPoint("each", Numbers{1, 2, 3});
    EXPECT_EQ(ErrorOf([&] { Run(); }), "Parameter 'each' is set to 3 values, but the grid needs 4");

    EXPECT_NE(ErrorOf([] { QxHostValue(QxValueType::Color, {1, 2}); }), "");
    EXPECT_NE(ErrorOf([&] { m_grid.Set("Cs", 1); }), "");
    EXPECT_NE(ErrorOf([&] { m_grid.Set("Kd", 1); }), "");
    EXPECT_NE(ErrorOf([&] { m_grid.Set("u", Numbers{1, 2}); }), "");
    EXPECT_NE(ErrorOf([&] { (void)m_grid.Values<float>("P"); }), "");
    EXPECT_NE(ErrorOf([] { QxHostGrid(0, 3); }), "");
    // Both sizes have more points than an index can number.
    for (const unsigned int rows : {65537U, 4000000000U}) {
        EXPECT_NE(ErrorOf([&] { QxHostGrid(65536, rows); }).find("is too large"),
                  std::string::npos);
        EXPECT_NE(ErrorOf([&] { m_grid.Resize(65536, rows); }), "");
        QxHostPoints points = m_grid;
        points.layout = {65536, rows};
        EXPECT_NE(ErrorOf([&] { m_shader->Run(points, m_scene); }), "");
    }
    EXPECT_EQ(m_grid.Layout().rows, 2U);
}

TEST_F(HostFiles, RefusesFilesThatAreNoShaders)
{
    std::ofstream("broken.sqx") << "\177ELF and nothing more";
    const struct {
        std::string path;
        const char* message;  // a part of it
    } cases[] = {
        {SLC_FAKE_OTHER_VERSION, "has interface version 6.0, but version 5.0 was expected"},
        {SLC_FAKE_NEWER_VERSION, "has interface version 5.1, but version 5.0 was expected"},
        {SLC_FAKE_INCOMPLETE, "is no shader, entry point 'QxEvaluate' is missing"},
        {m_folder.Path() / "missing.sqx", "There is no shader file '"},
        {m_folder.Path(), "There is no shader file '"},
        {SLC_EXAMPLES_FOLDER "/matte.sl", "is a source, but a compiled shader was expected"},
        {SLC_EXAMPLES_FOLDER "/renderer/README.md", "is no shader in byte-code: "},
        {"broken.sqx", "Cannot load 'broken.sqx', a shader built with --dso was expected"},
    };
    for (int round = 0; round < 2; ++round)
        for (const auto& c : cases)
            EXPECT_NE(ErrorOf([&] { (void)QxShader::Open(c.path); }).find(c.message),
                      std::string::npos)
                << c.path;
}

TEST_F(HostFiles, ReadsByteCodeFromMemory)
{
    const std::string path = m_folder.Build("test", k_values, "--int");
    std::string bytes = ShaderFolder::Read(path);
    QxShaderInstance shader(QxShader::Read(bytes, "memory"), m_scene.Spaces());
    shader.Run(m_grid, m_scene);
    EXPECT_EQ(shader.Get("sum").numbers, Numbers{15});
    EXPECT_EQ(shader.Shader().Name(), "memory");
    bytes.resize(bytes.size() / 2);
    EXPECT_NE(ErrorOf([&] { (void)QxShader::Read(bytes, "half"); }).find("half"),
              std::string::npos);
    EXPECT_NE(ErrorOf([&] { (void)QxShader::Read("\177ELF", "object"); }).find("shared object"),
              std::string::npos);
}

TEST_F(HostFiles, StopsShadersAtTheStepLimit)
{
    QxShaderInstance shader(QxShader::Open(m_folder.Build("test", R"(surface test(float go = 1) {
            Ci = 0; while (go > 0) Ci += 0.001; Oi = 1; })",
                                                          "--int")),
                            m_scene.Spaces());
    shader.SetStepLimit(10000);
    EXPECT_NE(ErrorOf([&] { shader.Run(m_grid, m_scene); }).find("does not end within"),
              std::string::npos);
    shader.Set("go", 0);
    shader.Run(m_grid, m_scene);
    EXPECT_EQ(m_grid.Values<QxRGBColor>("Oi")[0], (QxRGBColor{1, 1, 1})) << "it runs again";

    // A text that doubles in a loop ends at a limit, work on it counts as steps, and assigning it
    // to itself releases the old text.
    for (const char* work : {"t = concat(t, t);", "t = format(\"%s%s\", t, t);",
                             "t = concat(t, t); n += match(\"(a*)*$x\", t);",
                             "w[n] = concat(w[0], w[n]); w[n] = w[0]; t = w[0];"}) {
        const std::string source = "surface test(uniform float turns = 30; output float n = 0;"
                                   " output string t = \"a\") { uniform float i;"
                                   " uniform string w[2] = {\"a\", \"b\"};"
                                   " for (i = 0; i < turns; i += 1) { " +
                                   std::string(work) + " } }";
        QxShaderInstance texts(QxShader::Open(m_folder.Build("test", source, "--int")),
                               m_scene.Spaces());
        texts.Run(m_grid, m_scene);
        EXPECT_EQ(texts.Get("t").texts[0].size(), 65535U) << work;
        texts.SetStepLimit(10000);
        EXPECT_NE(ErrorOf([&] { texts.Run(m_grid, m_scene); }).find("does not end within"),
                  std::string::npos)
            << work;
    }
}

TEST_F(HostFiles, ClampsIndexesToTheArray)
{
    // Covers each kind of storage: parameters and locals, uniform and varying, also with one
    // element.
    constexpr const char* source = R"(
surface test(float k = 1e6; output float one[1] = {3}; varying float each[2] = {5, 6};
             output string said[2] = {"a", "b"}; output varying float r[4] = {0, 0, 0, 0};
             output float sum = 0; output varying float seen = 0)
{
    uniform float a[3] = {1, 2, 3};
    varying float b[2] = {u, 8};
    varying float e = (u - 0.5) * 1e9;
    a[k] += 10; a[-k] += 20; b[e] += 100; r[e] = 4; one[k] += 1; said[-k] = "z";
    sum = a[0] + 100 * a[2] + 10000 * one[-k];
    seen = b[e] + each[e] + 1000 * b[0];
}
)";
    for (const char* options : {"--int", "--dso -O0", "--dso -O2", "--dso -O3"}) {
        QxShaderInstance shader(QxShader::Open(m_folder.Build("test", source, options)),
                                m_scene.Spaces());
        shader.Run(m_grid, m_scene);
        EXPECT_EQ(shader.Get("sum").numbers, Numbers{40000 + 1300 + 21}) << options;
        EXPECT_EQ(shader.Get("seen").numbers, (Numbers{100105, 1114, 100105, 1114})) << options;
        EXPECT_EQ(shader.Get("r").numbers,
                  (Numbers{4, 0, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 4, 0, 4}))
            << options;
    }
}

TEST_F(HostFiles, HasTheSameBitsWithInstructionsOfThisProcessor)
{
    // These are sums of products, which a processor may round once instead of twice.
    constexpr const char* source =
        "surface test(output varying float r[2] = {0, 0}) {"
        " float a = u / 3 + 0.1; float b = v / 7 + 0.3;"
        " r[0] = a * b - 0.03; r[1] = noise(a * b + a, b * b - a) + mod(a * 3, b); }";
    QxHostGrid grid(16, 16);
    std::vector<Numbers> results;
    // A cross compiler does not know the processor that the test runs on.
    const char* const own = SLC_EMULATED ? "-O2" : "-march=native";
    for (const auto& [options, compiler] :
         {std::pair{"--int", ""}, std::pair{"--dso", "-O3"}, std::pair{"--dso", own}}) {
        QxShaderInstance shader(QxShader::Open(m_folder.Build("test", source, options, compiler)),
                                m_scene.Spaces());
        shader.Run(grid, m_scene);
        results.push_back(shader.Get("r").numbers);
        EXPECT_EQ(results.back(), results.front()) << options << compiler;
    }
}

TEST_F(HostFiles, StopsShadersWhenTheHostAsks)
{
    // The cases are a varying loop, a uniform loop, and work without any loop.
    for (const char* slow :
         {"while (u < go) Ci += 0.001;", "while (go > 0) sum += 1;", "Ci = noise(P);"}) {
        QxShaderInstance shader(
            QxShader::Open(m_folder.Build("test",
                                          "surface test(float go = 2; output float sum = 0) {"
                                          " Ci = 0; if (go > 0) { " +
                                              std::string(slow) + " } Oi = 1; }",
                                          "--int")),
            m_scene.Spaces());
        QxHostGrid grid(700, 700);  // some milliseconds of work
        int asked = 0;
        shader.SetStopTest([&] { return ++asked == 2; });
        EXPECT_THROW(shader.Run(grid, m_scene), QxHostStopped) << slow;
        EXPECT_EQ(asked, 2) << slow;
        shader.SetStopTest({});
        shader.Set("go", 0);
        shader.Run(grid, m_scene);
        EXPECT_EQ(grid.Values<QxRGBColor>("Oi")[0], (QxRGBColor{1, 1, 1})) << "it runs again";
    }
}

TEST_F(HostFiles, UnloadsAndReloadsSharedObjects)
{
    const std::string path = m_folder.Build("test", k_values, "--dso");
    for (int life = 0; life < 2; ++life) {
        QxShaderInstance first(QxShader::Open(path), m_scene.Spaces());
        QxShaderInstance second(QxShader::Open(path), m_scene.Spaces());
        second.Set("scale", 3);
        first.Run(m_grid, m_scene);
        second.Run(m_grid, m_scene);
        EXPECT_EQ(first.Get("sum").numbers, Numbers{15});
        EXPECT_EQ(second.Get("sum").numbers, Numbers{16});
    }
    EXPECT_EQ(dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD), nullptr) << "it is unloaded";
}

// The program is built with sanitizers, and so are the shaders.
TEST_F(HostFiles, LeaksNoMemory)
{
    if (*SLC_HOST_LIFE == '\0')
        GTEST_SKIP() << "another sanitizer watches the parts of this build";
    const std::string sanitized = "-O1 -fsanitize=address,undefined -fno-sanitize-recover=all";
    const std::string surface = m_folder.Build("owner", R"(
        surface owner(string name = "plain"; string names[2] = {"x", concat("y", "z")};
                      varying string each = "e"; output string said = "";
                      varying float late = noise(u); matrix frame = matrix "shader" 2;)
        {
            uniform string list[2] = {name, names[1]};
            varying string parts[2] = {"", ""};
            parts[1 - u] = concat(list[0], each);
            if (u > 0.5) parts[0] = format("%f %s", late, parts[1]);
            said = concat(list[0], "!", list[1]);
            color sum = 0;
            illuminance (E, N, PI / 2) { sum += Cl + diffuse(N); }
            if (parts[0] != parts[1]) Ci = sum + ambient() + spline(u, 0, 1, 2, 3) + xcomp(Du(P));
            Oi = comp(frame, 1, 1) + noise(transform("world", P)) + float texture("t", s, t);
        })",
                                               "-O2 --dso", sanitized);
    const std::string light = m_folder.Build("lamp", R"(
        light lamp(point from = point "shader" (0, 0, 0)) { illuminate (from) Cl = color(1, xcomp(Ps), 0); })",
                                             "-O2 --dso", sanitized);
    const int status =
        std::system((SLC_HOST_LIFE " '" + surface + "' '" + light + "' >output 2>&1").c_str());
    const std::string text = ShaderFolder::Read("output");
    EXPECT_EQ(status, 0) << text;
    EXPECT_NE(text.find("plain!yz other!b"), std::string::npos) << text;
}

TEST_P(Host, FindsSpacesByName)
{
    Load(R"(surface test(output varying point moved = 0; output varying point back = 0)
            { moved = transform("shader", P); back = transform("unknown", P); })");
    QxMatrix44 shift = QxMatrix44::Identity();
    shift[3][0] = 5;
    m_scene.Spaces().Define("shader", QxFrame3D(shift));
    Run();
    EXPECT_EQ(m_shader->Get("moved").numbers[0], -5.5F);
    EXPECT_EQ(m_shader->Get("back").numbers[0], -0.5F);
}

TEST_P(Host, RunsLightsOfEveryKind)
{
    Load(R"(surface test() {
                Ci = 0;
                illuminance (P, N, PI / 2) { Ci += Cl * normalize(L) . N; }
                Oi = ambient(); })");
    m_scene.AddAmbientLight({0.5F, 0, 0});
    m_scene.AddDistantLight({0, 0, 2}, {0, 1, 0});
    m_scene.AddDistantLight({0, 0, -2}, {100, 100, 100});  // from behind the surface
    m_scene.AddPointLight({-0.5F, 0.5F, -3}, {0, 0, 2});   // in front of the first point

    const auto spot = Open("spot", R"(
        light spot(float power = 1; point from = point "shader" (0, 0, 0))
        { illuminate (from) { Cl = power * color(1, 0, 0); } })");
    QxShaderInstance weak(spot, m_scene.Spaces());
    QxShaderInstance strong(spot, m_scene.Spaces());
    strong.Set("power", 10);
    strong.Set("from", QxVector3{-0.5F, 0.5F, 0});
    m_scene.AddLight(weak);
    m_scene.AddLight(strong);
    QxMatrix44 place = QxMatrix44::Identity();
    place[3][0] = -0.5F;
    place[3][1] = 0.5F;
    m_scene.Spaces().Define("shader", QxFrame3D(place));

    QxShaderInstance ambient(Open("sky", "light sky() { Cl = color(0, 0, zcomp(Ps)); }"),
                             m_scene.Spaces());
    m_scene.AddLight(ambient);
    EXPECT_EQ(m_scene.LightCount(), 5U);
    EXPECT_NE(ErrorOf([&] { m_scene.AddLight(*m_shader); }).find("is no light shader"),
              std::string::npos);

    Run();
    EXPECT_EQ(m_grid.Values<QxRGBColor>("Oi")[3], (QxRGBColor{0.5F, 0, 1}));
    const QxRGBColor lit = m_grid.Values<QxRGBColor>("Ci")[0];
    EXPECT_NEAR(lit.r, 11, 1e-4);
    EXPECT_NEAR(lit.g, 1, 1e-4);
    EXPECT_NEAR(lit.b, 2, 1e-4);
}

TEST_P(Host, RecognizesAmbientLightsByTheirCode)
{
    const struct {
        const char* body;
        bool ambient;
        bool steady;  // its light is the same at all points
    } cases[] = {
        {"Cl = power;", true, true},
        {"Cl = power * xcomp(Ps);", true, false},
        {"Cl = power * length(P) + zcomp(I) + u;", true, true},  // the position of the light
        {"if (power > 2) illuminate (point \"shader\" (0, 0, 0)) Cl = each;", false, true},
        {"solar (vector (0, 0, 1), 0) Cl = each;", false, true},
    };
    Load("surface test() { Ci = ambient(); Oi = 1; }");
    for (const auto& c : cases) {
        QxHostScene scene;
        QxShaderInstance light(
            Open("lamp", "light lamp(float power = 1; varying float each = 1) { " +
                             std::string(c.body) + " }"),
            scene.Spaces());
        if (!c.ambient)
            light.SetForEachPoint("each", Numbers{1, 2, 3, 4});
        scene.AddLight(light);
        EXPECT_EQ(scene.LightCount(), c.ambient ? 0U : 1U) << c.body;
        m_shader->Run(m_grid, scene);
        const auto Ci = m_grid.Values<QxRGBColor>("Ci");
        EXPECT_EQ(Ci[0] == Ci[1], c.steady) << c.body;
    }
}

// A shared object frees its locals itself, and only this test and the sanitizers notice if it does
// not.
TEST_P(Host, FreesItsMemoryAfterAnError)
{
    struct : QxHostScene {
        QxRGBColor Texture(const QxTextureQuery&) override { throw std::runtime_error("no file"); }
    } scene;
    Load(R"(surface test(varying float a = 1) {
                varying string said = format("%f", s); color c = texture("t", s, t);
                if (a > s) Ci = c; Oi = c * noise(a * s); if (said == "z") Oi = 0; })");
    QxHostGrid grid(64, 64);
    const auto used = [] { return mallinfo2().uordblks + mallinfo2().hblkhd; };
    std::size_t before = 0;
    for (int run = 0; run < 20; ++run) {
        EXPECT_THROW(m_shader->Run(grid, scene), std::runtime_error);
        if (run == 9)
            before = used();
    }
    EXPECT_LT(used(), before + 4096);
}

TEST_F(HostFiles, LimitsMemory)
{
    QxShaderInstance locals(
        QxShader::Open(m_folder.Build("test",
                                      "surface test() { float a[5000]; float i; for (i = 0; i < 9; "
                                      "i += 1) a[i] = u; Ci = a[3]; }",
                                      "--int")),
        m_scene.Spaces());
    QxShaderInstance parameters(
        QxShader::Open(m_folder.Build(
            "big", "surface big(varying float a[3] = {1, 2, 3}) { Ci = a[2]; Oi = 1; }", "--int")),
        m_scene.Spaces());
    for (QxShaderInstance* shader : {&locals, &parameters}) {
        QxHostGrid grid(30, 30);
        shader->SetMemoryLimit(10000);
        EXPECT_NE(
            ErrorOf([&] { shader->Run(grid, m_scene); }).find("than the limit of 10000 bytes"),
            std::string::npos);
        shader->SetMemoryLimit(100'000'000);
        shader->Run(grid, m_scene);
    }
}

TEST_P(Host, KeepsTheSpacesOfInstancesSeparate)
{
    const auto spot = Open("spot", R"(
        light spot(point from = point "shader" (0, 0, 0); vector axis = vector "shader" (0, 0, 1))
        { illuminate (from, axis, 0.2) { Cl = color(1, comp(axis, 0), distance(from, transform("world", from))); } })");
    Load(R"(surface test() { Ci = 0; illuminance (P) { Ci += Cl; } Oi = 1; })");
    const float places[] = {-0.5F, 0.5F, 7};  // the last one lights nothing
    std::vector<std::unique_ptr<QxShaderInstance>> lights;
    QxMatrix44 world = QxMatrix44::Identity();
    world[3][2] = 2;
    m_scene.Spaces().Define("world", QxFrame3D(world));
    for (const float x : places) {
        lights.push_back(std::make_unique<QxShaderInstance>(spot, m_scene.Spaces()));
        QxMatrix44 place = QxMatrix44::Identity();
        place[3][0] = x;
        place[3][1] = 0.5F;
        lights.back()->Spaces().Define("shader", QxFrame3D(place));
        m_scene.AddLight(*lights.back());
    }
    Run();
    const auto Ci = m_grid.Values<QxRGBColor>("Ci");
    EXPECT_EQ(Ci[0], (QxRGBColor{1, 0, 2}));
    EXPECT_EQ(Ci[1], (QxRGBColor{1, 0, 2}));
    EXPECT_EQ(Ci[2], (QxRGBColor{0, 0, 0}));
    EXPECT_EQ(lights[1]->Get("from").numbers, (Numbers{0.5F, 0.5F, 0}));

    // After a move of the spaces the default values follow.
    QxMatrix44 turned = QxMatrix44::Identity();
    turned[2][2] = -1;
    turned[3][1] = 0.5F;
    turned[3][2] = 3;
    lights[1]->Spaces().Define("shader", QxFrame3D(turned));
    world[3][2] = 0;
    m_scene.Spaces().Define("world", QxFrame3D(world));
    Run();
    EXPECT_EQ(Ci[0], (QxRGBColor{1, 0, 0}));
    EXPECT_EQ(Ci[1], (QxRGBColor{0, 0, 0}));
    EXPECT_EQ(lights[1]->Get("from").numbers, (Numbers{0, 0.5F, 3}));
}

TEST_P(Host, DescribesParameters)
{
    Load(
        R"(surface test(float a = 2; point p = point "shader" (1, 2, 3); color c = color "hsv" (0, 1, 1);
                         vector v = vector "object" (0, 0, 4); normal n[2] = {0, 1}; string t = "x\"y";
                         matrix m = matrix "world" 2; varying float late = noise(u))
            { Ci = a * c + late + comp(m, 0, 0); Oi = xcomp(p) + xcomp(v) + xcomp(n[1]); if (t == "q") Oi = 0; })");
    QxMatrix44 shift = QxMatrix44::Identity();
    shift[0][0] = shift[1][1] = shift[2][2] = 3;
    for (const char* space : {"shader", "object", "world"})
        m_scene.Spaces().Define(space, QxFrame3D(shift));
    const struct {
        const char* name;
        const char* space;
        bool object;
        Numbers value;
    } rows[] = {
        {"a", "", false, {2}},
        {"p", "shader", false, {1, 2, 3}},
        {"c", "hsv", false, {1, 0, 0}},
        {"v", "object", true, {0, 0, 4}},
        {"n", "current", false, {0, 0, 0, 1, 1, 1}},
        {"t", "", false, {}},
        {"m", "world", false, {2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2}},
    };
    const auto values = m_shader->Shader().Defaults();
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const QxShader::Parameter& parameter = m_shader->Shader().Parameters()[i];
        EXPECT_EQ(parameter.name, rows[i].name);
        EXPECT_EQ(parameter.space, rows[i].space) << rows[i].name;
        EXPECT_EQ(parameter.needsObjectSpace, rows[i].object) << rows[i].name;
        ASSERT_TRUE(values[i]) << rows[i].name;
        EXPECT_EQ(values[i]->numbers, rows[i].value) << rows[i].name;
    }
    EXPECT_EQ(values[5]->texts, std::vector<std::string>{"x\"y"});
    EXPECT_TRUE(m_shader->Shader().NeedsObjectSpace());
    EXPECT_FALSE(values[7]) << "it depends on the shading point";
    const auto& parameters = m_shader->Shader().Parameters();
    EXPECT_EQ(parameters[3].type, QxValueType::Vector);
    EXPECT_EQ(parameters[4].type, QxValueType::Normal);
    Run();
    EXPECT_EQ(m_shader->Get("p").numbers, (Numbers{3, 6, 9}))
        << "an instance's stands in its space";
}

TEST_P(Host, RunsOnBuffersOfTheCaller)
{
    Load(R"(surface test(varying float gain = 2; output varying color each[2] = {3, 4};
                         output float sum = 1; string t = "")
            { each[1] = gain * Cs; sum += 1; Ci = gain; Oi = color(comp(N, 0), comp(N, 1), comp(N, 2)); })");
    std::vector<QxRGBColor> Cs(2, {1, 2, 3});
    std::vector<QxRGBColor> Ci(2);
    std::vector<QxRGBColor> Oi(2);
    std::vector<QxVector3> N(2, {0, 0, 5});
    QxHostPoints points = {{2, 1}, {}, {0, 0, 0}};
    points.variables.Cs = Cs.data();
    points.variables.Ci = Ci.data();
    points.variables.Oi = Oi.data();
    EXPECT_EQ(ErrorOf([&] { m_shader->Run(points, m_scene); }),
              "Shader '" + m_shader->Shader().Name() + "' uses 'N', but the points have none");
    points.variables.N = N.data();

    Numbers gain = {7, 8};
    Numbers each(12);
    Numbers sum(1);
    m_shader->SetBuffer("gain", gain);
    m_shader->SetBuffer("each", each);
    m_shader->SetBuffer("sum", sum);
    for (int run = 0; run < 2; ++run)
        m_shader->Run(points, m_scene);
    EXPECT_EQ(each, (Numbers{3, 3, 3, 3, 3, 3, 7, 14, 21, 8, 16, 24}));
    EXPECT_EQ(m_shader->Get("each").numbers, each);
    EXPECT_EQ(sum, Numbers{2});
    gain[1] = 1;
    m_shader->Run(points, m_scene);
    EXPECT_EQ(Ci[1], (QxRGBColor{1, 1, 1}));
    EXPECT_EQ(Oi[0], (QxRGBColor{0, 0, 5}));

    {
        const std::unique_ptr<float[]> gone(new float[12]());
        m_shader->SetBuffer("gain", {gone.get(), 12});
        m_shader->SetBuffer("sum", {gone.get(), 1});
        for (int run = 0; run < 2; ++run)
            EXPECT_EQ(ErrorOf([&] { m_shader->Run(points, m_scene); }),
                      "The buffer of parameter 'gain' holds 12 numbers, but the grid needs 2");
        m_shader->SetBuffer("gain", {gone.get(), 2});
        m_shader->Run(points, m_scene);
        m_shader->Set("gain", 4);  // overrides the buffer
        m_shader->ClearBuffer("sum");
    }
    EXPECT_EQ(m_shader->Get("sum").numbers.size(), 1U) << "nothing reads the buffer any more";
    m_shader->Run(points, m_scene);
    EXPECT_EQ(Ci[1], (QxRGBColor{4, 4, 4}));
    EXPECT_EQ(m_shader->Get("sum").numbers, Numbers{2});
    m_shader->SetBuffer("gain", gain);
    m_shader->Run(points, m_scene);
    EXPECT_EQ(Ci[1], (QxRGBColor{1, 1, 1}));
    m_shader->Reset("gain");
    m_shader->Run(points, m_scene);
    EXPECT_EQ(Ci[1], (QxRGBColor{2, 2, 2}));
    EXPECT_EQ(ErrorOf([&] { m_shader->SetBuffer("sum", gain); }),
              "The buffer of parameter 'sum' holds 2 numbers, but 1 are needed");
    EXPECT_NE(ErrorOf([&] { m_shader->SetBuffer("each", {each.data(), 9}); }), "");
    EXPECT_NE(ErrorOf([&] { m_shader->SetBuffer("t", sum); }), "");
}

// The preset `tsan` watches this.
TEST_P(Host, ShadesInSeveralThreadsAtATime)
{
    const std::string path = m_folder.Build("test", R"(
        surface test(varying float a = 2; string t = "x"; output varying float each[2] = {1, 2};
                     float table[3] = {0, 0.5, 1}; point where = point "world" (1, 2, 3)) {
            uniform float i; color seen = 0; float got = 0;
            each[0] = a + noise(u * 7, v) + cellnoise(P); string s = concat(t, format("%f", u));
            while (each[0] > 1.5) each[0] -= 0.25;
            for (i = 0; i < 3; i += 1) each[1] += table[i] + min(random(), 0);
            illuminance (P, N, PI / 2) { lightsource("gain", got); seen += Cl * got; }
            seen += texture("wood") + environment("sky", N) + spline(u, 0, seen, seen, 1);
            if (match("x0.*", s) != 0) seen += Du(P . N) + area(P) + distance(where, P);
            Ci = color(each[0], s == "x" ? 1 : 0, 0) + seen + diffuse(N) + ambient(); Oi = 1; })",
                                            GetParam());
    const auto shader = QxShader::Open(path);
    const auto lamp = Open("lamp", R"(
        light lamp(point from = point "shader" (0, 0, 0); output float gain = 0.5) {
            illuminate (from) Cl = 1 / (L . L); })");
    std::vector<Numbers> results(4);
    std::vector<std::thread> threads;
    for (Numbers& result : results)
        threads.emplace_back([&path, &shader, &lamp, &result] {
            QxHostScene scene;
            QxShaderInstance light(lamp, scene.Spaces());
            scene.AddLight(light);
            // One shader is loaded by several threads at once, the other is shared by all.
            QxShaderInstance own(QxShader::Open(path), scene.Spaces());
            QxShaderInstance shared(shader, scene.Spaces());
            for (int run = 0; run < 20; ++run) {
                QxHostGrid grid(9, 7);
                (run % 2 == 0 ? own : shared).Run(grid, scene);
                const Numbers Ci = grid.Get("Ci").numbers;
                result.insert(result.end(), Ci.begin(), Ci.end());
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(results[0].size(), 20U * 9 * 7 * 3);
    for (const Numbers& result : results)
        EXPECT_EQ(result, results[0]);
}

TEST_P(Host, RunsDisplacementsAndImagers)
{
    Load("displacement test(float by = 1) { P += by * normalize(N); N = calculatenormal(P); }");
    EXPECT_TRUE(m_shader->Shader().ModifiesP());
    Run();
    EXPECT_EQ(m_grid.Values<QxVector3>("P")[0], (QxVector3{-0.5F, 0.5F, 0}));
    EXPECT_EQ(m_grid.Values<QxVector3>("N")[0], (QxVector3{0, 0, -1}));

    m_grid.Set("Ci", QxRGBColor{1, 1, 1});
    QxShaderInstance half(Open("half", "imager half() { Ci *= 0.5; alpha = 0.25; }"),
                          m_scene.Spaces());
    half.Run(m_grid, m_scene);
    EXPECT_EQ(m_grid.Values<QxRGBColor>("Ci")[0], (QxRGBColor{0.5F, 0.5F, 0.5F}));
    EXPECT_EQ(m_grid.Values<float>("alpha")[0], 0.25F);
}

TEST_P(Host, AnswersMessages)
{
    Load(R"(surface test(output float found = 0; output color tint = 0; output string tag = "") {
                found = attribute("user:tint", tint) + 10 * attribute("user:tag", tag)
                        + 100 * attribute("user:other", tag) + 1000 * attribute("user:tag", tint);
            })");
    m_scene.SetAnswer(QxMessage::Attribute, "user:tint", QxRGBColor{1, 2, 3});
    m_scene.SetAnswer(QxMessage::Attribute, "user:tag", "label");
    m_scene.SetAnswer(QxMessage::Option, "user:other", "elsewhere");
    Run();
    EXPECT_EQ(m_shader->Get("found").numbers, Numbers{11});
    EXPECT_EQ(m_shader->Get("tint").numbers, (Numbers{1, 2, 3}));
    EXPECT_EQ(m_shader->Get("tag").texts, std::vector<std::string>{"label"});
}

TEST_P(Host, PassesMessagesToOtherShaders)
{
    Load(R"(surface test(float Kd = 0.25; output float sum = 0; output varying float each = 0;
                         output string tag = ""; output float others = 0) {
                uniform float i = 0; varying float w = 0;
                illuminance (P, N, PI) {
                    i = 0; w = 0; lightsource("power", i); sum += i;
                    lightsource("each", w); each += w;
                    if (lightsource("made", i) != 0) sum += 100 * i;
                    if (lightsource("name", i) == 0) sum += 1000;
                }
                textureinfo("b.tex", "kind", tag);
                i = 0; displacement("Km", i); others = i; i = 0;
                if (atmosphere("density", i) == 0) others += 10;
                if (opposite("density", i) != 0) others += 100 * i;
                Ci = trace(P, N); Oi = 1; })");
    const auto lamp = Open("lamp", R"(
        light lamp(float power = 1; varying float each = 0; output float made = 0; string name = "") {
            uniform float k = 0; surface("Kd", k); made = k * power;
            illuminate (point "shader" (0, 0, 0)) Cl = 1; })");
    QxShaderInstance lamps[] = {{lamp, m_scene.Spaces()}, {lamp, m_scene.Spaces()}};
    for (int i : {0, 1}) {
        lamps[i].Set("power", 3 + i);
        m_scene.AddLight(lamps[i]);
    }
    m_scene.AddPointLight({0, 0, 0}, {1, 1, 1});
    m_scene.SetTextureAnswer("a.tex", "kind", "other");
    m_scene.SetTextureAnswer("b.tex", "kind", "shadow");
    QxShaderInstance bumps(Open("bumps", "displacement bumps(float Km = 7) { P += Km * N; }"),
                           m_scene.Spaces());
    QxShaderInstance fog(Open("fog", "volume fog(float density = 2) { Ci = density; }"),
                         m_scene.Spaces());
    QxHostObject object;
    object.displacement = &bumps;
    object.opposite = &fog;
    m_scene.SetObject(&object);
    lamps[1].SetForEachPoint("each", Numbers{1, 2, 3, 4});
    Run();
    EXPECT_EQ(m_shader->Get("sum").numbers, Numbers{3 + 4 + 3000 + 100 * 0.25F * (3 + 4)});
    EXPECT_EQ(m_shader->Get("each").numbers, (Numbers{1, 2, 3, 4}));
    EXPECT_EQ(m_shader->Get("tag").texts[0], "shadow");
    EXPECT_EQ(m_shader->Get("others").numbers, Numbers{7 + 10 + 200});
    bumps.Set("Km", 8);
    m_scene.SetObject(nullptr);
    m_scene.ClearTextureAnswer("b.tex", "kind");
    Run();
    EXPECT_EQ(m_shader->Get("others").numbers, Numbers{10});
    EXPECT_EQ(m_shader->Get("tag").texts[0], "");
}

TEST_P(Host, SwitchesLimitsAndRemovesLights)
{
    Load("surface test() { Ci = ambient(); illuminance (P) { Ci += Cl; } Oi = 1; }");
    const auto lit = [this] {
        Run();
        return m_grid.Values<QxRGBColor>("Ci")[3].r;
    };
    const QxLightHandle first = m_scene.AddPointLight({0, 0, 0}, {1, 1, 1});
    const QxLightHandle second = m_scene.AddDistantLight({0, 0, 1}, {10, 10, 10});
    const QxLightHandle third = m_scene.AddAmbientLight({100, 100, 100});
    EXPECT_EQ(lit(), 111);
    m_scene.SwitchLight(first, false);
    EXPECT_EQ(lit(), 110);
    EXPECT_EQ(m_scene.LightCount(), 1U);
    m_scene.SwitchLight(first, true);
    m_scene.LimitLight(second, {"stage", "actors"});
    m_scene.LimitLight(third, {"stage"});
    EXPECT_EQ(lit(), 1);
    QxHostObject actor;
    actor.categories = {"crowd", "actors"};
    m_scene.SetObject(&actor);
    EXPECT_EQ(lit(), 11);
    m_scene.RemoveLight(first);
    EXPECT_EQ(lit(), 10);
    EXPECT_NE(ErrorOf([&] { m_scene.SwitchLight(first, true); }), "");
    const QxHostScene::GridScope scope(m_scene, m_grid);
    EXPECT_NE(ErrorOf([&] { m_scene.RemoveLight(second); }), "");
}

TEST_P(Host, ShadesObjectsWithSeparateParameterSets)
{
    Load("surface test(float a = 1) { Ci = a; }");
    const auto shader =
        Open("other", "surface other(float a = 1; varying color c = 2) { Ci = a * c; }");
    QxShaderInstance instance(shader, m_scene.Spaces());
    const QxParameterHandle a = shader->Handle("a");
    EXPECT_NE(ErrorOf([&] { (void)shader->Handle("b"); }), "");
    QxParameterSet sets[] = {QxParameterSet(shader), QxParameterSet(shader)};
    sets[0].Set(a, 3);
    sets[1].SetForEachPoint("c", QxHostValue(QxValueType::Color, Numbers(12, 5)));
    instance.Set(a, 10);
    for (int round = 0; round < 2; ++round) {
        const float expected[] = {6, 5, 20};
        for (int i = 0; i < 3; ++i) {
            instance.Use(i < 2 ? &sets[i] : nullptr);
            instance.Run(m_grid, m_scene);
            EXPECT_EQ(m_grid.Values<QxRGBColor>("Ci")[1].g, expected[i]) << i;
        }
    }
    sets[0].Reset(a);
    instance.Use(&sets[0]);
    instance.Run(m_grid, m_scene);
    EXPECT_EQ(m_grid.Values<QxRGBColor>("Ci")[1].g, 2);
    EXPECT_NE(ErrorOf([&] { m_shader->Use(&sets[0]); }), "") << "a set of another shader";
    EXPECT_EQ(QxTypeNamed(QxTypeName(QxValueType::Normal)), QxValueType::Normal);
    EXPECT_STREQ(QxShader::TypeName(shader->Type()), "surface");
}

namespace {

/// Answers queries point by point, or those of a grid at once, with the same values.
template <bool grids>
class Asked : public QxHostScene {
public:
    int calls = 0;
    std::vector<unsigned int> texturePoints;
    std::vector<std::string> files;

    static QxRGBColor Of(const QxTextureQuery& q) { return {q.s[0], q.t[2], q.samples}; }
    static QxRGBColor Of(const QxPointsQuery& q)
    {
        return {q.points[0].x, q.points[2].y, q.fidelity};
    }
    static QxRGBColor Of(const QxRayQuery& q) { return {q.position.x, q.direction.y, q.samples}; }

    QxRGBColor Texture(const QxTextureQuery& q) override { return grids ? QxRGBColor{} : Of(q); }
    QxRGBColor Environment(const QxPointsQuery& q) override { return grids ? QxRGBColor{} : Of(q); }
    QxRGBColor Shadow(const QxPointsQuery& q) override { return grids ? QxRGBColor{} : Of(q); }
    QxRGBColor Transmission(const QxRayQuery& q) override { return grids ? QxRGBColor{} : Of(q); }
    QxRGBColor Trace(const QxRayQuery& q, float& distance) override
    {
        distance = q.position.y;
        return grids ? QxRGBColor{} : Of(q);
    }
    float RayHit(const QxRayQuery& q) override { return grids ? 0 : q.position.y; }
    float Occlusion(const QxRayQuery& q, QxVector3& open) override
    {
        open = q.position;
        return grids ? 0 : q.samples;
    }
    QxRGBColor IndirectDiffuse(const QxRayQuery& q, QxVector3& open, float& occlusion) override
    {
        open = q.position;
        occlusion = q.bias;
        return grids ? QxRGBColor{} : Of(q);
    }
    const void* FindFile(QxFileKind, const char* name) override
    {
        files.emplace_back(name);
        return this;
    }
    void TextureOverGrid(const QxGridQueries<QxTextureQuery>& asked, QxRGBColor* results) override
    {
        texturePoints.insert(texturePoints.end(), asked.points, asked.points + asked.count);
        EXPECT_EQ(asked.file, this);
        if (!Answer(asked, results))
            QxHostScene::TextureOverGrid(asked, results);
    }
    void EnvironmentOverGrid(const QxGridQueries<QxPointsQuery>& asked, QxRGBColor* r) override
    {
        if (!Answer(asked, r))
            QxHostScene::EnvironmentOverGrid(asked, r);
    }
    void ShadowOverGrid(const QxGridQueries<QxPointsQuery>& asked, QxRGBColor* r) override
    {
        if (!Answer(asked, r))
            QxHostScene::ShadowOverGrid(asked, r);
    }
    void TransmissionOverGrid(const QxGridQueries<QxRayQuery>& asked, QxRGBColor* r) override
    {
        if (!Answer(asked, r))
            QxHostScene::TransmissionOverGrid(asked, r);
    }
    void TraceOverGrid(const QxGridQueries<QxRayQuery>& asked, QxRGBColor* r, float* d) override
    {
        if (!Answer(asked, r))
            return QxHostScene::TraceOverGrid(asked, r, d);
        for (unsigned int i = 0; i < asked.count; ++i)
            d[i] = asked.queries[i].position.y;
    }
    void OcclusionOverGrid(const QxGridQueries<QxRayQuery>& asked, float* r, QxVector3* o) override
    {
        ++calls;
        if (!grids)
            return QxHostScene::OcclusionOverGrid(asked, r, o);
        for (unsigned int i = 0; i < asked.count; ++i) {
            r[i] = asked.queries[i].samples;
            o[i] = asked.queries[i].position;
        }
    }
    void RayHitOverGrid(const QxGridQueries<QxRayQuery>& asked, float* d) override
    {
        ++calls;
        if (!grids)
            return QxHostScene::RayHitOverGrid(asked, d);
        for (unsigned int i = 0; i < asked.count; ++i)
            d[i] = asked.queries[i].position.y;
    }
    void IndirectDiffuseOverGrid(const QxGridQueries<QxRayQuery>& asked, QxRGBColor* r,
                                 QxVector3* o, float* occlusions) override
    {
        if (!Answer(asked, r))
            return QxHostScene::IndirectDiffuseOverGrid(asked, r, o, occlusions);
        for (unsigned int i = 0; i < asked.count; ++i) {
            o[i] = asked.queries[i].position;
            occlusions[i] = asked.queries[i].bias;
        }
    }

private:
    template <class Query>
    bool Answer(const QxGridQueries<Query>& asked, QxRGBColor* results)
    {
        ++calls;
        for (unsigned int i = 0; grids && i < asked.count; ++i)
            results[i] = Of(asked.queries[i]);
        return grids;
    }
};

}  // namespace

TEST_P(Host, QueriesTheSceneOnceForAllPointsOfAGrid)
{
    Load(R"(surface test(output varying color got = 0; output varying float far = 0;
                         output varying vector open = 0; output varying float covered = 0) {
                if (u > 0.5) {
                    got = texture("a", s, t, "samples", 3);
                    float hit = trace(P, N);
                    got += hit + indirectdiffuse(P, N, 7, "bias", 0.5, "environmentdir", open, "occlusion", covered);
                }
                got += environment("b", N + P, "fidelity", 0.5) + transmission(P, N) + trace(P, N, far);
                Ci = got; Oi = shadow("c", P) + occlusion(P, N, 4); })");
    for (const unsigned int side : {2U, 1U}) {
        QxHostGrid grid(side, side);
        grid.Set("u", 1);
        if (side == 2)
            grid.Set("u", Numbers{0, 1, 0, 1});
        const auto made = [&](QxHostScene& scene) {
            std::vector<Numbers> values;
            m_shader->Run(grid, scene);
            for (const char* name : {"Ci", "Oi"})
                values.push_back(grid.Get(name).numbers);
            for (const char* name : {"far", "open", "covered"})
                values.push_back(m_shader->Get(name).numbers);
            return values;
        };
        Asked<true> all;
        Asked<false> each;
        const auto values = made(all);
        EXPECT_EQ(made(each), values);
        EXPECT_NE(values[0], Numbers(values[0].size(), values[0][0]));
        EXPECT_EQ(all.calls, 8);
        EXPECT_EQ(all.files, (std::vector<std::string>{"a", "b", "c"}));
        EXPECT_EQ(all.texturePoints,
                  side == 2 ? (std::vector<unsigned int>{1, 3}) : std::vector<unsigned int>{0});
    }
}

TEST_P(Host, LooksFilesUpOnce)
{
    // Without optimization a shared object queries point by point.
    m_shader = std::make_unique<QxShaderInstance>(
        QxShader::Open(m_folder.Build("test",
                                      R"(surface test(string name = "a") {
                                             Ci = texture(name, s, t) + texture("b", s, t); })",
                                      std::string(GetParam()) + " -O0")),
        m_scene.Spaces());
    Asked<true> first;
    Asked<true> second;
    const auto filesAfterRun = [this](Asked<true>& scene) {
        m_shader->Run(m_grid, scene);
        return scene.files.size();
    };
    EXPECT_EQ(filesAfterRun(first), 2U);
    EXPECT_EQ(filesAfterRun(first), 2U);
    EXPECT_EQ(filesAfterRun(second), 2U);
    EXPECT_EQ(filesAfterRun(first), 4U);
    first.ForgetFiles();
    EXPECT_EQ(filesAfterRun(first), 6U);
    m_shader->Set("name", "c");
    EXPECT_EQ(filesAfterRun(first), 7U);
    m_shader->Run(m_grid, static_cast<QxShaderSupport&>(first), 0);
    EXPECT_EQ(filesAfterRun(first), 7U) << "a scene is known by its base, too";
}

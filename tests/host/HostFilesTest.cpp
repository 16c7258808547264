// Tests which files the host library loads and unloads, the limits that it enforces on shaders, and
// how compiled shaders of both kinds free memory, clamp array indices and round.

#include <gtest/gtest.h>

#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <malloc.h>
#include <memory>

#include "host/HostFixture.h"
#include "host/QxErrorHolder.h"

namespace {

using HostFiles = Host;

}  // namespace

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
        {"/proc/self/mem", "Cannot read '/proc/self/mem'"},
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

    // A text that doubles in a loop stops growing at a limit, work on texts counts as steps, and a
    // text may be assigned to itself.
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
        shader->SetMemoryLimit(10000);
        EXPECT_NE(ErrorOf([&] { shader->Run(grid, m_scene); }), "") << "lowered after a run";
    }
}

TEST_F(HostFiles, GiveNeutralAnswersAfterAnErrorForALimitedTime)
{
    struct : QxHostScene {
        void TransmissionOverGrid(const QxGridQueries<QxRayQuery>&, QxRGBColor* results) override
        {
            results[0] = {5, 5, 5};
            throw QxHostError("no rays");
        }
    } scene;
    constexpr unsigned int points[] = {0, 1};
    QxRayQuery rays[2] = {};
    rays[1].direction = {0, 1, 0};
    const QxGridQueries<QxRayQuery> asked = {nullptr, rays, points, 2};
    QxFileHandles files;
    QxErrorHolder holder(scene, files);
    std::vector<QxRGBColor> colors(2);
    holder.TransmissionOverGrid(asked, colors.data());
    EXPECT_EQ(colors, (std::vector<QxRGBColor>{{1, 1, 1}, {1, 1, 1}})) << "also of the error";
    std::vector<QxVector3> open(2);
    Numbers covered = {2, 2};
    Numbers distances = {0, 0};
    colors = {{2, 2, 2}, {2, 2, 2}};
    holder.RayHitOverGrid(asked, distances.data());
    EXPECT_EQ(distances, (Numbers{-1, -1}));
    holder.OcclusionOverGrid(asked, covered.data(), open.data());
    EXPECT_EQ(covered, (Numbers{0, 0}));
    EXPECT_EQ(open[1], rays[1].direction);
    holder.AmbientOverGrid(open.data(), 2, colors.data());
    EXPECT_EQ(colors[1], (QxRGBColor{0, 0, 0}));
    EXPECT_EQ(holder.RayHit(rays[0]), -1);
    // Each of the three questions counts.
    const auto isUnit = [](float number) { return number >= 0 && number < 1; };
    const auto askAll = [&] {
        return isUnit(holder.Random()) && isUnit(holder.NextRandomNumber(0)) &&
               !holder.FindFile(QxFileKind::Texture, "a");
    };
    int count = 0;
    EXPECT_EQ(ErrorOf([&] {
                  while (count < 10'000'000 && askAll())
                      ++count;
              }),
              "no rays");
    EXPECT_NEAR(count, 10'000'000 / 3, 5);
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

// The program host_life (tests/host/life) is built with sanitizers, and so are the shaders.
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

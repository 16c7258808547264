// Tests shadeops from the source to the values that they compute, with both back ends.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

#include "QxHostError.h"
#include "helpers/ShaderFolder.h"
#include "helpers/TemporaryFolder.h"
#include "host/QxHost.h"
#include "shadeops/NativeShadeops.h"

namespace {

using Numbers = std::vector<float>;

std::string Options(int level, const std::string& backEnd)
{
    return "-O" + std::to_string(level) + " " + backEnd +
           " -I" SLC_SHADEOPS_FOLDER " -I" SLC_PROBES_FOLDER;
}

/// Runs shaders on a grid of 3 by 2 points with the texture coordinates `m_s` and `m_t`.
class Shadeops : public testing::Test {
protected:
    const Numbers m_s = {0.125, 0.5, 0.5, 0.25, 0.75, 0.9375};
    const Numbers m_t = {0.125, 0.25, 0.125, 0.75, 0.375, 0.125};
    ShaderFolder m_folder;
    QxHostScene m_scene;

    struct Outputs {
        Numbers Ci;
        Numbers Oi;
    };

    /// Returns the outputs of byte-code in the machine of the tests.
    Outputs Interpreted(const std::string& name, const std::string& source, int level,
                        const std::string& libraries)
    {
        SqxMachine machine;
        EXPECT_TRUE(machine.Load(m_folder.Build(name, source, Options(level, "--int"))))
            << machine.Message();
        const NativeShadeops native(machine, libraries);
        machine.Set("s", m_s);
        machine.Set("t", m_t);
        EXPECT_TRUE(machine.Run()) << machine.Message();
        Outputs outputs;
        for (std::size_t i = 0; i < m_s.size(); ++i) {
            for (const float number : machine.ValueOf("Ci", i))
                outputs.Ci.push_back(number);
            for (const float number : machine.ValueOf("Oi", i))
                outputs.Oi.push_back(number);
        }
        return outputs;
    }

    /// Returns the outputs of a shared object, or with "--int" those of byte-code in the machine of
    /// the product.
    Outputs Built(const std::string& name, const std::string& source, int level,
                  const std::string& libraries, const std::string& backEnd = "--dso")
    {
        return Shaded(m_folder.Build(name, source, Options(level, backEnd)),
                      {"/nowhere", libraries});
    }

    Outputs Shaded(const std::string& path, const std::vector<std::string>& folders)
    {
        QxShaderInstance shader(QxShader::Open(path, folders), m_scene.Spaces());
        QxHostGrid grid(3, 2);
        grid.Set("s", m_s);
        grid.Set("t", m_t);
        shader.Run(grid, m_scene);
        return {grid.Get("Ci").numbers, grid.Get("Oi").numbers};
    }

    void ExpectAtEachLevel(const std::string& name, const std::string& source,
                           const std::string& libraries, const Outputs& expected)
    {
        for (int level = 0; level <= 3; ++level) {
            const Outputs interpreted = Interpreted(name, source, level, libraries);
            EXPECT_EQ(interpreted.Ci, expected.Ci) << level;
            EXPECT_EQ(interpreted.Oi, expected.Oi) << level;
            for (const char* backEnd : {"--dso", "--int"}) {
                const Outputs built = Built(name, source, level, libraries, backEnd);
                EXPECT_EQ(built.Ci, expected.Ci) << level << backEnd;
                EXPECT_EQ(built.Oi, expected.Oi) << level << backEnd;
            }
        }
    }
};

// Worked out by hand for threads = 2 and wear = 0.25. The last columns are how far wave(s) is on
// the way between two or three yarns, and the color there:
//   s       t      threshold at 2s, 2t   wave(2t, 0.5)  wave(s)  of the way   color
//   0.125   0.125  cell 1, 1: 4.5 / 16   0.25           0.25     half         (0.25, 0.03125, 0)
//   0.5     0.25   cell 0, 2: 3.5 / 16   a hole
//   0.5     0.125  cell 0, 1: 12.5 / 16  0.25           1        all          (0, 0, 1)
//   0.25    0.75   cell 2, 2: 1.5 / 16   a hole
//   0.75    0.375  cell 2, 3: 13.5 / 16  0.25           0.5      to the next  (0, 0.1875, 0)
//   0.9375  0.125  cell 3, 1: 6.5 / 16   0.25           0.125    a quarter    (0.375, 0.015625, 0)
TEST_F(Shadeops, ShadeTheClothOfTheExample)
{
    const Outputs expected = {{0.0625, 0.0078125, 0, 0, 0, 0, 0, 0, 0.25, 0, 0, 0, 0, 0.046875, 0,
                               0.09375, 0.00390625, 0},
                              {1, 1, 1, 0, 0, 0, 1, 1, 1, 0, 0, 0, 1, 1, 1, 1, 1, 1}};
    ExpectAtEachLevel("woven", TemporaryFolder::Read(SLC_WOVEN), SLC_SHADEOPS_FOLDER, expected);
}

/// An array that the shader may not write is passed as a copy.
TEST_F(Shadeops, DoNotChangeArraysThatTheShaderMayNotWrite)
{
    constexpr const char* source = R"(
float turned(float w[3]) { return reverse(w); }
float both(float w[3]; output float o[3]) { return reverse(w) + 100 * reverse(o); }
surface probe(uniform float a[3] = {1, 2, 3}; varying float b[3] = {4, 5, 6};
              output varying float c[3] = {s, 10, t})
{
    float w[3] = {s, 10, t}, x[3] = {1, 2, 3};
    uniform float y[3] = {7, 8, 9};
    Oi = color(reverse(a) + 10 * reverse(b), turned(w) + turned(y), reverse(c));
    Ci = color(a[0] + 10 * b[0] + 100 * y[0], w[0], c[0]);
    Oi += color(0, 0, both(w, x) + 10000 * x[0]);
}
)";
    Outputs expected;
    for (std::size_t i = 0; i < m_s.size(); ++i) {
        const Numbers Ci = {741, m_s[i], m_t[i]};
        const Numbers Oi = {63, m_t[i] + 9, m_t[i] + (m_t[i] + 300) + 30000};
        expected.Ci.insert(expected.Ci.end(), Ci.begin(), Ci.end());
        expected.Oi.insert(expected.Oi.end(), Oi.begin(), Oi.end());
    }
    ExpectAtEachLevel("probe", source, SLC_PROBES_FOLDER, expected);
}

/// A library may change an array, so reads of its elements must not move across the call.
TEST_F(Shadeops, WriteArraysAfterReadsBeforeTheCallAndBeforeReadsAfterIt)
{
    constexpr const char* source = R"(
float both(output uniform float w[3]) { return w[0] + 10 * reverse(w); }
float stored(output uniform float first; output uniform float w[3])
{
    float x = store(w, s);
    return x * first;
}
surface probe()
{
    uniform float a[3] = {1, 2, 3};
    float b[3] = {s, 10, t};
    uniform float before = a[0] + 10 * reverse(a);
    uniform float after = reverse(a) + 10 * a[0];
    float each = b[0] + 10 * reverse(b);
    Ci = color(before, after, each);
    Oi = color(both(a), a[2 * a[2]] + 10 * reverse(a), stored(a[0], a));
}
)";
    Outputs expected;
    for (std::size_t i = 0; i < m_s.size(); ++i) {
        const Numbers Ci = {31, 11, m_s[i] + 10 * m_t[i]};
        const Numbers Oi = {31, 11, m_s[i] * m_s.back()};
        expected.Ci.insert(expected.Ci.end(), Ci.begin(), Ci.end());
        expected.Oi.insert(expected.Oi.end(), Oi.begin(), Oi.end());
    }
    ExpectAtEachLevel("probe", source, SLC_PROBES_FOLDER, expected);
}

/// A file does not distinguish an array of length 1 from a single value.
TEST_F(Shadeops, WriteArraysOfLengthOne)
{
    constexpr const char* source = R"(
float kept(float w[1]) { return store(w, 7) + 10 * w[0]; }
surface probe(uniform float a[1] = {1}; output uniform float b[1] = {2};
              output varying float c[1] = {3})
{
    uniform float d[1] = {4};
    varying float e[1] = {5}, f[1] = {6};
    float sum = store(a, 10) + store(b, 20) + store(c, s) + store(d, 40) + store(e, t);
    if (s > 0.4)
        sum += store(f, 60);
    Ci = color(a[0] + b[0] + d[0], c[0], e[0]);
    Oi = color(f[0], kept(d), sum);
}
)";
    Outputs expected;
    for (std::size_t i = 0; i < m_s.size(); ++i) {
        const bool more = m_s[i] > 0.4F;
        const Numbers Ci = {1 + 20 + 40, m_s[i], m_t[i]};
        const Numbers Oi = {more ? 60.0F : 6.0F, 7 + 400, 70 + m_s[i] + m_t[i] + (more ? 60 : 0)};
        expected.Ci.insert(expected.Ci.end(), Ci.begin(), Ci.end());
        expected.Oi.insert(expected.Oi.end(), Oi.begin(), Oi.end());
    }
    ExpectAtEachLevel("probe", source, SLC_PROBES_FOLDER, expected);
}

/// Whether a shadeop call in a function is uniform is known only where that function is expanded.
TEST_F(Shadeops, RunOnceForTheGridInAFunctionThatIsCalledWithUniformValues)
{
    constexpr const char* source = R"(
float once(float x) { return tick(x); }
surface probe()
{
    uniform float a = once(2), b = once(3);
    float c = once(4);
    Ci = color(a, b, c);
    c = once(s);
    Oi = c - 3 > 6 ? 2 : 1;
}
)";
    Outputs expected;
    for (std::size_t i = 0; i < m_s.size(); ++i)
        for (const float number : {1, 2, 3}) {
            expected.Ci.push_back(number);
            expected.Oi.push_back(1);
        }
    ExpectAtEachLevel("probe", source, SLC_PROBES_FOLDER, expected);
}

/// A library sees the elements of a varying array contiguously for each point, may write to them,
/// and may write its result before it reads its arguments.
TEST_F(Shadeops, AcceptArraysTextsAndTheirOwnTarget)
{
    constexpr const char* source = R"(
surface probe(uniform float given = sum(1, 2))
{
    float a[3];
    uniform float b[2];
    uniform string text = longer("long", "longer");
    float i, each = 0;
    a[0] = s;
    a[1] = 10;
    a[2] = t;
    b[0] = 1;
    b[1] = given;
    color c = color(s, 0, 0);
    c = swap(c);
    if (s > 0.4) {
        a[1] = reverse(a);
        a[0] = sum(a, 3, text);
    }
    for (i = 0; i < 2; i += 1)
        each += sum(b, 2, "");
    b[0] = sum(b, 2, "");
    Ci = c + color(a[0], a[1], 0);
    Oi = color(each, b[0], 0);
    if (text == longer("longer", ""))
        Oi += color(0, 0, 1);
}
)";
    Outputs expected;
    for (std::size_t i = 0; i < m_s.size(); ++i) {
        const bool turned = m_s[i] > 0.4F;
        const Numbers color = {turned ? m_t[i] + m_t[i] + m_s[i] : m_s[i], turned ? m_t[i] : 10,
                               m_s[i]};
        expected.Ci.insert(expected.Ci.end(), color.begin(), color.end());
        expected.Oi.insert(expected.Oi.end(), {8, 4, 1});
    }
    ExpectAtEachLevel("probe", source, SLC_PROBES_FOLDER, expected);
}

TEST_F(Shadeops, GiveBothBackEndsTheSameInFunctionsLoopsAndDefaultValues)
{
    constexpr const char* source = R"(
float soft(float x; output float seen)
{
    float y = wave(x, 2);
    if (y > 1)
        seen = wave(y);
    return wave(y * s) + wave(0.25);
}
surface late(varying float k = wave(s); uniform float w[2] = {wave(0.25), wave(0.125, 4)})
{
    color yarns[3] = {color(1, 0, 0), s, 2};
    float j, seen = 0;
    for (j = 0; j < wave(w[0]) + 2; j += 1) {
        float q = soft(k + j * t, seen);
        if (q > 1)
            continue;
        Ci += ramp(q, yarns);
        yarns[1] += q;
    }
    wave(3);
    Oi = color(w[0], w[1], dither(s, t) + seen);
}
)";
    for (const int level : {0, 3}) {
        const Outputs interpreted = Interpreted("late", source, level, SLC_SHADEOPS_FOLDER);
        const Outputs built = Built("late", source, level, SLC_SHADEOPS_FOLDER);
        const Outputs run = Built("late", source, level, SLC_SHADEOPS_FOLDER, "--int");
        EXPECT_EQ(run.Ci, built.Ci) << level;
        EXPECT_EQ(run.Oi, built.Oi) << level;
        ASSERT_EQ(interpreted.Ci.size(), built.Ci.size());
        for (std::size_t i = 0; i < built.Ci.size(); ++i) {
            EXPECT_FLOAT_EQ(interpreted.Ci[i], built.Ci[i]) << level << ' ' << i;
            EXPECT_FLOAT_EQ(interpreted.Oi[i], built.Oi[i]) << level << ' ' << i;
        }
        EXPECT_NE(built.Ci, Numbers(built.Ci.size(), 0));
        EXPECT_EQ(built.Oi[1], 1) << "its default value";
    }
}

/// Returns the value of an int that a library exports.
int Exported(void* library, const char* name)
{
    return *static_cast<int*>(::dlsym(library, name));
}

TEST_F(Shadeops, StartAndStopOnceAndRunForEachPoint)
{
    const std::unique_ptr<void, int (*)(void*)> library(
        ::dlopen(SLC_PROBES_FOLDER "/probes.so", RTLD_LAZY), &::dlclose);
    ASSERT_NE(library, nullptr);
    const Outputs expected = {{1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5, 5, 5, 6, 6, 6},
                              {7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7}};
    for (int life = 1; life <= 2; ++life) {
        const Outputs outputs =
            Built("ticks", "surface ticks() { Ci = tick(s); uniform float u1 = tick(1); Oi = u1; }",
                  2, SLC_PROBES_FOLDER);
        EXPECT_EQ(outputs.Ci, expected.Ci);
        EXPECT_EQ(outputs.Oi, expected.Oi);
        EXPECT_EQ(Exported(library.get(), "started"), life);
        EXPECT_EQ(Exported(library.get(), "stopped"), life);
    }
    // Byte-code starts a shadeop at its first call.
    {
        const std::string path =
            m_folder.Build("later", "surface later(float go = 0) { if (go > 0) Ci = tick(s); }",
                           Options(2, "--int"));
        QxShaderInstance shader(QxShader::Open(path, {SLC_PROBES_FOLDER}), m_scene.Spaces());
        for (const int go : {0, 1, 1}) {
            QxHostGrid grid(3, 2);
            shader.Set("go", go);
            shader.Run(grid, m_scene);
            EXPECT_EQ(Exported(library.get(), "started"), 2 + go);
        }
        EXPECT_EQ(Exported(library.get(), "stopped"), 2);
    }
    EXPECT_EQ(Exported(library.get(), "stopped"), 3);
}

/// A shadeop cannot change constants of a program or values that all points share, neither for the
/// next point nor for the next run.
TEST_F(Shadeops, CannotChangeSharedValues)
{
    constexpr const char* source = R"(
surface spoilt(uniform color tint = color(2, 3, 4); uniform string name = "tint")
{
    uniform string names[2] = {"one", name};
    uniform float uf = 0.5;
    Ci = color(spoil(1, color(1, 1, 1), "a", names), spoil(uf, tint, name, names), 0);
    Oi = color(uf, comp(tint, 0), 0);
    if (name == "tint" && names[0] == "one" && names[1] == name)
        setcomp(Oi, 2, 1);
}
)";
    const std::string path = m_folder.Build("spoilt", source, Options(2, "--int"));
    QxShaderInstance shader(QxShader::Open(path, {SLC_PROBES_FOLDER}), m_scene.Spaces());
    for (int run = 0; run < 2; ++run) {
        QxHostGrid grid(3, 1);
        shader.Run(grid, m_scene);
        EXPECT_EQ(grid.Get("Ci").numbers, (Numbers{4, 9.5, 0, 4, 9.5, 0, 4, 9.5, 0})) << run;
        EXPECT_EQ(grid.Get("Oi").numbers, (Numbers{0.5, 2, 1, 0.5, 2, 1, 0.5, 2, 1})) << run;
    }
}

/// A byte-code file cannot make a shadeop access memory outside of its arguments.
TEST_F(Shadeops, AreCalledOnlyAsTheirLibraryDeclaresThem)
{
    const std::string path =
        m_folder.Build("sums", "surface sums() { Ci = sum(s, t); }", Options(2, "--int"));
    std::string text = TemporaryFolder::Read(path);
    const std::size_t name = text.find("\"sum\"");
    ASSERT_NE(name, std::string::npos);
    text.replace(name, 5, "\"reverse\"");
    try {
        static_cast<void>(QxShader::Read(text, "forged", {SLC_PROBES_FOLDER}));
        ADD_FAILURE() << "was loaded";
    } catch (const QxHostError& error) {
        EXPECT_NE(
            std::string(error.what())
                .find("Shadeop 'reverse' is called with other types than its library declares"),
            std::string::npos)
            << error.what();
    }
}

/// A library that is missing or damaged, or lacks a function that the shader needs, is refused
/// before any of its code runs, with the same message for both kinds of shader files.
TEST_F(Shadeops, AreRefusedWithoutWhatTheShaderNeeds)
{
    const std::string probes = TemporaryFolder::Read(SLC_PROBES_FOLDER "/probes.so");
    const std::string table = "QX_SHADEOP_TABLE(tick) = {{\"float tick(float)\", \"start\", "
                              "\"stop\"}, QX_SHADEOP_END};\n";
    const std::string tick = "QX_SHADEOP_EXPORT void tick(void* d, int n, void** v) "
                             "{ *(float*)v[0] = 1; }\n";
    const std::string start = "QX_SHADEOP_EXPORT void* start(void) { return 0; }\n";
    const std::string stop = "QX_SHADEOP_EXPORT void stop(void* d) { }\n";
    const std::string loud = "#include <stdlib.h>\n"
                             "__attribute__((constructor)) static void die(void) { abort(); }\n";
    const std::string lacks = "Shadeop library 'probes.so' has no ";
    struct Case {
        std::string library;  // a C source, or the file itself; empty for no library
        std::string fault;
    };
    const Case cases[] = {
        {"", "There is no shadeop library 'probes.so' in the given folders"},
        {probes.substr(0, probes.size() / 2), "it is no library of this machine, or cut short"},
        {loud + "int none;\n", lacks + "shadeop 'tick'"},
        {loud + table + start + stop, lacks + "shadeop 'tick'"},
        {loud + table + tick + stop + "QX_SHADEOP_EXPORT int start = 1;\n",
         lacks + "function 'start', which shadeop 'tick' needs"},
        {loud + table + tick + start, lacks + "function 'stop', which shadeop 'tick' needs"},
        {loud + tick + start + stop + "QX_SHADEOP_TABLE(tick) = {{(const char*)8, 0, 0}};\n",
         lacks + "shadeop 'tick'"},
    };
    for (const char* backEnd : {"--dso", "--int"}) {
        const std::string path =
            m_folder.Build("counts", "surface counts() { Ci = tick(1); }", Options(2, backEnd));
        for (const Case& c : cases) {
            std::filesystem::remove("probes.so");
            if (c.library.find("TABLE") != std::string::npos ||
                c.library.find("none") != std::string::npos) {
                TemporaryFolder::Write("probes.c", "#include \"QxShadeop.h\"\n" + c.library);
                ASSERT_EQ(
                    std::system("cc -shared -fPIC -I" SLC_RUNTIME_FOLDER " -o probes.so probes.c"),
                    0);
            } else if (!c.library.empty()) {
                TemporaryFolder::Write("probes.so", c.library);
            }
            try {
                static_cast<void>(QxShader::Open(path, {"."}));
                ADD_FAILURE() << "was loaded";
            } catch (const QxHostError& error) {
                EXPECT_NE(std::string(error.what()).find(c.fault), std::string::npos)
                    << error.what();
            }
        }
    }
}

/// A folder of the library's name is no library.
TEST_F(Shadeops, AreSearchedByOneRuleForBothKindsOfFiles)
{
    std::filesystem::create_directories("first/probes.so");
    const Numbers expected = {1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5, 5, 5, 6, 6, 6};
    for (const char* backEnd : {"--dso", "--int"}) {
        const std::string path =
            m_folder.Build("counts", "surface counts() { Ci = tick(s); }", Options(2, backEnd));
        EXPECT_EQ(Shaded(path, {"first", SLC_PROBES_FOLDER}).Ci, expected) << backEnd;
    }
}

TEST_F(Shadeops, MayComeFromAFileOfAnyName)
{
    std::filesystem::copy(SLC_PROBES_FOLDER "/probes.so", "a \"b\\c.so");
    for (const char* backEnd : {"--dso", "--int"})
        EXPECT_NO_THROW(static_cast<void>(
            QxShader::Open(m_folder.Build("counts", "surface counts() { Ci = tick(1); }",
                                          std::string(backEnd) + " -I."),
                           {"."})));
}

/// A truncated shared object is refused and does not crash the process.
TEST_F(Shadeops, AreNotLoadedForATruncatedShader)
{
    const std::string path =
        m_folder.Build("counts", "surface counts() { Ci = tick(1); }", Options(2, "--dso"));
    const std::string bytes = TemporaryFolder::Read(path);
    TemporaryFolder::Write("short.sqx", bytes.substr(0, bytes.size() / 4));
    EXPECT_THROW(static_cast<void>(QxShader::Open("short.sqx", {SLC_PROBES_FOLDER})), QxHostError);
}

}  // namespace

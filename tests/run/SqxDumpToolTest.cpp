// Runs the tool that prints compiled shaders as a user runs it.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <sys/wait.h>

#include "helpers/TemporaryFolder.h"
#include "shaders/RunShader.h"

namespace {

/// A compiled shader in a separate folder.
class CompiledFile {
public:
    explicit CompiledFile(const std::string& text) { TemporaryFolder::Write("test.sqx", text); }
    [[nodiscard]] std::string Path() const { return m_path / "test.sqx"; }

    /// Returns the exit status of the tool, and its output on both streams.
    [[nodiscard]] std::pair<int, std::string> Dump(const std::string& arguments) const
    {
        const std::string output = m_path / "output";
        const std::string command =
            std::string(SLC_SQXDUMP) + ' ' + arguments + " > '" + output + "' 2>&1";
        const int status = std::system(command.c_str());
        return {WEXITSTATUS(status), TemporaryFolder::Read(output)};
    }

private:
    TemporaryFolder m_folder;
    std::filesystem::path m_path = std::filesystem::current_path();
};

using Result = std::pair<int, std::string>;

}  // namespace

TEST(SqxDumpTool, ListsParameters)
{
    const CompiledFile file(ByteCodeOf(
        "surface test(float Kd = 0.5; varying color tint = color \"hsv\" (0, 1, 1);"
        "             point from = point \"world\" (0, 0, 0); vector up = 2 * vector \"world\" 1;"
        "             string names[2] = {\"a\", \"b\"}; output varying normal bent = 0;) { Ci = 0; "
        "}",
        2));
    EXPECT_EQ(file.Dump("--params '" + file.Path() + "'"), Result(0, R"(surface test

  Parameter  Class   Detail   Type       Space      Default
  Kd         input   uniform  float                 0.5
  tint       input   varying  color      "hsv"      1 0 0 in rgb
  from       input   uniform  point      "world"    0 0 0
  up         input   uniform  vector                2 2 2
  names      input   uniform  string[2]             "a", "b"
  bent       output  varying  normal     "current"  0 0 0

  uses lights        no
  traces rays        no
  modifies P         no
  reads              none
  writes             Ci Oi
  shadeop libraries  none
)"));
    EXPECT_EQ(file.Dump("--param up --param Kd '" + file.Path() + "'"), Result(0, R"(surface test

  Parameter  Class  Detail   Type    Space  Default
  Kd         input  uniform  float          0.5
  up         input  uniform  vector         2 2 2
)"));
    EXPECT_EQ(
        file.Dump("--param down '" + file.Path() + "'"),
        Result(1, "surface test\nsqxdump: " + file.Path() + ": There is no parameter down\n"));
}

TEST(SqxDumpTool, ListsWhatAShaderReadsAndWrites)
{
    struct FactCase {
        const char* shader;
        const char* facts;  // lights, rays, P, read, written
    };
    static const FactCase cases[] = {
        {"surface test() { Ci = Cs * u; Oi = Os; }", "no no no / Cs u Os / Ci Oi"},
        {"surface test() { Ci = Ci / 2; Oi = 1; }", "no no no / Ci / Ci Oi"},
        {"surface test() { Ci = ambient(); Oi = 1; }", "yes no no / P L / Ci Oi"},
        {"surface test() { Oi = 1; illuminance(Ps, N, 1) Ci += 1; }", "yes no no / Ci P N / Ci Oi"},
        {"surface test() { Ci = trace(P, I); Oi = 1; }", "no yes no / P I / Ci Oi"},
        // Lights are evaluated at P even if the shader writes it, and texture() reads s and t
        // without naming them.
        {"surface test() { P = point (u, v, 0); Ci = diffuse(N); Oi = 1; }",
         "yes no yes / P u v N L Cl / Ci Oi P"},
        {"surface test() { Ci = texture(\"map\"); Oi = 1; }", "no no no / s t du dv / Ci Oi"},
        {"surface test(varying float x = noise(v);) { Ci = x; Oi = 1; }", "no no no / v / Ci Oi"},
        {"displacement test() { P += N; }", "no no yes / P N / P"},
        {"light test() { illuminate(point (0, 0, 0)) Cl = 1; }", "no no no / Ps / Cl Ol L"},
    };
    for (const FactCase& c : cases) {
        const CompiledFile file(ByteCodeOf(c.shader, 2));
        const std::string text = file.Dump("--params '" + file.Path() + "'").second;
        std::istringstream lines(text.substr(text.find("  uses lights")));
        std::string facts;
        for (const char* start : {"", " ", " ", " / ", " / "}) {
            std::string line;
            std::getline(lines, line);
            facts += start + line.substr(21);
        }
        EXPECT_EQ(facts, c.facts) << c.shader;
    }
}

TEST(SqxDumpTool, ComputesDefaultValuesAsFarAsItCan)
{
    struct DefaultCase {
        const char* parameter;
        const char* value;
    };
    static const DefaultCase cases[] = {
        {"float x = 1 / 0;", "inf"},
        {"float a = 3; float x = sqrt(a + 1);", "2"},
        {"varying float x = 2;", "2"},
        {"float x = time;", "depends on the shading point"},
        {"float a = time; float x = a * 2;", "depends on the shading point"},
        {"color x[2] = {1, color \"hsv\" (0, 1, 1)};", "1 1 1, 1 0 0 in rgb"},
        {"matrix x = 3;", "3 0 0 0 0 3 0 0 0 0 3 0 0 0 0 3"},
        {"string x = concat(\"a\\n\", \"\\\"\");", "\"a\\n\\\"\""},
    };
    for (const DefaultCase& c : cases) {
        const CompiledFile file(
            ByteCodeOf(std::string("surface test(") + c.parameter + ") { Ci = 1; }", 2));
        const std::string text = file.Dump("--param x '" + file.Path() + "'").second;
        const std::size_t column = text.find("Default") - text.find("  Parameter");
        const std::size_t row = text.find("\n  x ") + 1;
        EXPECT_EQ(text.substr(row + column, text.find('\n', row) - row - column), c.value)
            << c.parameter;
    }
    // A function in a default value may print text, which must not appear in the listing. It may
    // also never end.
    const CompiledFile talking(ByteCodeOf("float f() { printf(\"talk\"); return 1; }"
                                          "surface test(float x = f();) { Ci = x; }",
                                          2));
    EXPECT_EQ(talking.Dump("--param x '" + talking.Path() + "'").second.find("talk"),
              std::string::npos);
    const CompiledFile endless(ByteCodeOf("float f() { while (1 > 0) ; return 1; }"
                                          "surface test(float x = f();) { Ci = x; }",
                                          0));
    const auto [status, text] = endless.Dump("--param x '" + endless.Path() + "'");
    EXPECT_EQ(status, 1);
    EXPECT_NE(text.find("Default values are not known: "), std::string::npos) << text;
}

TEST(SqxDumpTool, ReadsSeveralFilesAndStandardInput)
{
    const CompiledFile file(ByteCodeOf("surface test(float x = 1;) { Ci = x; }", 2));
    const std::string listing = "surface test\n\n"
                                "  Parameter  Class  Detail   Type   Space  Default\n"
                                "  x          input  uniform  float         1\n";
    const auto [status, text] =
        file.Dump("--param x '" + file.Path() + "' /no/such/file '" + file.Path() + "'");
    EXPECT_EQ(status, 1);
    EXPECT_TRUE(text.starts_with(file.Path() + ":\n" + listing)) << text;
    EXPECT_NE(text.find("sqxdump: /no/such/file: No such file"), std::string::npos) << text;
    EXPECT_TRUE(text.ends_with(file.Path() + ":\n" + listing)) << text;
    EXPECT_EQ(file.Dump("--section main - < '" + file.Path() + "'"),
              file.Dump("--section main '" + file.Path() + "'"));
}

TEST(SqxDumpTool, PrintsTheCode)
{
    const CompiledFile file(ByteCodeOf("surface test() { Ci = Cs * u; }", 2));
    const auto [status, text] = file.Dump("'" + file.Path() + "'");
    EXPECT_EQ(status, 0);
    EXPECT_NE(text.find("    MULT_COLOR_FLOAT Ci Cs u\n"), std::string::npos) << text;
}

TEST(SqxDumpTool, PrintsOneSection)
{
    const CompiledFile file(ByteCodeOf("surface test(float Kd = 2 * 4;) { Ci = Kd; }", 0));
    EXPECT_EQ(file.Dump("--section Kd '" + file.Path() + "'"),
              Result(0, "initializer of Kd\n"
                        "     0  MULT_FLOAT_FLOAT %5 2 4\n"
                        "  value %5\n"));
    EXPECT_TRUE(file.Dump("--section main '" + file.Path() + "'").second.starts_with("main\n"));
    EXPECT_EQ(file.Dump("--section Ks '" + file.Path() + "'"),
              Result(1, "sqxdump: " + file.Path() + ": There is no section Ks\n"));
}

TEST(SqxDumpTool, PrintsADamagedFileUpToTheFault)
{
    std::string text = ByteCodeOf("surface test() { Ci = Cs * u; }", 0);
    text += "more\n";
    const CompiledFile file(text);
    const auto [status, output] = file.Dump("'" + file.Path() + "'");
    EXPECT_EQ(status, 1);
    EXPECT_NE(output.find("    MULT_COLOR_FLOAT"), std::string::npos) << output;
    EXPECT_NE(output.find(", main: Nothing was expected after the main code\n"), std::string::npos)
        << output;
}

TEST(SqxDumpTool, SkipsDefaultValuesThatCallMissingShadeops)
{
    std::string text = ByteCodeOf("surface test(float a = 2; float x = a * 3;) { Ci = x; }", 0);
    const std::string product = "\n4\n55\n";  // length and instruction of the block of x
    const std::size_t block = text.find(product);
    ASSERT_NE(block, std::string::npos);
    const std::size_t result = block + product.size();
    const std::size_t afterResult = text.find('\n', result);
    const std::size_t end = text.find('\n', text.find('\n', afterResult + 1) + 1);
    const std::string variable = text.substr(result, afterResult - result);
    text.replace(block, end - block, "\n4\n459\n0\n0\n" + variable);
    const CompiledFile file(text);
    const auto [status, listing] = file.Dump("--params '" + file.Path() + "'");
    EXPECT_EQ(status, 1);
    EXPECT_NE(listing.find("float         2\n"), std::string::npos) << listing;
    EXPECT_NE(listing.find("float         ?\n"), std::string::npos) << listing;
    EXPECT_NE(listing.find("initializer of x: Instruction CALL_DSO at 0 has the bad value 0"),
              std::string::npos)
        << listing;
}

TEST(SqxDumpTool, ReportsFailuresAndSetsTheStatus)
{
    const CompiledFile file("no shader\n");
    EXPECT_EQ(
        file.Dump("'" + file.Path() + "'"),
        Result(1, "sqxdump: " + file.Path() + ": line 1: Not a byte-code file of version 5\n"));
    EXPECT_EQ(file.Dump("/no/such/file"),
              Result(1, "sqxdump: /no/such/file: No such file or directory\n"));
    EXPECT_EQ(file.Dump("/tmp"), Result(1, "sqxdump: /tmp: Is a directory\n"));
    const std::string help = "; '--help' lists all options\n";
    EXPECT_EQ(file.Dump(""), Result(2, "sqxdump: No file is given" + help));
    EXPECT_EQ(file.Dump("--wrong x"), Result(2, "sqxdump: Unknown option '--wrong'" + help));
    EXPECT_EQ(file.Dump("x --param"),
              Result(2, "sqxdump: Option '--param' needs the name of a parameter after it" + help));
    EXPECT_EQ(file.Dump("--json --section main x").first, 2);

    const CompiledFile good(ByteCodeOf("surface test() { Ci = 0; }", 2));
    const std::string toFullDisk =
        std::string(SLC_SQXDUMP) + " '" + good.Path() + "' > /dev/full 2> /dev/null";
    EXPECT_EQ(WEXITSTATUS(std::system(toFullDisk.c_str())), 1);
}

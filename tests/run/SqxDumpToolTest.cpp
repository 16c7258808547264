// The tool that prints compiled shaders, as a user calls it.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

#include "run/RunShader.h"

namespace {

/// A compiled shader in a folder of its own.
class CompiledFile {
public:
    explicit CompiledFile(const std::string& text)
        : m_folder(std::filesystem::temp_directory_path() /
                   ("slc_sqxdump_" + std::to_string(::getpid())))
    {
        std::filesystem::create_directories(m_folder);
        std::ofstream(Path(), std::ios::binary) << text;
    }
    ~CompiledFile() { std::filesystem::remove_all(m_folder); }
    [[nodiscard]] std::string Path() const { return (m_folder / "test.sqx").string(); }

    /// The exit status, and what the tool wrote to both streams.
    [[nodiscard]] std::pair<int, std::string> Dump(const std::string& arguments) const
    {
        const std::string output = (m_folder / "output").string();
        const std::string command =
            std::string(SLC_SQXDUMP) + ' ' + arguments + " > '" + output + "' 2>&1";
        const int status = std::system(command.c_str());
        std::ostringstream text;
        text << std::ifstream(output).rdbuf();
        return {WEXITSTATUS(status), text.str()};
    }

private:
    std::filesystem::path m_folder;
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
    EXPECT_EQ(file.Dump("--params '" + file.Path() + "'"),
              Result(0, "surface\n"
                        "Kd uniform float\n"
                        "tint varying color \"hsv\"\n"
                        "from uniform point \"world\"\n"
                        "up uniform vector\n"
                        "names uniform string[2]\n"
                        "bent varying normal \"current\" output\n"));
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
    EXPECT_NE(output.find(", main: Nothing was expected behind the main code\n"), std::string::npos)
        << output;
}

TEST(SqxDumpTool, EndsWithAReportAndStatus1)
{
    const CompiledFile file("no shader\n");
    EXPECT_EQ(
        file.Dump("'" + file.Path() + "'"),
        Result(1, "sqxdump: " + file.Path() + ": line 1: Not a byte-code file of version 5\n"));
    EXPECT_EQ(file.Dump("/no/such/file"),
              Result(1, "sqxdump: /no/such/file: No such file or directory\n"));
    EXPECT_EQ(file.Dump("").first, 1);
    EXPECT_EQ(file.Dump("--wrong").first, 1);

    const CompiledFile good(ByteCodeOf("surface test() { Ci = 0; }", 2));
    const std::string toFullDisk =
        std::string(SLC_SQXDUMP) + " '" + good.Path() + "' > /dev/full 2> /dev/null";
    EXPECT_EQ(WEXITSTATUS(std::system(toFullDisk.c_str())), 1);
}

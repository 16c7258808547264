#include "driver/SlcCommandLine.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <vector>

#include "driver/SlcDefaultCommands.h"
#include "helpers/TemporaryFolder.h"

namespace {

using Arguments = std::vector<const char*>;

/// Makes a folder with the sources "a.sl", "b.sl" and "dir/a.b.sl", and with a file and a folder
/// that are no sources. Sets both commands in the environment.
class SlcCommandLineTest : public testing::Test {
protected:
    SlcCommandLineTest()
    {
        for (const char* name : {"a.sl", "b.sl", "dir/a.b.sl", "a.txt"})
            TemporaryFolder::Write(name, "");
        std::filesystem::create_directory("folder.sl");
        setenv("SLC_CPP_COMMAND", "preprocess", 1);
        setenv("SLC_CC_COMMAND", "compile", 1);
    }

    bool Parse(const Arguments& arguments)
    {
        testing::internal::CaptureStderr();
        testing::internal::CaptureStdout();
        const bool goOn = ParseOptions(arguments, m_line);
        m_output = testing::internal::GetCapturedStdout();
        m_messages = testing::internal::GetCapturedStderr();
        return goOn;
    }

    TemporaryFolder m_folder;
    SlcCommandLine m_line;
    std::string m_output;
    std::string m_messages;
};

TEST_F(SlcCommandLineTest, ReportsTheFirstFault)
{
    struct Case {
        Arguments arguments;
        const char* message;
    };
    const Case cases[] = {
        {{}, "No input file has been provided."},
        {{"-O1"}, "No input file has been provided."},
        {{"a.sl", "-w1", "b.sl"}, "Cannot provide multiple input files."},
        {{"a.sl", "a.txt"}, "Cannot provide multiple input files."},
        {{"a.txt"}, "Input file provided doesn't ends with the '.sl' extension: a.txt"},
        {{"sl"}, "Input file provided doesn't ends with the '.sl' extension: sl"},
        {{""}, "Input file provided doesn't ends with the '.sl' extension: "},
        {{"none.sl", "--what"}, "File 'none.sl' doesn't seem to exist."},
        {{"folder.sl"}, "File 'folder.sl' doesn't seem to exist."},
        {{"a.sl", "-d"}, "No directory name provided with the option '-d'"},
        {{"-d", "-O1", "a.sl"}, "No directory name provided with the option '-d'"},
        {{"-d", "", "a.sl"}, "No directory name provided with the option '-d'"},
        {{"--what", "none.sl"}, "Invalid option: --what"},
        {{"-O4", "a.sl"}, "Invalid option: -O4"},
        {{"--strict=1", "a.sl"}, "Invalid option: --strict=1"},
        {{"-", "a.sl"}, "Invalid option: -"},
        {{"-v", "a.sl"}, "Invalid option: -v"},
        {{"a.sl", "--help"}, "Invalid option: --help"},
    };
    for (const Case& c : cases) {
        EXPECT_FALSE(Parse(c.arguments)) << c.message;
        EXPECT_EQ(m_messages, std::string("shaderqx: ERROR: ") + c.message + "\n");
        EXPECT_EQ(m_output, "") << c.message;
    }
}

TEST_F(SlcCommandLineTest, PrintsTheVersionAlone)
{
    for (const char* option : {"-v", "--version"}) {
        EXPECT_FALSE(Parse({option}));
        EXPECT_EQ(m_output.rfind("shaderqx version 1.0.6 (Jul 30 2003) \"BETA 2\".\n", 0), 0U);
        EXPECT_EQ(std::count(m_output.begin(), m_output.end(), '\n'), 2);
        EXPECT_EQ(m_messages, "");
    }
}

TEST_F(SlcCommandLineTest, DerivesFileNamesFromTheSource)
{
    ASSERT_TRUE(Parse({"dir/a.b.sl"}));
    EXPECT_EQ(m_line.m_inputFile, "dir/a.b.sl");
    EXPECT_EQ(m_line.m_preprocessedFile, "dir/a.b.i");
    EXPECT_EQ(m_line.m_outputDirectory, ".");
    ASSERT_TRUE(Parse({"-d", "out", "a.sl", "-d", "elsewhere"}));
    EXPECT_EQ(m_line.m_outputDirectory, "elsewhere");
}

TEST_F(SlcCommandLineTest, CollectsPreprocessorOptionsInOrder)
{
    ASSERT_TRUE(Parse({"-Ifirst", "-DA=1", "a.sl", "-I", "-Isecond"}));
    EXPECT_EQ(m_line.PreprocessorOptions(), "-Ifirst -DA=1 -I -Isecond ");
    EXPECT_EQ(m_line.m_compile.folders, (std::vector<std::string>{"first", "", "second"}));
    EXPECT_EQ(m_line.m_compile.macros, (std::vector<std::string>{"A=1"}));
}

TEST_F(SlcCommandLineTest, LaterOptionsReplaceEarlierOnes)
{
    struct Case {
        Arguments arguments;
        bool checksArrayBounds, isCpp;
    };
    const Case cases[] = {
        {{"a.sl"}, true, false},
        {{"a.sl", "--no-array-check", "-O"}, true, false},
        {{"a.sl", "-O", "--no-array-check"}, false, false},
        {{"a.sl", "--dso", "-O2"}, true, true},
        {{"--dso", "--int", "a.sl"}, true, false},
    };
    for (const Case& c : cases) {
        ASSERT_TRUE(Parse(c.arguments));
        EXPECT_EQ(m_line.m_compile.checksArrayBounds, c.checksArrayBounds) << &c - cases;
        EXPECT_EQ(m_line.m_compile.output == QxCompileOptions::Output::Cpp, c.isCpp) << &c - cases;
    }
}

TEST_F(SlcCommandLineTest, SelectsStagesAndKeptFiles)
{
    struct Case {
        Arguments arguments;
        bool compile, ccBuild, keepPreprocessed, keepCC;
    };
    const Case cases[] = {
        {{"a.sl"}, true, true, false, true},
        {{"a.sl", "-E"}, false, false, true, true},
        {{"a.sl", "-E", "-c"}, true, false, true, true},
        {{"a.sl", "-c", "-E"}, false, false, true, true},
        {{"a.sl", "-E", "--dont-keep-cpp-file"}, false, false, false, true},
        {{"a.sl", "--keep-cpp-file", "--dont-keep-c++-file"}, true, true, true, false},
        {{"a.sl", "--dont-keep-c++-file", "-c"}, true, false, false, true},
        {{"a.sl", "--dont-keep-c++-file", "--keep-c++-file"}, true, true, false, true},
    };
    for (const Case& c : cases) {
        ASSERT_TRUE(Parse(c.arguments));
        EXPECT_EQ(m_line.m_runCompile, c.compile) << &c - cases;
        EXPECT_EQ(m_line.m_runCCBuild, c.ccBuild) << &c - cases;
        EXPECT_EQ(m_line.m_keepPreprocessedFile, c.keepPreprocessed) << &c - cases;
        EXPECT_EQ(m_line.m_keepCCFile, c.keepCC) << &c - cases;
    }
}

TEST_F(SlcCommandLineTest, SetsTheWarningLevel)
{
    struct Case {
        const char* option;
        int level;
    };
    static const Case cases[] = {{"-w2", 2}, {"-w", 0}, {"-w1", 1}, {"-w0", 0}};
    for (const Case& c : cases) {
        ASSERT_TRUE(Parse({c.option, "a.sl"}));
        EXPECT_EQ(m_line.m_compile.warningLevel, c.level) << c.option;
    }
}

TEST_F(SlcCommandLineTest, ReadsCommandsFromTheEnvironment)
{
    ASSERT_TRUE(Parse({"a.sl"}));
    EXPECT_EQ(m_line.m_preprocessCommand, "preprocess");
    EXPECT_EQ(m_line.m_ccCommand, "compile");
    EXPECT_EQ(m_messages, "");

    unsetenv("SLC_CPP_COMMAND");
    unsetenv("SLC_CC_COMMAND");
    ASSERT_TRUE(Parse({"a.sl", "-w0"}));
    EXPECT_FALSE(m_line.m_preprocessCommand.has_value());
    EXPECT_EQ(m_messages, "shaderqx: WARNING: 'SLC_CPP_COMMAND' environment variable dosen't "
                          "seems to exist. Will use '" +
                              DefaultPreprocessCommand() +
                              "' has command for preprocessing.\n"
                              "shaderqx: WARNING: 'SLC_CC_COMMAND' environment variable dosen't "
                              "seems to exist. Will use '" +
                              m_line.m_ccCommand + "' has command for C++ compiling .\n");
}

}  // namespace

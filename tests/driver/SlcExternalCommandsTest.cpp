#include "driver/SlcExternalCommands.h"

#include <gtest/gtest.h>

#include <csignal>

#include "driver/SlcDefaultCommands.h"
#include "frontend/SlcParseCode.h"
#include "helpers/TemporaryFolder.h"

namespace {

class SlcExternalCommandsTest : public testing::Test {
protected:
    SlcExternalCommandsTest()
    {
        m_line.m_inputFile = "a.sl";
        m_line.m_preprocessedFile = "a.i";
        g_ccFilename = "glow";
    }

    TemporaryFolder m_folder;
    SlcCommandLine m_line;
};

TEST_F(SlcExternalCommandsTest, PreprocessCommandSeesItsVariables)
{
    m_line.m_preprocessorOptions = "-DA -Ib ";
    m_line.m_preprocessCommand = "echo \"[$cpp_options][$input_file]\" > $cpp_result";
    EXPECT_TRUE(PreprocessSource(m_line));
    EXPECT_EQ(TemporaryFolder::Read("a.i"), "[ -DA -Ib ][a.sl]\n");
}

TEST_F(SlcExternalCommandsTest, CommandsHaveResultsThoughTheParentIgnoresItsChildren)
{
    std::signal(SIGCHLD, SIG_IGN);
    m_line.m_preprocessCommand = "echo made > $cpp_result";
    EXPECT_TRUE(PreprocessSource(m_line));
    EXPECT_EQ(std::signal(SIGCHLD, SIG_DFL), SIG_IGN);
}

TEST_F(SlcExternalCommandsTest, DefaultPreprocessorWarnsOfSwallowedCodeAlone)
{
    m_line.m_preprocessCommand = DefaultPreprocessCommand();
    TemporaryFolder::Write("a.sl", "float a;\n/* open\nfloat b;\n/* closed */\n// don't\n"
                                   "#define A 1\n#define A 2\n#warning x\n");
    testing::internal::CaptureStderr();
    EXPECT_TRUE(PreprocessSource(m_line));
    const std::string warnings = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(warnings.starts_with("a.sl:4:") && warnings.find('\n') == warnings.size() - 1)
        << warnings;
    EXPECT_EQ(TemporaryFolder::Read("a.i").find("float b"), std::string::npos);

    TemporaryFolder::Write("a.sl", "#include \"nowhere.h\"\n");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(PreprocessSource(m_line));
    EXPECT_NE(testing::internal::GetCapturedStderr().find("nowhere.h: No such file"),
              std::string::npos);
}

TEST_F(SlcExternalCommandsTest, DefaultPreprocessorTellsEachIncluderOnce)
{
    m_line.m_preprocessCommand = DefaultPreprocessCommand();
    TemporaryFolder::Write("a.sl", "#include \"open.h\"\n\n#include \"b.h\"\n");
    TemporaryFolder::Write("open.h", "#include \"comment.h\"\n");
    TemporaryFolder::Write("comment.h", "/* open\n/* closed */\n");
    TemporaryFolder::Write("b.h", "#include \"c.h\"\n");
    TemporaryFolder::Write("c.h", "\n#include \"b.h\"\n");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(PreprocessSource(m_line));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "In file included from open.h:1,\n"
              "                 from a.sl:1:\n"
              "comment.h:2:1: warning: \"/*\" within comment [-Wcomment]\n"
              "In file included from c.h:2,\n"
              "                 from b.h:1,\n"
              "                 from a.sl:3:\n"
              "b.h:1:15: error: #include nested depth 200 exceeds maximum of 200 "
              "(do files include each other?)\n"
              "shaderqx: ERROR: Problem during preprocessing.  Stopping.\n");
}

TEST_F(SlcExternalCommandsTest, FailedPreprocessCommandLeavesItsFile)
{
    for (const char* command : {"echo half > $cpp_result; exit 3",
                                "echo half > $cpp_result; "
                                "no-such-command 2>/dev/null",
                                "echo half > $cpp_result; kill -9 $$"}) {
        m_line.m_preprocessCommand = command;
        testing::internal::CaptureStderr();
        EXPECT_FALSE(PreprocessSource(m_line)) << command;
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "shaderqx: ERROR: Problem during preprocessing.  Stopping.\n");
        EXPECT_EQ(TemporaryFolder::Read("a.i"), "half\n");
    }
}

// The text that a preprocessor could trip over: none of it is C, and none of it may get lost.
TEST_F(SlcExternalCommandsTest, DefaultPreprocessorPassesShadersThrough)
{
    TemporaryFolder::Write("inc.h", "float included;\n");
    TemporaryFolder::Write("a.sl", "#include \"inc.h\"\n"
                                   "#define TWICE(x) (2 * x)\n"
                                   "// don't \"stumble\n"
                                   "/* it's \" fine */\n"
                                   "float linux = TWICE(unix); // OMBRIUM's\n"
                                   "string url = \"http://a//b\"; normal n = 'x';\n"
                                   "#pragma annotation \"q\"\n"
                                   "float h\u00F6he \u2264 2;\n"
                                   "#ifdef OMBRIUM\nfloat ombrium;\n#endif\n");
    m_line.m_preprocessorOptions = "-I. ";
    m_line.m_preprocessCommand = DefaultPreprocessCommand();
    ASSERT_TRUE(PreprocessSource(m_line));
    const std::string result = TemporaryFolder::Read("a.i");
    for (const char* kept :
         {"float included;\n", "float linux = (2 * unix);", "string url = \"http://a//b\";",
          "normal n = 'x';", "float h\u00F6he \u2264 2;", "float ombrium;", "# 1 \"inc.h\" 1\n"})
        EXPECT_NE(result.find(kept), std::string::npos) << kept << " in " << result;
}

TEST_F(SlcExternalCommandsTest, CCCommandSeesItsVariables)
{
    m_line.m_outputDirectory = "out";
    m_line.m_ccCommand = "echo $output_dir $output_file $cc_input_file > seen";
    EXPECT_TRUE(BuildSharedObject(m_line));
    EXPECT_EQ(TemporaryFolder::Read("seen"), "out glow.sqx glow.cpp\n");
}

TEST_F(SlcExternalCommandsTest, CCFileGoesWhateverTheCommandReturned)
{
    for (const char* command : {"true", "false"}) {
        m_line.m_ccCommand = command;
        for (const bool keep : {true, false}) {
            TemporaryFolder::Write("glow.cpp", "");
            m_line.m_keepCCFile = keep;
            testing::internal::CaptureStderr();
            const bool built = BuildSharedObject(m_line);
            EXPECT_EQ(testing::internal::GetCapturedStderr(),
                      built ? "" : "shaderqx: ERROR: Problem during C++ compilation.  Stopping.\n");
            EXPECT_EQ(built, command == std::string("true"));
            EXPECT_EQ(std::filesystem::exists("glow.cpp"), keep) << command;
        }
    }
}

}  // namespace

#include "driver/SlcExternalCommands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>

#include "driver/SlcDefaultCommands.h"
#include "helpers/TemporaryFolder.h"
#include "support/QxDebug.h"

namespace {

class SlcExternalCommandsTest : public testing::Test {
protected:
    SlcExternalCommandsTest()
    {
        m_line.m_inputFile = "a.sl";
        m_line.m_preprocessedFile = "a.i";
    }

    /// Preprocesses like the option `-E`, so that the result is kept in "a.i".
    bool Preprocess()
    {
        m_line.m_runCompile = false;
        m_line.m_keepPreprocessedFile = true;
        SlcRunFiles files;
        return PreprocessSource(m_line, files);
    }

    bool Build()
    {
        SlcRunFiles files;
        files.m_shaderName = "glow";
        TemporaryFolder::Write(files.m_cc.emplace("glow.cpp").Path(), "");
        return BuildSharedObject(m_line, files);
    }

    TemporaryFolder m_folder;
    SlcCommandLine m_line;
};

/// True if a folder of an unfinished file is left.
[[nodiscard]] bool HasFolders()
{
    const std::filesystem::directory_iterator entries(".");
    return std::any_of(begin(entries), end(entries),
                       [](const auto& entry) { return entry.is_directory(); });
}

TEST_F(SlcExternalCommandsTest, PreprocessCommandSeesItsVariables)
{
    m_line.m_preprocessorArguments = {"-DA=1 2", "-Ib"};
    m_line.m_preprocessCommand =
        "echo \"[$cpp_options][$cpp_arguments][$input_file]\" > $cpp_result";
    EXPECT_TRUE(Preprocess());
    EXPECT_EQ(TemporaryFolder::Read("a.i"), "[ -DA=1 2 -Ib ]['-DA=1 2' -Ib ][a.sl]\n");
    m_line.m_preprocessCommand = "echo by name > a.i";
    EXPECT_TRUE(Preprocess());
    EXPECT_EQ(TemporaryFolder::Read("a.i"), "by name\n");
}

TEST_F(SlcExternalCommandsTest, CommandsHaveResultsEvenIfTheParentIgnoresItsChildren)
{
    std::signal(SIGCHLD, SIG_IGN);
    m_line.m_preprocessCommand = "echo made > $cpp_result";
    EXPECT_TRUE(Preprocess());
    EXPECT_EQ(std::signal(SIGCHLD, SIG_DFL), SIG_IGN);
}

TEST_F(SlcExternalCommandsTest, OwnPreprocessorReportsAndKeepsItsOutput)
{
    TemporaryFolder::Write("a.sl", "float a;\n/* open\nfloat b;\n/* closed */\n// don't\n"
                                   "#define A 1\n#define A 2\n#include \"nowhere.h\"\n");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(Preprocess());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "a.sl:4:1: WARNING: Comment begins inside a comment:\n\n"
              "         /* closed */\n"
              "         ^\n"
              "a.sl:8:10: ERROR: Cannot find the included file 'nowhere.h':\n\n"
              "          #include \"nowhere.h\"\n"
              "                   ^\n"
              "shaderqx: ERROR: Problem during preprocessing.  Stopping.\n");
    EXPECT_EQ(TemporaryFolder::Read("a.i"), "# 1 \"a.sl\"\nfloat a;\n");
    EXPECT_FALSE(HasFolders());
}

// The user may not be allowed to write to the folder of the source.
TEST_F(SlcExternalCommandsTest, OwnPreprocessorWritesNoFileToCompile)
{
    TemporaryFolder::Write("a.sl", "float a;\n");
    SlcRunFiles files;
    EXPECT_TRUE(PreprocessSource(m_line, files));
    EXPECT_EQ(files.m_preprocessedText, "# 1 \"a.sl\"\nfloat a;\n");
    EXPECT_FALSE(files.m_preprocessed.has_value());
}

TEST_F(SlcExternalCommandsTest, PreprocessCommandNeedsNoRightToTheFolderOfTheSource)
{
    m_line.m_preprocessedFile = "/proc/a.i";  // where no file can be created
    m_line.m_preprocessCommand = "echo made > $cpp_result";
    SlcRunFiles files;
    EXPECT_TRUE(PreprocessSource(m_line, files));
    EXPECT_EQ(TemporaryFolder::Read(files.m_preprocessed->Path()), "made\n");
}

TEST_F(SlcExternalCommandsTest, FailedPreprocessCommandKeepsItsFile)
{
    for (const char* command : {"echo half > $cpp_result; exit 3",
                                "echo half > $cpp_result; "
                                "no-such-command 2>/dev/null",
                                "echo half > $cpp_result; kill -9 $$"}) {
        m_line.m_preprocessCommand = command;
        testing::internal::CaptureStderr();
        EXPECT_FALSE(Preprocess()) << command;
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "shaderqx: ERROR: Problem during preprocessing.  Stopping.\n");
        EXPECT_EQ(TemporaryFolder::Read("a.i"), "half\n");
    }
}

// The default command runs sqxcpp, which must do the same as the library.
TEST_F(SlcExternalCommandsTest, DefaultCommandAndOwnPreprocessorAgree)
{
    TemporaryFolder::Write("in c/inc.h", "float included;\n");
    TemporaryFolder::Write("a.sl", "#include \"inc.h\"\n"
                                   "#define TWICE(x) (2 * x)\n"
                                   "// don't \"stumble\n"
                                   "/* it's \" fine */\n"
                                   "float linux = TWICE(unix); // OMBRIUM's\n"
                                   "string url = \"http://a//b\"; normal n = 'x';\n"
                                   "string s = STRING;\n"
                                   "#pragma annotation \"q\"\n"
                                   "float h\u00F6he \u2264 2;\n"
                                   "#ifdef OMBRIUM\nfloat ombrium;\n#endif\n");
    m_line.m_compile.folders = {"in c"};
    m_line.m_compile.macros = {"STRING=\"a  'b' $c\""};
    ASSERT_TRUE(Preprocess());
    const std::string result = TemporaryFolder::Read("a.i");
    m_line.m_preprocessorArguments = {"-Ilink", "-DSTRING=text"};
    m_line.m_compile.folders = {"link"};
    m_line.m_compile.macros = {"STRING=text"};
    std::filesystem::create_symlink("in c", "link");
    ASSERT_TRUE(Preprocess());
    const std::string ofLibrary = TemporaryFolder::Read("a.i");
    m_line.m_preprocessCommand = "PATH=" SLC_BIN_FOLDER ":$PATH; " + DefaultPreprocessCommand();
    ASSERT_TRUE(Preprocess());
    EXPECT_EQ(TemporaryFolder::Read("a.i"), ofLibrary);
    for (const char* kept :
         {"float included;\n", "float linux = (2 * unix);", "string url = \"http://a//b\";",
          "normal n = 'x';", "string s = \"a  'b' $c\";", "float h\u00F6he \u2264 2;",
          "float ombrium;", "# 1 \"in c/inc.h\" 1\n"})
        EXPECT_NE(result.find(kept), std::string::npos) << kept << " in " << result;
}

TEST_F(SlcExternalCommandsTest, CCCommandSeesItsVariables)
{
    std::filesystem::create_directory("out");
    m_line.m_outputDirectory = "out";
    m_line.m_ccCommand = "echo $output_dir $output_file $cc_input_file > seen; "
                         "echo built > $output_dir/$output_file";
    EXPECT_TRUE(Build());
    EXPECT_THAT(TemporaryFolder::Read("seen"),
                testing::MatchesRegex("out/.unfinished-.* glow.sqx .unfinished-.*/glow.cpp\n"));
    EXPECT_EQ(TemporaryFolder::Read("out/glow.sqx"), "built\n");
}

TEST_F(SlcExternalCommandsTest, CCFileIsKeptIfAskedWhateverTheCommandReturned)
{
    for (const char* command : {"true", "false"}) {
        m_line.m_ccCommand = command;
        for (const bool keep : {true, false}) {
            std::filesystem::remove("glow.cpp");
            m_line.m_keepCCFile = keep;
            testing::internal::CaptureStderr();
            const bool built = Build();
            EXPECT_EQ(testing::internal::GetCapturedStderr(),
                      built ? "" : "shaderqx: ERROR: Problem during C++ compilation.  Stopping.\n");
            EXPECT_EQ(built, command == std::string("true"));
            EXPECT_EQ(std::filesystem::exists("glow.cpp"), keep) << command;
            EXPECT_FALSE(HasFolders());
        }
    }
}

// The shell may end by the signal or with the corresponding status.
TEST_F(SlcExternalCommandsTest, InterruptedCommandEndsTheCompiler)
{
    QxDebug::EnableRemoval();
    for (const int signal : {SIGINT, SIGQUIT})
        for (const std::string end : {"kill -$signal $$", "exit $((128 + $signal))"}) {
            m_line.m_preprocessCommand = "signal=" + std::to_string(signal) +
                                         "; echo half > ${cpp_result-/dev/null}; " + end;
            m_line.m_ccCommand = *m_line.m_preprocessCommand;
            EXPECT_EXIT(Preprocess(), testing::KilledBySignal(signal), "") << end;
            EXPECT_EXIT(Build(), testing::KilledBySignal(signal), "") << end;
            EXPECT_FALSE(HasFolders() || std::filesystem::exists("a.i")) << end;
        }
}

}  // namespace

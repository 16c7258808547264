#include "driver/SlcCompileSource.h"

#include <gtest/gtest.h>

#include "helpers/TemporaryFolder.h"
#include "support/SlcDiagnostics.h"

namespace {

class SlcCompileSourceTest : public testing::Test {
protected:
    /// Compiles the text as if it were the preprocessed "glow.sl", and stores the messages.
    bool Compile(const std::string& preprocessed)
    {
        m_line.m_inputFile = "glow.sl";
        m_line.m_preprocessedFile = "glow.i";
        SlcRunFiles files;
        files.m_preprocessed.emplace("glow.i");
        files.m_preprocessedText = "# 1 \"glow.sl\"\n" + preprocessed;
        TemporaryFolder::Write(files.m_preprocessed->Path(), files.m_preprocessedText);
        testing::internal::CaptureStderr();
        const bool compiled = CompileSource(m_line, files);
        m_messages = testing::internal::GetCapturedStderr();
        return compiled;
    }

    TemporaryFolder m_folder;
    SlcCommandLine m_line;
    std::string m_messages;
};

TEST_F(SlcCompileSourceTest, DeletesTheOutputNamedAfterTheSource)
{
    struct Case {
        const char* inputFile;
        const char* cutName;
        const char* deleted;
    };
    static const Case cases[] = {
        {"a.sl", "a", "out/a.sqx"},
        {"dir/a.b.sl", "dir/a", "out/a.sqx"},
        {"./a.sl", "", "out/.sqx"},
        {"x.y/a.sl", "x", "out/x.sqx"},
    };
    m_line.m_outputDirectory = "out";
    for (const Case& c : cases) {
        for (const char* name : {"out/a.sqx", "out/.sqx", "out/x.sqx"})
            TemporaryFolder::Write(name, "");
        m_line.m_inputFile = c.inputFile;
        DeleteSQX(m_line);
        EXPECT_EQ(SlcCutPath(m_line.m_inputFile), c.cutName);
        EXPECT_FALSE(std::filesystem::exists(c.deleted)) << c.inputFile;
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator("out"), {}), 2) << c.inputFile;
    }
}

TEST_F(SlcCompileSourceTest, WritesNoOutputWithoutTheListOfLibraries)
{
    m_line.m_librariesFile = "libraries";
    EXPECT_TRUE(Compile("surface shine() { Ci = Cs; }\n")) << m_messages;
    EXPECT_TRUE(std::filesystem::exists("libraries"));
    EXPECT_TRUE(std::filesystem::exists("shine.sqx"));
    m_line.m_librariesFile = "nowhere/libraries";
    EXPECT_FALSE(Compile("surface shine() { Ci = Cs; }\n"));
    EXPECT_NE(m_messages.find("Cannot write nowhere/libraries"), std::string::npos) << m_messages;
    EXPECT_FALSE(std::filesystem::exists("shine.sqx"));
}

TEST_F(SlcCompileSourceTest, KeepsThePreprocessedFileOnlyIfAskedTo)
{
    for (const bool keep : {false, true})
        for (const char* source : {"surface glow() { Ci = Cs; }\n", "surface glow( {}\n"}) {
            m_line.m_keepPreprocessedFile = keep;
            TemporaryFolder::Write("glow.i", "earlier");
            Compile(source);
            EXPECT_EQ(TemporaryFolder::Read("glow.i") != "earlier", keep) << source;
        }
}

TEST_F(SlcCompileSourceTest, RefusedSourceLeavesNoOutput)
{
    struct Case {
        const char* source;
        bool shaderIsKnown;  // the parser reached the end of the shader
        const char* summary;
    };
    static const Case cases[] = {
        {"surface other() { Ci = }\n", false, "1 errors, 1 warnings."},
        {"surface other() { Ci = nothing; }\n", true, "1 errors, 0 warnings."},
        {"surface other() { float a[2]; a = 1; }\n", true, "1 errors, 0 warnings."},
    };
    for (const Case& c : cases) {
        for (const char* earlier : {"glow.sqx", "other.sqx", "bystander.sqx"})
            TemporaryFolder::Write(earlier, "");
        EXPECT_FALSE(Compile(c.source)) << c.source;
        EXPECT_FALSE(std::filesystem::exists("glow.sqx")) << c.source;
        EXPECT_EQ(std::filesystem::exists("other.sqx"), !c.shaderIsKnown) << c.source;
        EXPECT_TRUE(std::filesystem::exists("bystander.sqx")) << c.source;
        const std::string summary =
            std::string("Compilation of glow aborted due to errors: ") + c.summary + "\n";
        EXPECT_TRUE(m_messages.ends_with(summary)) << m_messages;
    }
}

TEST_F(SlcCompileSourceTest, SourceThatEndsTheCompileLeavesNoOutput)
{
    TemporaryFolder::Write("other.sqx", "");
    EXPECT_THROW(Compile("surface other() { Ci = Cs; }\n" + std::string(8192, 'a')),
                 SlcCompilationEnd);
    testing::internal::GetCapturedStderr();
    EXPECT_FALSE(std::filesystem::exists("other.sqx"));
}

TEST_F(SlcCompileSourceTest, MissingPreprocessedFileIsReported)
{
    m_line.m_inputFile = "glow.sl";
    m_line.m_preprocessedFile = "none.i";
    testing::internal::CaptureStderr();
    m_line.m_preprocessCommand = "true";
    SlcRunFiles files;
    files.m_preprocessed.emplace("none.i");
    EXPECT_FALSE(CompileSource(m_line, files));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Cannot open input file: none.i\n");
}

TEST_F(SlcCompileSourceTest, WritesIntoTheOutputDirectory)
{
    std::filesystem::create_directory("out");
    m_line.m_outputDirectory = "out";
    EXPECT_TRUE(Compile("surface glow() { Ci = Cs; }\n")) << m_messages;
    EXPECT_TRUE(std::filesystem::exists("out/glow.sqx"));
    EXPECT_FALSE(std::filesystem::exists("glow.sqx"));
}

}  // namespace

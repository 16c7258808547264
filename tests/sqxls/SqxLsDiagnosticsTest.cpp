#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sqxls/LsEditor.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(SqxLsDiagnostics, AppearAtTheirPlacesUntilTheyAreFixed)
{
    LsEditor editor;
    editor.Open("a.sl", "surface a()\n{\n    /* \xF0\x9F\x98\x80 */ Ci = Cs @;\n}\n");
    EXPECT_THAT(editor.Diagnostics("a.sl"), ElementsAre(testing::StartsWith("2:21-2:22 ")));
    const SqxJson diagnostic = editor.Published("a.sl")["diagnostics"][0];
    EXPECT_EQ(diagnostic["severity"], 1);
    EXPECT_EQ(diagnostic["source"], "shaderqx");
    editor.Replace("a.sl", " @", "");
    EXPECT_THAT(editor.Diagnostics("a.sl"), IsEmpty());
    EXPECT_TRUE(editor.Published("a.sl")["diagnostics"].is_array()) << "cleared, not forgotten";
    editor.Replace("a.sl", "Ci", "float i; i++; Ci");
    editor.Diagnostics("a.sl");
    const SqxJson related = editor.Published("a.sl")["diagnostics"][0]["relatedInformation"];
    EXPECT_EQ(related[0]["message"], "unexpected '+': there is no '++', write '+= 1'");
    EXPECT_EQ(related[0]["location"]["uri"], LsEditor::Uri("a.sl"));
    editor.Close("a.sl");
    EXPECT_THAT(editor.Diagnostics("a.sl"), IsEmpty());
}

TEST(SqxLsDiagnostics, IncludeAdviceInTheTextForEditorsWithoutRelatedInformation)
{
    LsEditor editor(SqxJson::object(), SqxJson::object());
    editor.Open("a.sl", "surface a() { float i; i++; }\n");
    EXPECT_THAT(
        editor.Diagnostics("a.sl"),
        testing::Contains(testing::HasSubstr("; unexpected '+': there is no '++', write '+= 1'")));
}

TEST(SqxLsDiagnostics, ReportAnUnterminatedStringOnce)
{
    struct {
        const char* body;  // begins in line 1
        const char* place;
    } static const cases[] = {
        {"printf(\"gain %f, Kd);\n", "1:7-1:21 "},
        {"string m = \"wood.tx\n", "1:11-1:19 "},
        {"if (map != \"wood.tx) {\n  Ci = 1;\n}\n", "1:11-1:22 "},
        {"printf(\"a);\npoint p = point \"world\" (0, 0, 0);\n", "1:7-1:11 "},
        {"printf(\"a);\nfloat f = 1;\nprintf(\"b %f\\n\", f);\nstring w = \"v\";\n", "1:7-1:11 "},
    };
    LsEditor editor;
    for (const auto& one : cases) {
        editor.Open("a.sl", "surface a(float Kd = 1; string map = \"\") {\n" +
                                std::string(one.body) + "Ci = Cs;\n}\n");
        EXPECT_THAT(editor.Diagnostics("a.sl"), ElementsAre(testing::StartsWith(one.place)))
            << one.body;
        editor.Close("a.sl");
    }
    // Other faults are shown as well, also after an unterminated string.
    editor.Open("a.sl", "surface a() {\nCi = $;\nOi = \"x;\n$\n}\n");
    EXPECT_THAT(editor.Diagnostics("a.sl"), testing::SizeIs(testing::Ge(3U)));
}

TEST(SqxLsDiagnostics, FollowFilesThatASourceIncludes)
{
    LsEditor editor;
    TemporaryFolder::Write("gain.h", "float gain() { return 0.5; }\n");
    editor.Open("a.sl", "#include \"gain.h\"\n#include \"late.h\"\nsurface a() { Ci = gain(); }\n");
    EXPECT_THAT(editor.Diagnostics("a.sl"), ElementsAre(testing::StartsWith("1:")));
    // A missing file appears, and another has an unsaved fault in the editor.
    TemporaryFolder::Write("late.h", "float late() { return 1; }\n");
    editor.Notify("workspace/didChangeWatchedFiles",
                  {{"changes", {{{"uri", LsEditor::Uri("late.h")}, {"type", 1}}}}});
    EXPECT_THAT(editor.Diagnostics("a.sl"), IsEmpty());
    editor.Open("gain.h", "float gain() { return nothing; }\n");
    EXPECT_THAT(editor.Diagnostics("gain.h"), ElementsAre(testing::HasSubstr("nothing")));
    EXPECT_THAT(editor.Diagnostics("a.sl"), IsEmpty());
    // A fault in a file that two sources include is shown once, until the file is fixed or closed.
    editor.Open("b.sl", "#include \"gain.h\"\nsurface b() { Ci = gain(); }\n");
    EXPECT_THAT(editor.Diagnostics("gain.h"), ElementsAre(testing::HasSubstr("nothing")));
    editor.Close("a.sl");
    EXPECT_THAT(editor.Diagnostics("gain.h"), ElementsAre(testing::HasSubstr("nothing")));
    editor.Close("gain.h");
    EXPECT_THAT(editor.Diagnostics("gain.h"), IsEmpty()) << "what is on the disk counts again";
    editor.Replace("b.sl", "gain.h", "other.h");
    EXPECT_THAT(editor.Diagnostics("b.sl"), testing::Not(IsEmpty()));
}

TEST(SqxLsDiagnostics, AreAtTheTopIfOnlyALineDirectiveNamesTheirPlace)
{
    LsEditor editor;
    editor.Open("a.sl", "surface a()\n{\n#line 7 \"other.sl\"\n    Ci = nothing;\n}\n");
    EXPECT_THAT(editor.Diagnostics("a.sl"),
                ElementsAre(testing::StartsWith("0:0-0:11 other.sl:7: ")));
}

TEST(SqxLsSettings, ComeFromTheEditorAFileAndABuild)
{
    const SqxJson settings =
        SqxJson::parse(R"({"shaderqx": {"macros": ["GAIN=2"], "warningLevel": 0}})");
    LsEditor editor(settings);
    const char* const source = "surface a()\n{\n    Ci = GAIN * GLOW * Cs;\n}\n";
    editor.Open("shaders/a.sl", source);
    EXPECT_THAT(editor.Diagnostics("shaders/a.sl"), ElementsAre(testing::HasSubstr("GLOW")));
    TemporaryFolder::Write("compile_flags.txt", "-DGLOW=1\n-I include\n\n-O3\n--nonsense\n");
    editor.Notify("workspace/didChangeWatchedFiles",
                  {{"changes", {{{"uri", LsEditor::Uri("compile_flags.txt")}, {"type", 1}}}}});
    EXPECT_THAT(editor.Diagnostics("shaders/a.sl"), IsEmpty());
    TemporaryFolder::Write("include/glow.h", "#define GLOW 3\n");
    editor.Replace("shaders/a.sl", "surface", "#undef GLOW\n#include \"glow.h\"\nsurface");
    EXPECT_THAT(editor.Diagnostics("shaders/a.sl"), IsEmpty()) << "a folder beside the file";
    editor.Notify("workspace/didChangeConfiguration",
                  SqxJson::parse(R"({"settings": {"shaderqx": {"includeFolders": [7]}}})"));
    EXPECT_THAT(editor.Diagnostics("shaders/a.sl"), ElementsAre(testing::HasSubstr("GAIN")));
}

TEST(SqxLsSettings, AreThoseOfTheLastBuildForItsSources)
{
    LsEditor editor;
    TemporaryFolder::Write("a.sl", "surface a() { Ci = GAIN; }\n");
    TemporaryFolder::Write("inc/b.h", "\n");
    ASSERT_EQ(std::system(SLC_SQXMAKE " -o . '-DGAIN=2\n-DGAIN=(' -Iinc a.sl > log 2>&1"), 0)
        << TemporaryFolder::Read("log");
    editor.Open("a.sl", "#include \"b.h\"\nsurface a() { Ci = GAIN; }\n");
    EXPECT_THAT(editor.Diagnostics("a.sl"), IsEmpty());
    editor.Open("b.sl", "surface b() { Ci = GAIN; }\n");
    EXPECT_EQ(editor.Diagnostics("b.sl").size(), 1U) << "not built there";
    // The server ignores the state of a build in its working directory for sources elsewhere.
    const std::string elsewhere = (std::filesystem::current_path() / "sources/c.sl").string();
    TemporaryFolder::Write(elsewhere, "surface c() { Ci = LOSS; }\n");
    ASSERT_EQ(std::system(SLC_SQXMAKE " -o out -DLOSS=2 sources/c.sl > log 2>&1"), 0)
        << TemporaryFolder::Read("log");
    std::filesystem::current_path("out");
    editor.Open(elsewhere, "surface c() { Ci = LOSS; }\n");
    EXPECT_EQ(editor.Diagnostics(elsewhere).size(), 1U);
}

}  // namespace

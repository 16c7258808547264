// Tests command lines of sqxview, the command lines of sqxshade that it derives from settings, and
// the excerpts of sources that it shows with reports.

#include <gtest/gtest.h>

#include "sqxshade/SqxShadeCommand.h"
#include "sqxview/SqxViewOptions.h"
#include "sqxview/SqxViewReport.h"

namespace {

TEST(SqxViewOptions, ReadsItsOptionsAndThoseOfThePicture)
{
    const SqxViewOptions options =
        SqxReadViewOptions({"--port", "8080", "-w2", "--time-limit=3", "--open", "--square", "a.sl",
                            "--param", "k=--open", "--texture", "--port=1", "--", "-b.sl"});
    EXPECT_EQ(options.port, 8080);
    EXPECT_EQ(options.warnings, "-w2");
    EXPECT_EQ(options.timeLimit, std::chrono::seconds(3));
    EXPECT_TRUE(options.open);
    EXPECT_EQ(options.shade.picture.shape, SqxShapeKind::Square);
    ASSERT_EQ(options.shade.shaders.size(), 2U);
    EXPECT_EQ(options.shade.shaders[0].parameters[0].second, "--open");
    EXPECT_EQ(options.shade.shaders[1].path, "./-b.sl") << "not an option to another program";
    EXPECT_EQ(options.shade.textures[0].first, "--port") << "the value of another option";
}

TEST(SqxViewOptions, RefusesInvalidOptions)
{
    struct {
        std::vector<std::string> words;
        const char* fault;
    } static const cases[] = {
        {{}, "No shader is given"},
        {{"a.sqx"}, "'a.sqx' is no source: its name must end in .sl"},
        {{"--port", "0", "a.sl"}, "The port must be from 1 to 65535, but is '0'"},
        {{"a.sl", "--port"}, "Option '--port' needs a number after it"},
        {{"--time-limit", "9999", "a.sl"}, "The time limit must be from 1 to 3600, but is '9999'"},
        {{"-o", "b.png", "a.sl"}, "Unknown option '-o'"},
        {{"--dso", "a.sl"}, "Unknown option '--dso'"},
        {{"--nothing", "a.sl"}, "Unknown option '--nothing'"},
    };
    for (const auto& one : cases)
        try {
            (void)SqxReadViewOptions(one.words);
            ADD_FAILURE() << "Taken, but wanted: " << one.fault;
        } catch (const SqxUsageError& error) {
            EXPECT_STREQ(error.what(), one.fault);
        }
}

TEST(SqxShadeCommand, ReturnsTheWordsThatItsOptionsComeFrom)
{
    const std::vector<std::string> words = {"--torus",
                                            "--size",
                                            "64x32",
                                            "--samples",
                                            "1",
                                            "--background",
                                            "0,0.1,1",
                                            "--color",
                                            "0.25,0.25,0.25",
                                            "--opacity",
                                            "0.5,1,1",
                                            "--light",
                                            "ambient:color=0.1,0.2,0.3",
                                            "--light",
                                            "point:from=1,2,3",
                                            "--light",
                                            "distant:from=-2.5,3,-4:to=0,1e-07,0:intensity=2",
                                            "--threads",
                                            "2",
                                            "-I",
                                            "/some/where",
                                            "-D",
                                            "A=1",
                                            "--texture",
                                            "t=t.png",
                                            "a.sl",
                                            "--param",
                                            "k=1",
                                            "--param",
                                            "name=two words",
                                            "b.sl"};
    EXPECT_EQ(SqxShadeWords(SqxReadShadeOptions(words)), words);
    EXPECT_EQ(SqxShadeWords(SqxReadShadeOptions({"a.sl"})), std::vector<std::string>{"a.sl"});
    EXPECT_EQ(SqxShadeCommand(SqxReadShadeOptions({"it's.sl", "--param", "k="})),
              R"(sqxshade 'it'\''s.sl' --param k=)");
}

TEST(SqxViewReport, ShowsTheLinesAroundEachPlace)
{
    const auto read = [](const std::string& file, std::string& text) {
        text = "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12";
        return file != "secret";
    };
    const auto excerpts =
        SqxViewExcerptsOf("a:b.sl:2: ERROR: no\na:b.sl:5: WARNING: hm\n"
                          "secret:1: ERROR: no\na:b.sl:12:3: fatal error: no\n"
                          "Compilation of a aborted: 2 errors, 0 warnings\nc:0: x",
                          read);
    ASSERT_EQ(excerpts.size(), 2U);
    EXPECT_EQ(excerpts[0].file, "a:b.sl");
    std::string said;
    for (const SqxViewExcerpt& excerpt : excerpts) {
        for (const SqxViewExcerpt::Line& line : excerpt.lines)
            said += (line.marked ? ">" : "") + line.text + " ";
        said += "| ";
    }
    EXPECT_EQ(said, "1 >2 3 4 >5 6 7 | 10 11 >12 | ");
}

}  // namespace

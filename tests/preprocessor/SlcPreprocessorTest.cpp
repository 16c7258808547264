#include "preprocessor/SlcPreprocessor.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "helpers/TemporaryFolder.h"

namespace {

using Files = std::map<std::string, std::string>;

/// Preprocesses files in memory, of which "a.sl" is the source.
struct Preprocessed {
    explicit Preprocessed(Files files, std::vector<SlcPreprocessorOptions::Macro> macros = {})
    {
        SlcPreprocessorOptions options;
        options.macros = std::move(macros);
        options.folders = {"dir", "other"};
        options.provider = [&](const std::string& path) -> std::optional<std::string> {
            const auto found = files.find(path);
            return found == files.end() ? std::nullopt : std::optional(found->second);
        };
        options.report = [&](const SlcPreprocessorReport& r) { reports.push_back(r); };
        result = SlcPreprocess("a.sl", options);
    }
    explicit Preprocessed(const std::string& source) : Preprocessed(Files{{"a.sl", source}}) {}

    /// Returns the text without line markers and surrounding newlines.
    [[nodiscard]] std::string Text() const
    {
        std::string text;
        std::istringstream lines(result.text);
        for (std::string line; std::getline(lines, line);)
            text += line.starts_with("# ") ? "" : line + "\n";
        text.erase(0, text.find_first_not_of('\n'));
        return text.substr(0, text.find_last_not_of('\n') + 1);
    }
    /// Returns "line:column text" for each report, joined by "; ". "W " precedes the text of a
    /// warning.
    [[nodiscard]] std::string Reports() const
    {
        std::string text;
        for (const auto& r : reports)
            text += (text.empty() ? "" : "; ") + std::to_string(r.line) + ":" +
                    std::to_string(r.column) + " " + (r.isError ? "" : "W ") + r.text;
        return text;
    }

    SlcPreprocessed result;
    std::vector<SlcPreprocessorReport> reports;
};

TEST(SlcPreprocessor, ReportsFaultsAtTheirPlaces)
{
    struct ReportCase {
        const char* source;
        const char* reports;
    };
    static const ReportCase cases[] = {
        {"#include \"nowhere.h\"\n", "1:10 Cannot find the included file 'nowhere.h'"},
        {"#include <>\n", "1:10 '#include' needs the name of a file in \"\" or <>"},
        {"#define f(x) x\nf(\n#include \"a.h\"\n)\n",
         "3:2 '#include' cannot stand between the arguments of a macro"},
        {"#define f(x) x\nf(\n#if f(1)\n#endif\n#include \"a.h\"\n)\n",
         "5:2 '#include' cannot stand between the arguments of a macro"},
        {"  #error stop  here\n", "1:4 #error stop here"},
        {"#warning look\n", "1:2 W #warning look"},
        {"#nothing x\n", "1:2 There is no directive '#nothing'"},
        {"#define\n", "1:2 '#define' needs the name of a macro"},
        {"#define 1\n", "1:9 '#define' needs the name of a macro"},
        {"#define defined\n", "1:9 A macro cannot be called 'defined'"},
        {"#define f(a\n",
         "1:11 Parameters of a macro are names with ',' between them, and end in ')'"},
        {"#define f(a,1) a\n",
         "1:13 Parameters of a macro are names with ',' between them, and end in ')'"},
        {"#define f(a,a) a\n", "1:13 Two parameters of the macro are called 'a'"},
        {"#define f(a) #b\n", "1:14 '#' in a macro must be followed by a parameter"},
        {"#define f ## b\n", "1:11 '##' must stand between two tokens of a macro"},
        {"#define f a ##\n", "1:13 '##' must stand between two tokens of a macro"},
        {"#define f 1\n#define f 1\n#define f 2\n",
         "3:9 W Macro 'f' has been defined in another way"},
        {"#define f(a,b) a\n f(1);\n", "2:2 Macro 'f' takes 2 arguments, not 1"},
        {"#define f() 1\nf(2)\n", "2:1 Macro 'f' takes 0 arguments, not 1"},
        {"#define f(a) a\n\n f(1, (\n", "3:2 The call of macro 'f' has no ')'"},
        {"#define f(a,b) a##b\nf(+,x)\n", "2:1 Pasting '+' and 'x' makes no token"},
        {"#if 1\n#ifdef x\n", "2:2 '#ifdef' has no '#endif'"},
        {"#else\n#elif 1\n#endif\n",
         "1:2 '#else' without '#if'; 2:2 '#elif' without '#if'; 3:2 '#endif' without '#if'"},
        {"#if 1\n#else\n#else\n#elif 1\n#endif\n",
         "3:2 '#else' after '#else'; 4:2 '#elif' after '#else'"},
        {"#if\n#endif\n", "1:2 '#if' has no condition"},
        {"#if 1 +\n#endif\n", "1:2 The condition of '#if' is not complete"},
        {"#if (1\n#endif\n", "1:2 The condition of '#if' is not complete"},
        {"#if 1 2\n#endif\n", "1:7 '2' cannot stand there in a condition"},
        {"#if \"a\"\n#endif\n", "1:5 '\"a\"' cannot stand there in a condition"},
        {"#if a = 1\n#endif\n", "1:7 '=' cannot stand there in a condition"},
        {"#if 1.5\n#endif\n", "1:5 '1.5' is no integer of 64 bits"},
        {"#if 18446744073709551616\n#endif\n",
         "1:5 '18446744073709551616' is no integer of 64 bits"},
        {"#if ''\n#endif\n", "1:5 A character constant is empty"},
        {"#if 5 % 0\n#endif\n", "1:7 Division by zero in a condition"},
        {"#if defined 1\n#endif\n", "1:5 'defined' needs the name of a macro"},
        {"#ifdef 1\n#endif\n#undef\n",
         "1:8 '#ifdef' needs the name of a macro; 3:2 '#undef' needs the name of a macro"},
        {"#line x\n", "1:2 A line marker needs a number up to 2147483647, and a name in \"\""},
        {"#line 7 \"b.sl\"\n#error x\n", "7:2 #error x"},
        {"a /* b\n /* c\n*/ /* d", "2:2 W Comment begins inside a comment; 3:4 Comment has no end"},
        {"#define A \\\n b\n#if 1 \\\n + x y\n#endif", "4:6 'y' cannot stand there in a condition"},
        {"_Pragma(x)\n", "1:1 '_Pragma' needs a text in parentheses"},
    };
    for (const ReportCase& c : cases) {
        const Preprocessed run(c.source);
        EXPECT_EQ(run.Reports(), c.reports) << c.source;
        EXPECT_EQ(run.result.succeeded, run.Reports().find(" W ") != std::string::npos &&
                                            run.Reports().find("; ") == std::string::npos)
            << c.source;
    }
}

TEST(SlcPreprocessor, CopiesTextThatIsNotC)
{
    for (const char* line :
         {"it's a lone 'apostrophe", "string s = \"unfinished TWICE", "normal n = 'x';",
          "a$b $ @ `", "float h\xC3\xB6he \xE2\x89\xA4 2;", "\x01\xFF", "x\\ y",
          "float a = 1.5f..2e+x;", "\tif  (a)\t\tb", "string url = \"http://a//b\";"})
        EXPECT_EQ(Preprocessed("#define TWICE 2\n" + std::string(line) + "\n").Text(), line);
}

TEST(SlcPreprocessor, DefinesTheMacrosOfTheCommandLine)
{
    const Preprocessed run(
        {{"a.sl", "A B C D(1, 2) E F A$"}},
        {{"A"}, {"B=x y"}, {"C="}, {"D(a,b)=b a"}, {"E"}, {"E", false}, {"F=1\n2"}});
    EXPECT_EQ(run.Text(), "1 x y 2 1 E 1 A$");
    EXPECT_EQ(Preprocessed(Files{{"a.sl", ""}}, {{"1"}}).Reports(),
              "1:9 '#define' needs the name of a macro");
}

TEST(SlcPreprocessor, SeparatesTokensThatWouldBecomeOne)
{
    EXPECT_EQ(
        Preprocessed(
            "#define M -\n#define N 1\n#define E\nx-M y N.5 aE-E-b;N()\n#define S(a)=a=\n=S(=)=")
            .Text(),
        "x- - y 1 .5 aE- -b;1()\n\n= = = = =");
}

TEST(SlcPreprocessor, FindsFilesInMemoryBesideTheSourceAndInFolders)
{
    const Preprocessed run(
        {{"a.sl", "#include \"b.h\"\n#include <b.h>\n#include \"c.h\"\n#include \"b.h\"\n"},
         {"b.h", "beside"},
         {"dir/b.h", "dir"},
         {"other/c.h", "#pragma once\n#include \"d/e.h\"\nother"},
         {"other/d/e.h", "__FILE__ __INCLUDE_LEVEL__"}});
    EXPECT_EQ(run.Text(), "beside\ndir\n\"other/d/e.h\" 2\nother\nbeside");
    EXPECT_EQ(run.result.files,
              (std::vector<std::string>{"a.sl", "b.h", "dir/b.h", "other/c.h", "other/d/e.h"}));
    EXPECT_EQ(run.result.missing, (std::set<std::string>{"c.h", "dir/c.h"}));
}

TEST(SlcPreprocessor, ShowsTheLineAndHowTheFileWasReached)
{
    const Preprocessed run({{"a.sl", "\n#include \"b.h\"\n"},
                            {"b.h", "#include \"dir/c.h\"\n"},
                            {"dir/c.h", "\n\t#include <x>\n"}});
    ASSERT_EQ(run.reports.size(), 1U);
    EXPECT_EQ(SlcIncludersText(run.reports[0]) + SlcReportText(run.reports[0]),
              "In file included from b.h:1,\n"
              "                 from a.sl:2:\n"
              "dir/c.h:2:11: ERROR: Cannot find the included file 'x':\n\n"
              "             \t#include <x>\n"
              "             \t         ^\n");
}

TEST(SlcPreprocessor, ReportsTheColumnsOfTheFile)
{
    struct ColumnCase {
        const char* word;
        int column;
    };
    const Preprocessed run("#define LONG(x) (x + one_two)\n"
                           "/* c */ qa LONG( qb ) qc;\tqd LONG\n\tqe\n");
    static const ColumnCase cases[] = {{"qa", 9},  {"qb", 12}, {"one_two", 12},
                                       {"qc", 23}, {"qd", 27}, {"qe", 2}};
    const std::string& text = run.result.text;
    for (const ColumnCase& c : cases) {
        const std::size_t at = text.find(c.word);
        const std::size_t line = text.rfind('\n', at) + 1;
        int column = static_cast<int>(at - line) + 1;
        for (const SlcColumnChange& change : run.result.columns)
            if (change.offset >= line && change.offset <= at)
                column =
                    change.column + (change.isFixed ? 0 : static_cast<int>(at - change.offset));
        EXPECT_EQ(column, c.column) << c.word << " in " << text;
    }
}

std::string Repeat(const std::string& text, int count)
{
    std::string repeated;
    for (int i = 0; i < count; ++i)
        repeated += text;
    return repeated;
}

TEST(SlcPreprocessor, EndsForAnySource)
{
    std::string doubling = "#define A0 x\n";
    std::string chain;
    for (int i = 0; i < 5000; ++i)
        chain += "#define B" + std::to_string(i) + " B" + std::to_string(i + 1) + "\n";
    for (int i = 0; i < 64; ++i)
        doubling +=
            "#define A" + std::to_string(i + 1) + Repeat(" A" + std::to_string(i), 2) + "\n";
    const std::string paste = "#define P(x) Q(x,x)\n#define Q(x,y) x##y\n";
    Files tree = {{"a.sl", "#include \"0.h\"\n"}, {"40.h", "x\n"}};
    for (int i = 0; i < 40; ++i)
        tree[std::to_string(i) + ".h"] =
            Repeat("#include \"" + std::to_string(i + 1) + ".h\"\n", 2);

    const std::string cycle = Preprocessed("#include \"a.sl\"\n#include \"a.sl\"\n").Reports();
    EXPECT_EQ(cycle,
              "1:10 Files are included over more than 200 levels (do they include each other?)");
    EXPECT_NE(Preprocessed(tree).Reports().find("Files are included over and over"),
              std::string::npos);
    for (const std::string& source :
         {doubling + "A64", paste + Repeat("P(", 64) + "ab" + Repeat(")", 64),
          "#define f(x) x\n" + Repeat("f(", 9999) + Repeat(")", 9999)})
        EXPECT_NE(Preprocessed(source).Reports().find("Macros expand to too much text"),
                  std::string::npos);
    EXPECT_NE(Preprocessed(chain + "B0").Reports().find("over too many steps"), std::string::npos);
    EXPECT_NE(Preprocessed("#if " + Repeat("(", 99999)).Reports().find("nested too deeply"),
              std::string::npos);
    EXPECT_NE(Preprocessed("#if " + Repeat("!", 99999)).Reports().find("nested too deeply"),
              std::string::npos);

    EXPECT_EQ(Preprocessed(Repeat("#if 1\n", 10000) + "x\n" + Repeat("#endif\n", 10000)).Text(),
              "x");
    EXPECT_EQ(Preprocessed(Repeat("#if 1\n", 10000)).reports.size(), 1U);
    EXPECT_EQ(Preprocessed(Repeat("x + ", 2'500'000)).Text().size(), 9'999'999U);
    EXPECT_EQ(Preprocessed(Repeat("/* ", 1'000'000)).reports.size(), 2U);
    EXPECT_EQ(Preprocessed("#line 2147483647\na\nb\nc\n").Text(), "a b c");
}

TEST(SlcPreprocessor, ReadsNoDeviceAndNoFolder)
{
    const TemporaryFolder folder;
    TemporaryFolder::Write("sub/x", "");
    TemporaryFolder::Write("a.sl", "#include \"/dev/zero\"\n#include \"sub\"\n");
    SlcPreprocessorOptions options;
    std::vector<std::string> reports;
    options.report = [&](const SlcPreprocessorReport& report) { reports.push_back(report.text); };
    EXPECT_FALSE(SlcPreprocess("a.sl", options).succeeded);
    EXPECT_FALSE(SlcPreprocess("b.sl", options).succeeded);
    EXPECT_EQ(reports, (std::vector<std::string>{"Cannot find the included file '/dev/zero'",
                                                 "Cannot find the included file 'sub'",
                                                 "Cannot read 'b.sl'"}));
}

TEST(Sqxcpp, WritesRulesForMakefiles)
{
    const TemporaryFolder folder;
    TemporaryFolder::Write("dir/a.sl", "#include \"b c.h\"\nX");
    TemporaryFolder::Write("dir/b c.h", "");
    const auto run = [](const std::string& words) {
        return std::system((SLC_SQXCPP " " + words + " > out 2>&1").c_str());
    };
    EXPECT_EQ(run("-M dir/a.sl"), 0);
    EXPECT_EQ(TemporaryFolder::Read("out"), "a.sqx: dir/a.sl \\\n dir/b\\ c.h\n");
    EXPECT_EQ(run("-MD -MT x -MQ 'y z' -DX=1 -UX '-DX=2 3' dir/a.sl -o text"), 0);
    EXPECT_EQ(TemporaryFolder::Read("a.d"), "x y\\ z: dir/a.sl \\\n dir/b\\ c.h\n");
    EXPECT_NE(TemporaryFolder::Read("text").find("\n2 3\n"), std::string::npos);
    EXPECT_EQ(run("-M -MF rule - < dir/a.sl"), 256);
    EXPECT_FALSE(std::filesystem::exists("rule"));
    EXPECT_EQ(run("-MD -MF no/where dir/a.sl"), 256);
    EXPECT_EQ(run("--nothing"), 512);
    EXPECT_EQ(run("-MF rule dir/a.sl"), 512);
    EXPECT_EQ(run("-MT x dir/a.sl"), 512);
}

}  // namespace

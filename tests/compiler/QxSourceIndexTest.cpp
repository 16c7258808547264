#include "compiler/QxSourceIndex.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

#include "compiler/QxCompiler.h"
#include "compiler/QxLanguage.h"

namespace {

using Files = std::map<std::string, std::string>;

QxCompileResult Compile(const std::string& text, const Files& files = {})
{
    QxCompileOptions options;
    options.makesIndex = true;
    options.output = QxCompileOptions::Output::Nothing;
    options.readFile = [&files](const std::string& path) -> std::optional<std::string> {
        const auto found = files.find(path);
        return found == files.end() ? std::nullopt : std::optional(found->second);
    };
    return QxCompileText("a.sl", text, options);
}

const char* Word(QxNameKind kind)
{
    constexpr const char* words[] = {"shader",   "function", "parameter", "local", "predefined",
                                     "built-in", "shadeop",  "macro",     "space"};
    return words[static_cast<int>(kind)];
}

const char* Word(QxUseRole role)
{
    constexpr const char* words[] = {"def", "read", "write", "call", "ask"};
    return words[static_cast<int>(role)];
}

const char* Word(QxDetail detail)
{
    constexpr const char* words[] = {"", " uniform", " varying", " open"};
    return words[static_cast<int>(detail)];
}

std::string Text(const QxSourcePlace& place)
{
    return std::to_string(place.file) + ":" + std::to_string(place.line) + ":" +
           std::to_string(place.column) + "+" + std::to_string(place.length);
}

/// Returns a use as "file:line:column+length kind name role type detail". If it is in a macro, the
/// place of the macro's use follows " by ".
std::string Text(const QxSourceIndex& index, const QxIndexedUse& use)
{
    const QxIndexedName& name = index.names[static_cast<std::size_t>(use.name)];
    std::string text = Text(use.place) + " " + Word(name.kind) + " " + name.name + " " +
                       Word(use.role) + (use.type.empty() ? "" : " ") + use.type + Word(use.detail);
    if (use.isInMacro && use.macro.line > 0)
        text += " by " + Text(use.macro);
    return text;
}

std::vector<std::string> UseTexts(const QxSourceIndex& index)
{
    std::vector<std::string> texts;
    for (const QxIndexedUse& use : index.uses)
        texts.push_back(Text(index, use));
    return texts;
}

TEST(QxSourceIndex, PlacesEachNameAfterMacrosAndIncludes)
{
    const Files files = {{"help.h", "#define HELP(a) helper(a)\n"
                                    "float helper(float x) { return x; }\n"}};
    const QxCompileResult result = Compile("#define GAIN (2 * Kd)\n"
                                           "#define TWICE(x) ((x) + (x))\n"
                                           "#include \"help.h\"\n"
                                           "surface a(float Kd = 1) {\n"
                                           "    float f = TWICE(s) * GAIN; f = t;\n"
                                           "    f = HELP(f) + \\\n"
                                           "        TWICE(HELP(u)) + v;\n"
                                           "#ifdef GAIN\n"
                                           "    Ci = color \"hsv\" (f, 1, 1);\n"
                                           "#endif\n"
                                           "}\n",
                                           files);
    ASSERT_TRUE(result.succeeded) << result.messages;
    const QxSourceIndex& index = *result.index;
    EXPECT_EQ(index.files, (std::vector<std::string>{"a.sl", "help.h"}));
    EXPECT_EQ(UseTexts(index), (std::vector<std::string>{
                                   "0:1:9+4 macro GAIN def",
                                   "0:1:19+2 parameter Kd read float uniform by 0:5:26+4",
                                   "0:2:9+5 macro TWICE def",
                                   "0:4:9+1 shader a def",
                                   "0:4:17+2 parameter Kd def float uniform",
                                   "0:5:11+1 local f def float varying",
                                   "0:5:15+5 macro TWICE read",
                                   "0:5:21+1 predefined s read float varying",
                                   "0:5:26+4 macro GAIN read",
                                   "0:5:32+1 local f write float varying",
                                   "0:5:36+1 predefined t read float varying",
                                   "0:6:5+1 local f write float varying",
                                   "0:6:9+4 macro HELP read",
                                   "0:6:14+1 local f read float varying",
                                   "0:7:9+5 macro TWICE read",
                                   "0:7:15+4 macro HELP read",
                                   "0:7:20+1 predefined u read float varying",
                                   "0:7:26+1 predefined v read float varying",
                                   "0:8:8+4 macro GAIN ask",
                                   "0:9:5+2 predefined Ci write color varying",
                                   "0:9:16+5 space hsv read",
                                   "0:9:23+1 local f read float varying",
                                   "1:1:9+4 macro HELP def",
                                   "1:1:17+6 function helper call float open by 0:6:9+4",
                                   "1:2:7+6 function helper def float",
                                   "1:2:20+1 parameter x def float open",
                                   "1:2:32+1 parameter x read float open",
                               }));
    ASSERT_EQ(index.includes.size(), 1U);
    EXPECT_EQ(Text(index.includes[0].place), "0:3:10+8");
    EXPECT_EQ(index.includes[0].file, 1);
}

TEST(QxSourceIndex, KeepsTheTextOfDefaultValues)
{
    const QxCompileResult result = Compile("#define TWO (1  +  1)\n"
                                           "surface a(string map = \"a  b\"; float x = TWO * (s -\n"
                                           "#include \"one.h\"\n"
                                           "  /* why */ )) {}\n",
                                           {{"one.h", "1\n"}});
    std::map<std::string, std::string> values;
    for (const QxIndexedName& name : result.index->names)
        values[name.name] = name.defaultValue;
    EXPECT_EQ(values["TWO"], "(1 + 1)");
    EXPECT_EQ(values["map"], "\"a  b\"");
    EXPECT_EQ(values["x"], "(1 + 1) * (s - 1 )");
}

TEST(QxSourceIndex, KnowsWhereAMacroWithinAnotherIsUsed)
{
    const auto result = Compile("#define A s\n#define B (A)\nsurface a() { Ci = B; }\n");
    const std::vector<std::string> uses = UseTexts(*result.index);
    EXPECT_NE(std::find(uses.begin(), uses.end(), "0:2:12+1 macro A read by 0:3:20+1"), uses.end());
}

/// True if the token is a name, not a keyword, and does not come from a macro.
bool IsName(const QxSourceIndex::Token& token)
{
    const auto keywords = QxKeywords();
    return token.use.file < 0 &&
           (std::isalpha(static_cast<unsigned char>(token.text[0])) != 0 || token.text[0] == '_') &&
           std::none_of(keywords.begin(), keywords.end(),
                        [&](const QxWord& word) { return word.word == token.text; });
}

TEST(QxSourceIndex, KnowsEachNameOfTheExamples)
{
    QxCompileOptions options;
    options.makesIndex = true;
    options.output = QxCompileOptions::Output::Nothing;
    options.folders = {SLC_EXAMPLES_FOLDER "/include", SLC_PATTERNS_FOLDER};
    int names = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(SLC_EXAMPLES_FOLDER)) {
        if (entry.path().extension() != ".sl")
            continue;
        const QxCompileResult result = QxCompileFile(entry.path().string(), options);
        for (const QxSourceIndex::Token& token : result.index->tokens) {
            if (!result.succeeded || !IsName(token))
                continue;
            ++names;
            EXPECT_TRUE(result.index->UseAt(token.place.file, token.place.line, token.place.column))
                << entry.path() << ':' << token.place.line << ": " << token.text;
        }
    }
    EXPECT_GT(names, 1000);
}

TEST(QxSourceIndex, ContinuesAfterFaults)
{
    static const struct {
        const char* rest;  // of the shader, whose first statement is correct
        const char* last;  // the last use in the index
    } cases[] = {
        {"Ci = ;\n  P = N;\n}\n", "0:3:7+1 predefined N read normal varying"},
        {"Ci = Kd }\n", "0:2:6+2 parameter Kd read float uniform"},
        {"if (s > ) {\n  P = N;\n  Ci = \n}\n}\n", "0:3:7+1 predefined N read normal varying"},
        {"  Ci = mix(\n", "0:1:45+2 parameter Kd read float uniform"},
        {"float f(float x { return x; }\n  P = N;\n", "0:3:7+1 predefined N read normal varying"},
        {"#include \"none.h\"\n  P = N;\n}\n", "0:3:7+1 predefined N read normal varying"},
        {"Ci = nothing;\n  P = N;\n}\n", "0:3:7+1 predefined N read normal varying"},
        {"string m[1] = {\"\"}; Ci = nothing * texture(\nm[0][b]);\n}\n",
         "0:3:6+1 parameter b read float uniform"},
        {"string m[1] = {\"\"}; Ci = nothing * texture(\nm[0][0]);\n}\n",
         "0:3:1+1 local m read string uniform"},
        {"Ci = color texture(\"x\"[0][1], s, Kd);\n}\n",
         "0:2:34+2 parameter Kd read float uniform"},
    };
    for (const auto& c : cases) {
        const QxCompileResult result =
            Compile("surface a(float Kd = 1; float b = 2) { Oi = Kd;\n" + std::string(c.rest));
        EXPECT_FALSE(result.succeeded);
        ASSERT_TRUE(result.index);
        ASSERT_FALSE(result.index->uses.empty()) << c.rest;
        EXPECT_EQ(Text(*result.index, result.index->uses.back()), c.last) << c.rest;
    }
}

TEST(QxSourceIndex, ContinuesAfterFaultsOutsideOfBlocks)
{
    static const struct {
        const char* source;  // its last line ends with a use of Kd
        const char* shader;  // its definition
    } cases[] = {
        {"surface a(float x = 1 float Kd = 1) {\nCi = Kd; }", "0:1:9+1 shader a def"},
        {"surface a(float x = ; float Kd = 1) {\nCi = Kd; }", "0:1:9+1 shader a def"},
        {"surface a(float x = 1, float Kd = 1) {\nCi = Kd; }", "0:1:9+1 shader a def"},
        {"surface a(float x = 1; int y = 2; float Kd = 1) {\nCi = Kd; }", "0:1:9+1 shader a def"},
        {"surface a(float Kd = 1 {\nCi = Kd; }", "0:1:9+1 shader a def"},
        {"surface a(float Kd = 1)\nCi = Kd; }", "0:1:9+1 shader a def"},
        {"float f(float x float y) { return x; } }\nsurface a(float Kd = 1) {\nCi = Kd; }",
         "0:2:9+1 shader a def"},
        {"surface a$(float Kd = 1) {\nCi = Kd; }", "0:1:9+1 shader a def"},
        {"surface$a(float Kd = 1) {\nCi = Kd; }", "0:1:9+1 shader a def"},
        {"surface\" a(float Kd = 1)\n{\nCi = Kd; }", "0:1:10+1 shader a def"},
    };
    for (const auto& c : cases) {
        const QxCompileResult result = Compile(c.source);
        EXPECT_FALSE(result.succeeded);
        const std::vector<std::string> uses = UseTexts(*result.index);
        ASSERT_FALSE(uses.empty()) << c.source;
        EXPECT_NE(std::find(uses.begin(), uses.end(), c.shader), uses.end()) << c.source;
        EXPECT_NE(uses.back().find(" parameter Kd read float uniform"), std::string::npos)
            << c.source << '\n'
            << uses.back();
    }
}

std::string NamesOf(const QxSourceIndex& index, const std::vector<int>& numbers)
{
    std::string text;
    for (const int number : numbers)
        text += (text.empty() ? "" : " ") + index.names[static_cast<std::size_t>(number)].name;
    return text;
}

TEST(QxSourceIndex, FindsScopeAndCallAtAPlace)
{
    const std::string source = "float f(float x) {\n"                      // 1
                               "  float y = x;\n"                          // 2
                               "  return y; }\n"                           // 3
                               "surface a(float Kd = 1; color c = 1) {\n"  // 4
                               "  float k = Kd; { float Kd = 2;\n"         // 5
                               "  k = mix(k, f(Kd), 2); }\n"               // 6
                               "  Ci = c * k;\n"                           // 7
                               "  Oi = mix(c, (1, 2, 3), \n"               // 8
                               "}\n";
    const auto index = Compile(source).index;
    static const struct {
        int line;
        int column;
        const char* scope;
        const char* call;
        int argument;
    } cases[] = {
        {2, 13, "x", "", 0},           {3, 10, "y x", "", 0},         {5, 13, "c Kd f", "", 0},
        {6, 14, "Kd k c f", "mix", 1}, {6, 16, "Kd k c f", "f", 0},   {6, 21, "Kd k c f", "mix", 2},
        {7, 8, "k c Kd f", "", 0},     {8, 19, "k c Kd f", "mix", 1}, {8, 25, "k c Kd f", "mix", 2},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(NamesOf(*index, index->NamesInScope(0, c.line, c.column)), c.scope) << c.line;
        const QxCallAtPlace call = index->CallAt(0, c.line, c.column);
        EXPECT_EQ(call.name, c.call) << c.line << ':' << c.column;
        EXPECT_EQ(call.argument, c.argument) << c.line << ':' << c.column;
    }
    ASSERT_TRUE(index->UseAt(0, 7, 9));
    EXPECT_EQ(Text(*index, *index->UseAt(0, 7, 9)), "0:7:8+1 parameter c read color uniform");
    EXPECT_EQ(index->UseAt(0, 7, 6), nullptr);
}

TEST(QxSourceIndex, FindsTheCallBetweenTheArgumentsOfAMacro)
{
    const std::string first = "#define TWICE(x) mix(x, (x), 0.5)\n";
    static const struct {
        const char* line;  // '|' marks the place
        const char* call;
        int argument;
    } cases[] = {
        {"surface a() { Ci = TWICE(noise(s, |t)); }", "noise", 1},
        {"surface a() { Ci = TWICE(noise(s|, t)); }", "noise", 0},
        {"surface a() { Ci = TWICE(noise(s, t)| * noise(u)); }", "", 0},
        {"surface a() { Ci = max(u, TWICE(noise(s) |)); }", "max", 1},
        {"surface a() { Ci = TWICE(TWICE(max(s, |t))); }", "max", 1},
        {"surface a() { Ci = TWICE(u) * max(v, |t); }", "max", 1},
    };
    for (const auto& c : cases) {
        std::string line = c.line;
        const std::size_t column = line.find('|');
        line.erase(column, 1);
        const auto index = Compile(first + line).index;
        const QxCallAtPlace call = index->CallAt(0, 2, static_cast<int>(column) + 1);
        EXPECT_EQ(call.name, c.call) << c.line;
        EXPECT_EQ(call.argument, c.argument) << c.line;
    }
}

}  // namespace

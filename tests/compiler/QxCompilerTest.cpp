#include "compiler/QxCompiler.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <malloc.h>
#include <optional>
#include <pthread.h>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "helpers/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

std::vector<std::string> Examples()
{
    std::vector<std::string> paths;
    for (const auto& entry : fs::recursive_directory_iterator(SLC_EXAMPLES_FOLDER))
        if (entry.path().extension() == ".sl")
            paths.push_back(entry.path().string());
    std::sort(paths.begin(), paths.end());
    return paths;
}

QxCompileOptions OptionsOf(std::size_t number)
{
    QxCompileOptions options;
    options.optimizationLevel = static_cast<int>(number % 4);
    options.warningLevel = 2;
    options.output =
        number % 3 == 0 ? QxCompileOptions::Output::Cpp : QxCompileOptions::Output::ByteCode;
    options.folders = {SLC_PATTERNS_FOLDER};
    return options;
}

/// Returns the output and the messages of each source, compiled with `OptionsOf` its index.
std::vector<std::string> CompileAll(const std::vector<std::string>& paths)
{
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const QxCompileResult result = QxCompileFile(paths[i], OptionsOf(i));
        EXPECT_TRUE(result.succeeded || paths[i].find("/dso/") != std::string::npos)
            << paths[i] << '\n'
            << result.messages;
        texts.push_back(result.output + result.messages);
    }
    return texts;
}

TEST(QxCompiler, GivesTheSameBytesFirstAgainAndInThreads)
{
    const auto paths = Examples();
    ASSERT_GT(paths.size(), 40U);
    const auto first = CompileAll(paths);
    EXPECT_EQ(CompileAll(paths), first);
    std::vector<std::vector<std::string>> texts(4);
    std::vector<std::thread> threads;
    for (auto& ofThread : texts)
        threads.emplace_back([&] { ofThread = CompileAll(paths); });
    for (auto& thread : threads)
        thread.join();
    for (const auto& ofThread : texts)
        EXPECT_TRUE(ofThread == first);
}

/// Returns only those messages of the program that the library has too.
std::string WithoutWordsOfTheProgram(const std::string& messages)
{
    std::string kept;
    std::istringstream lines(messages);
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with("shaderqx: ") && !line.starts_with("Compilation of "))
            kept += line + "\n";
    return kept;
}

TEST(QxCompiler, AgreesWithTheProgram)
{
    using Failure = QxCompileResult::Failure;
    struct AgreementCase {
        const char* source;
        Failure failure;
        int errors;
    };
    static const AgreementCase cases[] = {
        {"surface a(float Kd = 1) { Ci = Kd * Cs * noise(P); Oi = 1; }", Failure::None, 0},
        {"surface a() { float x = nothing; Ci = y; }", Failure::Source, 2},
        {"/* /* */ surface a() { float x = ; Ci = x }", Failure::Source, 2},
        {"#include \"none.h\"\nsurface a() {}", Failure::Preprocessing, 0},
    };
    const TemporaryFolder folder;
    for (const AgreementCase& c : cases) {
        TemporaryFolder::Write("a.sl", c.source);
        std::filesystem::remove("a.sqx");
        const bool compiled = std::system(SLC_PROGRAM " a.sl 2> messages") == 0;
        const QxCompileResult result = QxCompileFile("a.sl");
        EXPECT_EQ(result.succeeded, compiled) << c.source;
        EXPECT_EQ(result.failure, c.failure) << c.source;
        EXPECT_EQ(result.errors, c.errors) << c.source;
        EXPECT_EQ(result.output, compiled ? TemporaryFolder::Read("a.sqx") : "");
        EXPECT_EQ(result.messages, WithoutWordsOfTheProgram(TemporaryFolder::Read("messages")));
    }
}

TEST(QxCompiler, StopsAfterThePreprocessorAndContinuesFromThere)
{
    QxCompileOptions options;
    options.output = QxCompileOptions::Output::Preprocessed;
    const std::string text = "#define LIGHT Cl\nsurface a() { Ci = LIGHT; }\n";
    const QxCompileResult first = QxCompileText("a.sl", text, options);
    EXPECT_TRUE(first.succeeded);
    EXPECT_EQ(first.output, "# 1 \"a.sl\"\n\nsurface a() { Ci = Cl; }\n");
    options = {};
    options.isPreprocessed = true;
    EXPECT_EQ(QxCompileText("b.sl", first.output, options).output,
              QxCompileText("a.sl", text).output);
}

TEST(QxCompiler, WritesWholeFilesOrReportsWhyNot)
{
    const TemporaryFolder folder;
    QxCompileResult result = QxCompileText("a.sl", "surface glow() { Ci = Cs; }");
    QxWriteOutput(result, ".");
    EXPECT_TRUE(result.succeeded);
    EXPECT_EQ(TemporaryFolder::Read("glow.sqx"), result.output);
    QxWriteOutput(result, "nowhere");
    EXPECT_EQ(result.failure, QxCompileResult::Failure::Compiler);
    ASSERT_FALSE(result.reports.empty());
    EXPECT_EQ(result.reports.back().text, "Cannot open nowhere/glow.sqx for byte-code generation");
    EXPECT_FALSE(result.succeeded);

    QxCompileResult faulty = QxCompileText("a.sl", "surface dull() { Ci = x; }");
    QxWriteOutput(faulty, ".");
    EXPECT_FALSE(faulty.succeeded || fs::exists("dull.sqx"));
    EXPECT_EQ(faulty.failure, QxCompileResult::Failure::Source);
    EXPECT_EQ(faulty.reports.size(), 1U);
}

TEST(QxCompiler, ReadsFromMemoryAndListsWhatItRead)
{
    QxCompileOptions options;
    options.macros = {"GAIN=0.5"};
    options.folders = {"nowhere"};
    options.readFile = [](const std::string& path) -> std::optional<std::string> {
        if (path == "nowhere/gain.h")
            return "float gain(float x) { return x * GAIN; }";
        return std::nullopt;
    };
    const QxCompileResult result =
        QxCompileText("dir/a.sl", "#include \"gain.h\"\nsurface a() { Ci = gain(s); }\n", options);
    EXPECT_TRUE(result.succeeded) << result.messages;
    EXPECT_EQ(result.shaderName, "a");
    EXPECT_TRUE(result.output.starts_with("\x7F"));
    EXPECT_EQ(result.files, (std::vector<std::string>{"dir/a.sl", "nowhere/gain.h"}));
    EXPECT_EQ(result.searchedPlaces, (std::vector<std::string>{"dir/gain.h"}));
}

TEST(QxCompiler, ReportsAsData)
{
    struct ReportCase {
        const char* source;
        int line;
        int column;
        int length;
        const char* text;
    };
    static const ReportCase cases[] = {
        {"#include \"none.h\"\n", 1, 10, 8, "Cannot find the included file 'none.h'"},
        {"#define F(x) (x)\nsurface a() {\n  Ci = F(1) + $;\n}\n", 3, 15, 1, "Invalid charcacter"},
        {"surface a() {\n\tCi = \xC3\xA9 $ + @;\n}\n", 2, 7, 2, "Invalid charcacter"},
        {"#define F(x) (x x)\nsurface a() {\n  Ci =  F(s) + 1;\n}\n", 3, 9, 1, "parse error"},
        {"surface a() {\n\n  Ci = nothing;\n}\n", 3, 8, 7, "Undefined variable: nothing"},
        {"#define F(x) (x)\nsurface a() {\n  Ci = F(1) +  F(nothing) * 2;\n}\n", 3, 16, 1,
         "Undefined variable: nothing"},
        {"#line 2147483647\n\nsurface a() { Ci = none; }\n", 2147483647, 20, 4,
         "Undefined variable: none"},
        {"surface a() {\n  Ci = 1; P = Cs *\n  N;\n}\n", 2, 15, 4, "Incompatible types for *"},
    };
    for (const ReportCase& c : cases) {
        const QxCompileResult result = QxCompileText("a.sl", c.source);
        EXPECT_FALSE(result.succeeded);
        EXPECT_EQ(result.output, "");
        ASSERT_FALSE(result.reports.empty()) << result.messages;
        const QxCompileReport& report = result.reports.front();
        EXPECT_EQ(report.severity, QxCompileReport::Severity::Error);
        EXPECT_EQ(report.file, "a.sl");
        EXPECT_EQ(report.line, c.line) << c.source;
        EXPECT_EQ(report.column, c.column) << c.source;
        EXPECT_EQ(report.length, c.length) << c.source;
        EXPECT_EQ(report.text, c.text) << c.source;
        EXPECT_NE(result.messages.find(c.text), std::string::npos) << result.messages;
    }
    QxCompileOptions options;
    options.showsAdvice = true;
    const auto advised = QxCompileText("a.sl", "surface a() { float i; i++; }", options);
    EXPECT_NE(advised.reports.front().advice.find("there is no '++'"), std::string::npos);
    const auto checked = QxCompileText("a.sl", "surface a() { P[0] = 1; Ci = none; }", options);
    ASSERT_EQ(checked.reports.size(), 2U) << checked.messages;
    EXPECT_EQ(checked.reports.front().advice.find("write 'setxcomp(P, "), 0U)
        << checked.reports.front().advice;
    EXPECT_EQ(checked.reports.back().advice, "");
    const auto warned =
        QxCompileText("a.sl", "f(float x) { return x; } surface a() { Ci = f(s); }");
    ASSERT_EQ(warned.reports.size(), 1U);
    EXPECT_EQ(warned.reports.front().severity, QxCompileReport::Severity::Warning);
    EXPECT_EQ(warned.reports.front().level, 1);
}

// An error that ends the program `shaderqx` early makes a compile of the library fail, but does not
// end the process.
TEST(QxCompiler, NeverEndsTheProcess)
{
    const std::string longName(9000, 'x');
    for (const std::string& source :
         {"surface " + longName + "() {}", std::string(), std::string("\0", 1),
          "surface a() { Ci = " + std::string(100000, '(') + ";}"}) {
        const auto result = QxCompileText("a.sl", source);
        EXPECT_FALSE(result.succeeded);
        EXPECT_NE(result.messages, "");
    }
    EXPECT_EQ(QxCompileFile("/nowhere/a.sl").messages, "ERROR: Cannot read '/nowhere/a.sl'\n");
}

std::string Repeat(std::string_view text, int times)
{
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

TEST(QxCompiler, RejectsSourcesThatAreTooDeepForTheStackOfTheThread)
{
    const std::string bodies[] = {
        Repeat("{ ; ", 3300) + Repeat("}", 3300),
        Repeat("if (x > 0) { ", 2400) + Repeat("}", 2400),
        Repeat("if (x > 0) x = 1; else ", 1600) + ";",
        "x = 1" + Repeat(" + x", 9000) + ";",
        "x = " + Repeat("1 + (", 3300) + "x" + Repeat(")", 3300) + ";",
        "x = " + Repeat("-", 9000) + "x;",
    };
    pthread_attr_t small;
    ASSERT_EQ(pthread_attr_init(&small), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&small, std::size_t{512} << 10), 0);
    for (const std::string& body : bodies) {
        std::string source = "surface a() { float x = s; " + body + " Ci = x; }";
        QxCompileResult result;
        using Compile = std::function<void()>;
        Compile compile = [&] { result = QxCompileText("a.sl", source); };
        pthread_t thread;
        ASSERT_EQ(pthread_create(
                      &thread, &small,
                      [](void* argument) -> void* {
                          (*static_cast<Compile*>(argument))();
                          return nullptr;
                      },
                      &compile),
                  0);
        ASSERT_EQ(pthread_join(thread, nullptr), 0);
        ASSERT_EQ(result.reports.size(), 1U) << body.substr(0, 20);
        EXPECT_NE(result.reports[0].text.find("nested too deeply"), std::string::npos);
        compile();
        EXPECT_TRUE(result.succeeded) << result.messages;
    }
    pthread_attr_destroy(&small);
}

TEST(QxCompiler, KeepsNoMemory)
{
    using Failure = QxCompileResult::Failure;
    const std::string source = "float f(float x) { return x * 2; }\n"
                               "surface a(string map = \"\") { float v[3] = {1, 2, s};\n"
                               "Ci = f(v[2]) * color texture(map); Oi = ";
    const struct {
        std::string end;
        Failure failure;
    } cases[] = {
        {"", Failure::Source},
        {"1; }", Failure::None},
        {std::string(8192, 'a'), Failure::OverlongToken},  // aborts the parser
    };
    const auto compile = [&](int count) {
        for (int i = 0; i < count; ++i)
            for (const auto& c : cases)
                EXPECT_EQ(QxCompileText("a.sl", source + c.end).failure, c.failure);
    };
    compile(20);
    const auto before = mallinfo2().uordblks;
    compile(500);
    EXPECT_LT(mallinfo2().uordblks, before + 5000);
}

}  // namespace

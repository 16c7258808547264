// Checks the order of the protocol, and what the server keeps and compiles of open files.

#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <unistd.h>

#include "sqxls/LsEditor.h"

namespace {

constexpr const char* k_good = "surface a(float Kd = 1;)\n{\n    Ci = Kd * Cs;\n}\n";

TEST(SqxLsServer, KeepsTheOrderOfTheProtocol)
{
    LsEditor editor;
    EXPECT_EQ(editor.Refused("initialize", SqxJson::object())["code"], -32600) << "only once";
    EXPECT_EQ(editor.Refused("textDocument/nothing", SqxJson::object())["code"], -32601);
    EXPECT_EQ(editor.Refused("textDocument/formatting", 7)["code"], -32602) << "no parameters";
    EXPECT_EQ(editor.Refused("textDocument/formatting",
                             {{"textDocument", {{"uri", "file:///not/open.sl"}}}})["code"],
              -32602);
    editor.Notify("$/setTrace", {{"value", "off"}});
    EXPECT_TRUE(editor.logged.empty());
    EXPECT_TRUE(editor.Ask("shutdown", nullptr).is_null());
    EXPECT_EQ(editor.Refused("shutdown", nullptr)["code"], -32600);
    EXPECT_EQ(editor.Server().ExitStatus(), std::nullopt);
    editor.Notify("exit", nullptr);
    EXPECT_EQ(editor.Server().ExitStatus(), 0);
}

TEST(SqxLsServer, RefusesInvalidMessages)
{
    std::vector<SqxJson> sent;
    SqxLsServer server([&](const SqxJson& message) { sent.push_back(message); });
    struct {
        const char* message;
        const char* answer;  // code, and id
    } static const cases[] = {
        {R"(7)", "-32600 null"},
        {R"([{"id": 1, "method": "initialize"}])", "-32600 null"},
        {R"({"id": {}, "method": "initialize"})", "-32600 null"},
        {R"({"id": null, "method": "initialize"})", "-32600 null"},
        {R"({"id": 1, "method": 3})", "-32600 1"},
        {R"({"id": "x", "method": "textDocument/hover"})", "-32002 \"x\""},
        {R"({"id": 5, "result": null})", ""},
        {R"({"method": "textDocument/didOpen"})", ""},
        {R"({"method": "exit"})", ""},
    };
    for (const auto& one : cases) {
        sent.clear();
        server.Receive({SqxJson::parse(one.message), "", false});
        EXPECT_EQ(sent.empty() ? "" : sent[0]["error"]["code"].dump() + " " + sent[0]["id"].dump(),
                  one.answer)
            << one.message;
    }
    EXPECT_EQ(server.ExitStatus(), 1) << "without 'shutdown'";
}

TEST(SqxLsDocuments, ApplyChangesInOrder)
{
    LsEditor editor;
    // A character of two UTF-16 units precedes the places of the changes.
    editor.Open("a.sl", "/* \xF0\x9F\x98\x80 */ surface a() { Ci = Cs; }\n");
    editor.Change("a.sl", SqxJson::parse(R"([
        {"range": {"start": {"line": 0, "character": 28}, "end": {"line": 0, "character": 30}}, "text": "x"},
        {"range": {"start": {"line": 0, "character": 23}, "end": {"line": 0, "character": 23}}, "text": "float x = 1; "}])"),
                  2);
    EXPECT_TRUE(editor.Diagnostics("a.sl").empty());
    editor.Change("a.sl", {{{"text", "surface a() { Ci = y; }\n"}}}, 4);
    EXPECT_EQ(editor.Diagnostics("a.sl").size(), 1U);
    EXPECT_EQ(editor.Published("a.sl")["version"], 4);
    // A change of an earlier version has no effect.
    editor.Change("a.sl", {{{"text", k_good}}}, 3);
    ASSERT_EQ(editor.logged.size(), 1U);
    EXPECT_NE(editor.logged[0].find("Version 3"), std::string::npos) << editor.logged[0];
    EXPECT_EQ(editor.Diagnostics("a.sl").size(), 1U);
    // A change with an invalid part has no effect either.
    editor.Change("a.sl", {{{"text", k_good}}, {{"text", 7}}}, 5);
    EXPECT_EQ(editor.logged.size(), 2U);
    EXPECT_EQ(editor.Diagnostics("a.sl").size(), 1U);
    editor.Change("a.sl", {{{"text", k_good}}}, 6);
    EXPECT_TRUE(editor.Diagnostics("a.sl").empty());
}

/// Returns the resident memory of this process in KB.
long ResidentMemory()
{
    std::ifstream file("/proc/self/statm");
    long size = 0;
    long resident = 0;
    file >> size >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

TEST(SqxLsDocuments, AnEditCostsOneCompileAndKeepsNoMemory)
{
    LsEditor editor;
    editor.Open("b.h", "float gain() { return 0.5; }\n");
    editor.Open("a.sl", "#include \"b.h\"\nsurface a() { Ci = gain() * Cs; }\n");
    editor.Pause();
    const SqxLsWorkspace& workspace = editor.Server().Workspace();
    std::mt19937 random(1);
    long before = 0;
    const auto edit = [&](int count) {
        const std::size_t compiles = workspace.CompileCount();
        for (int i = 0; i < count; ++i) {
            const bool isHeader = random() % 4 == 0;
            const std::string name = isHeader ? "b.h" : "a.sl";
            const std::string number = std::to_string(random() % 1000);
            if (random() % 2 == 0 && editor.Text(name).find("x ") == std::string::npos)
                editor.Replace(name, "{ ", "{ float x = " + number + "; ");
            else if (editor.Text(name).find("{ float x") != std::string::npos)
                editor.Replace(name, "{ float x", "{ /* " + number + " */ floats y");
            else
                editor.ReplaceBySame(name);
            (void)editor.AskAt("textDocument/foldingRange", name);
            editor.Pause();
            if (editor.Text(name).size() > 400) {
                editor.Close(name);
                editor.Open(name, isHeader ? "float gain() { return 0.5; }\n"
                                           : "#include \"b.h\"\nsurface a() { Ci = gain(); }\n");
            }
        }
        EXPECT_EQ(workspace.CompileCount() - compiles, static_cast<std::size_t>(count));
    };
    edit(300);
    before = ResidentMemory();
    edit(1500);
    EXPECT_LT(ResidentMemory() - before, 2000) << "KB after 1500 edits";
    EXPECT_TRUE(editor.logged.empty()) << editor.logged[0];
}

TEST(SqxLsDocuments, ABurstOfChangesCostsOneCompile)
{
    LsEditor editor;
    editor.Open("a.sl", k_good);
    for (int i = 0; i < 20; ++i)
        editor.Replace("a.sl", "Ci = ", "Ci = 1 * ");
    EXPECT_TRUE(editor.Diagnostics("a.sl").empty());
    EXPECT_EQ(editor.Server().Workspace().CompileCount(), 1U);
    editor.Notify("textDocument/didSave", {{"textDocument", {{"uri", LsEditor::Uri("b.sl")}}}});
    editor.Pause();
    EXPECT_EQ(editor.Server().Workspace().CompileCount(), 1U) << "nothing to do with it";
}

TEST(SqxLsDocuments, MayHaveAnyText)
{
    std::string large = "surface a() {\n";
    while (large.size() < 1000000)
        large += "    Ci = Cs * noise(P * " + std::to_string(large.size()) + ");\n";
    const std::string texts[] = {
        "",
        std::string(1, '\0') + "surface",
        "\r\r\rsurface a() { Ci = 1 }",
        std::string(20000, '('),
        "surface a() { Ci = " + std::string(9000, 'x') + "; }",
        "#include \"a.sl\"\n",
        "/* \xEF\xBF\xBD",
        large + "}\n",
    };
    LsEditor editor;
    for (const std::string& text : texts) {
        editor.Open("a.sl", text);
        for (const char* method : {"textDocument/foldingRange", "textDocument/formatting"})
            (void)editor.AskAt(method, "a.sl");
        (void)editor.Diagnostics("a.sl");
        editor.Close("a.sl");
    }
    EXPECT_TRUE(editor.logged.empty()) << editor.logged[0];
}

}  // namespace

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sqxls/LsEditor.h"

namespace {

/// Returns the text after the first action with that title, or the titles of all actions if there
/// is none.
std::string Fixed(LsEditor& editor, const std::string& text, const std::string& title)
{
    editor.Open("a.sl", text);
    const SqxJson params = SqxJson::parse(R"({"context": {"diagnostics": []},
        "range": {"start": {"line": 0, "character": 0}, "end": {"line": 99, "character": 0}}})");
    std::string titles;
    for (const SqxJson& action : editor.AskAt("textDocument/codeAction", "a.sl", "", params)) {
        titles += action["title"].get<std::string>() + "\n";
        if (action["title"] == title)
            return editor.Edited("a.sl", action["edit"]["changes"][LsEditor::Uri("a.sl")]);
    }
    return titles;
}

TEST(SqxLsActions, ApplyUnambiguousAdvice)
{
    struct {
        const char* before;
        const char* title;
        const char* after;
    } static const cases[] = {
        {"surface a()\n{\n    Ci = Cs\n}\n", "Insert ';'", "surface a()\n{\n    Ci = Cs;\n}\n"},
        {"surface a()\n{\n    float x = s  // one\n    Ci = x;\n}\n", "Insert ';'",
         "surface a()\n{\n    float x = s;  // one\n    Ci = x;\n}\n"},
        {"surface a() { int i = 3; Ci = i; }\n", "Replace 'int' by 'float'",
         "surface a() { float i = 3; Ci = i; }\n"},
        {"surface a() { float i = 0; i++; }\n", "Replace '++' by '+= 1'",
         "surface a() { float i = 0; i += 1; }\n"},
        {"surface a() { float i = 0; if (i <> 1) i = 1; }\n", "Replace '<>' by '!='",
         "surface a() { float i = 0; if (i != 1) i = 1; }\n"},
        {"surface a(string map = \"\") { if (map = \"\") Ci = 1; }\n", "Replace '=' by '=='",
         "surface a(string map = \"\") { if (map == \"\") Ci = 1; }\n"},
        {"surface a()\n{\n    Oi = 1;\n    Ci = gain * Cs;\n}\n", "Declare 'float gain'",
         "surface a()\n{\n    Oi = 1;\n    float gain = 0;\n    Ci = gain * Cs;\n}\n"},
        {"surface a() { float i; for (i = 0; i < n; i += 1) Ci = i; }\n", "Declare 'float n'",
         "surface a() { float i; float n = 0; for (i = 0; i < n; i += 1) Ci = i; }\n"},
        {"surface a()\n{\n    uniform float f = s;\n    Ci = f;\n}\n", "Declare 'f' varying",
         "surface a()\n{\n    varying float f = s;\n    Ci = f;\n}\n"},
        // Another scope in the same line declares a variable of the same name.
        {"surface a() { { float q = 1; Ci = q; } Oi = q; }\n", "Declare 'float q'",
         "surface a() { { float q = 1; Ci = q; } float q = 0; Oi = q; }\n"},
        {"surface a() { { uniform float f = 1; Ci = f; } { uniform float f = s; Oi = f; } }\n",
         "Declare 'f' varying",
         "surface a() { { uniform float f = 1; Ci = f; } { varying float f = s; Oi = f; } }\n"},
        {"surface a() { uniform float f =\n    s; Ci = f; }\n", "Declare 'f' varying",
         "surface a() { varying float f =\n    s; Ci = f; }\n"},
        {"#define TWICE(x) (2 * (x))\nsurface a() { Ci = TWICE(q); }\n", "Declare 'float q'",
         "#define TWICE(x) (2 * (x))\nsurface a() { float q = 0; Ci = TWICE(q); }\n"},
        {"surface a(float Kd = 1) { float k = Kd; Ci = k; }\n", "Declare 'k' uniform",
         "surface a(float Kd = 1) { uniform float k = Kd; Ci = k; }\n"},
    };
    LsEditor editor;
    for (const auto& one : cases) {
        EXPECT_EQ(Fixed(editor, one.before, one.title), one.after);
        editor.Open("a.sl", one.after);
        EXPECT_TRUE(editor.Diagnostics("a.sl").empty()) << one.after;
    }
    EXPECT_EQ(Fixed(editor, "light a() { Ci = 1; }", ""), "") << "what another kind of shader has";
    // An edit of a declaration concerns all of its variables.
    EXPECT_EQ(
        Fixed(editor, "surface a(float k = 1) { float f = k, g[2]; g[0] = s; Ci = g[0]; }", ""),
        "");
    EXPECT_EQ(Fixed(editor, "surface a() { uniform float f = s, g = 1; Ci = f + g; }", ""), "");
    EXPECT_EQ(Fixed(editor, "surface a(float k = 1) { float f = mod(k, 2); Ci = f; }", ""),
              "Declare 'f' uniform\n");
}

TEST(SqxLsColors, AreShownAndWritten)
{
    LsEditor editor;
    struct {
        const char* text;
        const char* shown;  // in hundredths; empty for no color
        const char* green;  // the form of pure green at that place
    } static const cases[] = {
        {"color (1, 0.5, 0)", "100 50 0", "color (0, 1, 0)"},
        {"color \"rgb\" (.25, 0, 2)", "25 0 100", "color \"rgb\" (0, 1, 0)"},
        {"color \"hsv\" (0.6666667, 1, 0.5)", "0 0 50", "color \"hsv\" (0.333, 1, 1)"},
        {"color\"YIQ\"(0.299, 0.596, 0.212)", "100 0 0", "color\"YIQ\"(0.587, -0.275, -0.523)"},
        {"color \"YIQ\" (0.587, -0.275, -0.523)", "0 100 0",
         "color \"YIQ\" (0.587, -0.275, -0.523)"},
        {"color (s, t, 0)", "", ""},
        {"color \"HSV\" (0, 0, 0)", "", ""},
        {"color (1, 1)", "", ""},
        {"color \"hsv", "", ""},
    };
    for (const auto& one : cases) {
        editor.Open("a.sl", one.text);
        const SqxJson colors = editor.AskAt("textDocument/documentColor", "a.sl");
        ASSERT_EQ(colors.size(), *one.shown ? 1U : 0U) << one.text;
        if (colors.empty())
            continue;
        EXPECT_EQ(RangeText(colors[0]["range"]),
                  "0:0-0:" + std::to_string(std::string(one.text).size()));
        std::string shown;
        for (const char* component : {"red", "green", "blue"})
            shown += (shown.empty() ? "" : " ") +
                     std::to_string(std::lround(colors[0]["color"][component].get<double>() * 100));
        EXPECT_EQ(shown, one.shown) << one.text;
        SqxJson params =
            SqxJson::parse(R"({"color": {"red": 0, "green": 1, "blue": 0, "alpha": 1}})");
        params["range"] = colors[0]["range"];
        EXPECT_EQ(editor.AskAt("textDocument/colorPresentation", "a.sl", "", params)[0]["label"],
                  one.green);
    }
}

TEST(SqxLsLens, StartsAProgramThatShowsTheFile)
{
    TemporaryFolder folder;
    TemporaryFolder::Write("viewer", "#!/bin/sh\necho \"The page is at http://localhost:1/$1; x\"\n"
                                     "exec sleep 3600\n");
    TemporaryFolder::Write("broken", "#!/bin/sh\necho 'no page here'\nexit 1\n");
    std::filesystem::permissions("viewer", std::filesystem::perms::owner_all);
    std::filesystem::permissions("broken", std::filesystem::perms::owner_all);
    const auto command = [](LsEditor& editor) {
        editor.Open("a.sl", "surface a()\n{\n}\nlight b()\n{\n}\n");
        const SqxJson lenses = editor.AskAt("textDocument/codeLens", "a.sl");
        EXPECT_GE(lenses.size(), 1U);
        EXPECT_EQ(lenses[0]["command"]["title"], "Preview");
        SqxJson params = lenses[0]["command"];
        params["arguments"].push_back(SqxJson::parse(R"({"show": false})"));
        return params;
    };
    SqxJson settings = SqxJson::object();
    settings["sqxview"] = (std::filesystem::current_path() / "viewer").string();
    {
        LsEditor editor(settings);
        const SqxJson params = command(editor);
        const SqxJson first = editor.Ask("workspace/executeCommand", params);
        EXPECT_THAT(first["uri"].get<std::string>(), testing::StartsWith("http://localhost:1/"));
        EXPECT_EQ(editor.Ask("workspace/executeCommand", params), first) << "still running";
    }
    settings["sqxview"] = (std::filesystem::current_path() / "broken").string();
    LsEditor editor(settings);
    EXPECT_EQ(editor.Refused("workspace/executeCommand", command(editor))["message"],
              "no page here");
    EXPECT_EQ(
        editor.Refused("workspace/executeCommand", SqxJson::parse(R"({"command": "rm"})"))["code"],
        -32602);
}

}  // namespace

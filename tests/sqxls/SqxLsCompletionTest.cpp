#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sqxls/LsEditor.h"

namespace {

using testing::HasSubstr;

/// Opens a file with the text and returns the labels that the server offers at '|', in order.
std::vector<std::string> Completed(LsEditor& editor, const std::string& marked)
{
    std::string text = marked;
    text.erase(text.find('|'), 1);
    editor.Open("a.sl", text);
    const SqxJson items = editor.AskAt("textDocument/completion", "a.sl", marked)["items"];
    std::vector<std::pair<std::string, std::string>> sorted;
    for (const SqxJson& item : items)
        sorted.emplace_back(item["sortText"], item["label"]);
    std::sort(sorted.begin(), sorted.end());
    std::vector<std::string> labels;
    for (const auto& [order, label] : sorted)
        labels.push_back(label);
    return labels;
}

TEST(SqxLsCompletion, OffersWhatIsValidAtAPlace)
{
    struct {
        const char* text;
        std::vector<std::string> among;
        std::vector<std::string> not_among;
    } static const cases[] = {
        {"float f(float y) { return y; }\nsurface a(float Kd = 1) { float edge = 1; Ci = |; }",
         {"Kd", "edge", "f", "Cs", "PI", "noise", "float", "illuminance", "N"},
         {"y", "Cl", "rgb"}},
        {"light a() { Cl = |; }", {"Cl", "Ps"}, {"Ci"}},
        {"surface a() { illuminance (P, N, 1) { Ci += |; } }", {"Cl", "L"}, {}},
        {"surface a() { { float inner = 1; } Ci = |; }", {"Cs"}, {"inner"}},
        {"surface a() { float x = 1; Ci = x * |", {"x", "Cs"}, {}},
        {"surface a() { float x = 1; { float y = 1; } |", {"x", "Cs"}, {"y"}},
        {"#define GAIN 2\nsurface a() { Ci = G|; }", {"GAIN"}, {}},
        {"#d|", {"define", "include"}, {"Cs"}},
        {"surface a() { point p = transform(\"|\", P); }", {"shader", "NDC"}, {"hsv"}},
        {"surface a() { color c = color \"|\" (1, 1, 1); }", {"hsv", "xyY"}, {"NDC", "Cs"}},
        {"surface a() { color c = texture(\"t\", s, t, \"|\", 1); }", {"blur", "swidth"}, {"hsv"}},
        {"surface a() { /* | */ }", {}, {"Cs"}},
        {"surface a() { // |\n }", {}, {"Cs"}},
        {"#include \"|\"\nsurface a() { }", {"gain.h", "sub/"}, {"Cs", "a.sl"}},
        {"#include \"sub/|\"\nsurface a() { }", {"sub/deep.h"}, {"gain.h"}},
    };
    LsEditor editor;
    TemporaryFolder::Write("gain.h", "");
    TemporaryFolder::Write("sub/deep.h", "");
    for (const auto& one : cases) {
        const auto labels = Completed(editor, one.text);
        for (const std::string& label : one.among)
            EXPECT_THAT(labels, testing::Contains(label)) << one.text;
        for (const std::string& label : one.not_among)
            EXPECT_THAT(labels, testing::Not(testing::Contains(label))) << one.text;
    }
}

TEST(SqxLsCompletion, SortsByTypeAndReplacesTheWord)
{
    LsEditor editor;
    const auto labels =
        Completed(editor, "surface a(float Kd = 1; color tint = 1) { float k = 2; Ci = ti|; }");
    EXPECT_EQ(labels[0].substr(0, 1), "C") << "colors first, by name";
    EXPECT_LT(std::find(labels.begin(), labels.end(), "tint"),
              std::find(labels.begin(), labels.end(), "Kd"));
    const auto ofCall =
        Completed(editor, "surface a(float Kd = 1; color tint = 1) { float d = length(|); }");
    EXPECT_LT(std::find(ofCall.begin(), ofCall.end(), "P"),
              std::find(ofCall.begin(), ofCall.end(), "tint"));
    for (const char* sign : {"==", "!=", "<=", ">="}) {
        const auto compared =
            Completed(editor, "surface a(float Kd = 1; color tint = 1) { Ci = Kd " +
                                  std::string(sign) + " |; }");
        EXPECT_LT(std::find(compared.begin(), compared.end(), "tint"),
                  std::find(compared.begin(), compared.end(), "Kd"))
            << sign << " assigns nothing";
    }
    editor.Open("a.sl", "surface a() { Ci = dif; }");
    const SqxJson items = editor.AskAt("textDocument/completion", "a.sl", "dif|;")["items"];
    EXPECT_EQ(RangeText(items[0]["textEdit"]["range"]), "0:19-0:22");
}

TEST(SqxLsCompletion, DocumentsTheChosenItem)
{
    LsEditor editor;
    const auto text = [&](const char* item) {
        return editor.Ask("completionItem/resolve", SqxJson::parse(item)).dump();
    };
    EXPECT_THAT(text(R"({"label": "mix", "kind": 3})"), HasSubstr("linear interpolation"));
    EXPECT_THAT(text(R"({"label": "Cs", "kind": 6})"), HasSubstr("Color of the surface"));
    EXPECT_THAT(text(R"({"label": "mine", "kind": 6})"), testing::Not(HasSubstr("documentation")));
    EXPECT_EQ(editor.Refused("completionItem/resolve", 7)["code"], -32602);
}

TEST(SqxLsSignature, ShowsOverloadsAndTheArgument)
{
    struct {
        const char* text;
        std::size_t least;
        const char* active;  // declaration
        int argument;
    } static const cases[] = {
        {"float f(float x; uniform color c) { return x; }\nsurface a() { Ci = f(1, |); }", 1,
         "float f(", 1},
        {"surface a() { Ci = mix(Cs, Os, |0.5); }", 2, "color mix(color, color,", 2},
        {"surface a() { Ci = noise(|", 3, "noise(", 0},
        {"surface a() { Ci = mix(Cs, noise(P), |", 2, "mix(", 2},
        {"surface a() { Ci = texture(\"a\", s, |); }", 1, "texture(", 2},
        {"#define TWICE(x, y) ((x) * (y))\nsurface a() { Ci = TWICE(1, |); }", 1,
         "#define TWICE(x, y)", 1},
        {"#define TWICE(x) ((x) + (x))\nsurface a() { Ci = TWICE(mix(Cs, |Os, 0.5)); }", 2,
         "color mix(color, color,", 1},
    };
    LsEditor editor;
    for (const auto& one : cases) {
        std::string text = one.text;
        text.erase(text.find('|'), 1);
        editor.Open("a.sl", text);
        const SqxJson help = editor.AskAt("textDocument/signatureHelp", "a.sl", one.text);
        ASSERT_TRUE(help.is_object()) << one.text;
        EXPECT_GE(help["signatures"].size(), one.least) << one.text;
        const SqxJson& active = help["signatures"][help["activeSignature"].get<std::size_t>()];
        EXPECT_THAT(active["label"].get<std::string>(), HasSubstr(one.active)) << one.text;
        EXPECT_EQ(help["activeParameter"], one.argument) << one.text;
    }
    editor.Open("a.sl", "surface a() { if (1 > 2) Ci = (1); }");
    EXPECT_TRUE(editor.AskAt("textDocument/signatureHelp", "a.sl", "if (|1").is_null());
}

}  // namespace

// Checks the answers about names: hover texts, places, new names, symbols, tokens and hints.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sqxls/LsEditor.h"

namespace {

using testing::HasSubstr;

constexpr const char* k_header = "#define TWICE(x) (2 * (x))\n"
                                 "float gain(float amount)\n{\n    return TWICE(amount);\n}\n";
constexpr const char* k_source = "#include \"gain.h\"\n"
                                 "surface lit(float Kd = 0.5)\n"
                                 "{\n"
                                 "    float edge = Kd * 2;\n"
                                 "    normal Nf = faceforward(normalize(N), I);\n"
                                 "    /* \xF0\x9F\x98\x80 */ edge = gain(edge) + s;\n"
                                 "    Ci = Kd * edge * diffuse(Nf) * TWICE(Cs);\n"
                                 "    Oi = 1 / PI;\n"
                                 "}\n";

class SqxLsNames : public testing::Test {
protected:
    SqxLsNames()
    {
        TemporaryFolder::Write("gain.h", k_header);
        editor.Open("a.sl", k_source);
    }

    std::string Hover(const std::string& mark)
    {
        const SqxJson hover = editor.AskAt("textDocument/hover", "a.sl", mark);
        return hover.is_null() ? "" : hover["contents"]["value"].get<std::string>();
    }
    /// Returns "FILE RANGE" for each location.
    std::vector<std::string> Places(const SqxJson& answer)
    {
        std::vector<std::string> places;
        for (const SqxJson& place : answer.is_array() ? answer : SqxJson::array({answer}))
            if (place.is_object()) {
                const std::string uri = place["uri"];
                places.push_back(uri.substr(uri.rfind('/') + 1) + " " + RangeText(place["range"]));
            }
        return places;
    }

    LsEditor editor;
};

TEST_F(SqxLsNames, HoverDescribesTheName)
{
    struct {
        const char* mark;
        std::vector<const char*> texts;
    } static const cases[] = {
        {"K|d * 2", {"float Kd = 0.5", "Parameter of `lit`"}},
        {"ed|ge = Kd", {"float edge", "Local of `lit`", "varying"}},
        {"Kd * ed|ge", {"varying"}},
        {"g|ain(edge)", {"float gain(float amount)"}},
        {"face|forward", {"vector faceforward", "built-ins.md#faceforward"}},
        {"(|N), I", {"normal N", "Normal for shading", "surface", "displacement"}},
        {"P|I;", {"uniform float PI", "circumference"}},
        {"TW|ICE(Cs)", {"#define TWICE(x)", "Becomes", "Cs"}},
    };
    for (const auto& one : cases)
        for (const char* text : one.texts)
            EXPECT_THAT(Hover(one.mark), HasSubstr(text)) << one.mark;
    EXPECT_EQ(Hover("surf|ace"), "");
}

TEST_F(SqxLsNames, DefinitionsAndReferencesCrossFiles)
{
    struct {
        const char* method;
        const char* mark;
        std::vector<std::string> places;
    } static const cases[] = {
        {"textDocument/definition", "ga|in(edge)", {"gain.h 1:6-1:10"}},
        {"textDocument/definition", "TWI|CE(Cs)", {"gain.h 0:8-0:13"}},
        {"textDocument/definition", "\"ga|in.h\"", {"gain.h 0:0-0:0"}},
        {"textDocument/definition", "edge|) + s", {"a.sl 3:10-3:14"}},
        {"textDocument/definition", "diff|use", {}},
        {"textDocument/references",
         "ed|ge = Kd",
         {"a.sl 5:13-5:17", "a.sl 5:25-5:29", "a.sl 6:14-6:18"}},
        {"textDocument/references", "TWI|CE(Cs)", {"gain.h 3:11-3:16", "a.sl 6:35-6:40"}},
    };
    for (const auto& one : cases) {
        auto places = Places(editor.AskAt(one.method, "a.sl", one.mark));
        EXPECT_THAT(places, testing::UnorderedElementsAreArray(one.places)) << one.mark;
    }
    std::string kinds;
    for (const SqxJson& highlight :
         editor.AskAt("textDocument/documentHighlight", "a.sl", "ed|ge = Kd"))
        kinds += RangeText(highlight["range"]) + " " + highlight["kind"].dump() + "\n";
    EXPECT_EQ(kinds, "3:10-3:14 3\n5:13-5:17 3\n5:25-5:29 2\n6:14-6:18 2\n");
}

TEST_F(SqxLsNames, StayKnownDespiteFaultsElsewhere)
{
    editor.Replace("a.sl", "Oi = 1", "Oi = nothing; Oi = \"x\"");
    EXPECT_THAT(Hover("K|d * 2"), HasSubstr("float Kd"));
    editor.Replace("a.sl", "Oi = nothing; Oi = \"x\"", "float f = mix(Kd, ");
    EXPECT_THAT(Hover("K|d * 2"), HasSubstr("float Kd"));
}

TEST_F(SqxLsNames, RenameChangesAllPlacesOrRefuses)
{
    const auto renamed = [&](const std::string& mark, const std::string& word) {
        SqxJson params = SqxJson::object();
        params["newName"] = word;
        return editor.AskAt("textDocument/rename", "a.sl", mark, params)["changes"];
    };
    EXPECT_EQ(renamed("gai|n(edge)", "boost").size(), 2U) << "the included file too";
    const SqxJson changes = renamed("ed|ge = Kd", "border");
    const std::string text = editor.Edited("a.sl", changes[LsEditor::Uri("a.sl")]);
    EXPECT_EQ(text.find("edge"), std::string::npos);
    EXPECT_THAT(text, HasSubstr("*/ border = gain(border) + s;"));
    struct {
        const char* mark;
        const char* word;
        const char* reason;
    } static const cases[] = {
        {"ed|ge = Kd", "Kd", "Kd"},
        {"ed|ge = Kd", "s", "would mean another 's'"},
        {"ed|ge = Kd", "float", "'float' is a word of the language"},
        {"ed|ge = Kd", "2x", "'2x' is no name"},
        {"(|N), I", "M", "'N' belongs to the language"},
        {"surf|ace", "x", "There is no name here"},
    };
    for (const auto& one : cases) {
        SqxJson params = SqxJson::object();
        params["textDocument"]["uri"] = LsEditor::Uri("a.sl");
        params["position"] = editor.PositionOf("a.sl", one.mark);
        params["newName"] = one.word;
        EXPECT_THAT(editor.Refused("textDocument/rename", params)["message"].get<std::string>(),
                    HasSubstr(one.reason));
    }
    EXPECT_EQ(editor.AskAt("textDocument/prepareRename", "a.sl", "ed|ge = Kd")["placeholder"],
              "edge");
    EXPECT_TRUE(editor.AskAt("textDocument/prepareRename", "a.sl", "diff|use").is_null());
}

TEST_F(SqxLsNames, RefusalsOfANameStateTheNewErrorAndItsPlace)
{
    editor.Open("b.sl", "surface b()\n{\n    float x = nothing;\n    float y = 2;\n"
                        "    Ci = x + missing;\n}\n");
    editor.Open("half.h", "float half(float x)\n{\n    float y = 2;\n    return x / y;\n}\n");
    editor.Open("c.sl", "#include \"half.h\"\nsurface c()\n{\n    float f = half(s);\n"
                        "    Ci = half(s) + f;\n}\n");
    const std::string source = (std::filesystem::current_path() / "c.sl").string();
    struct {
        const char* file;
        const char* mark;
        const char* word;
        std::string reason;
    } const cases[] = {
        {"b.sl", "|y = 2", "x", "With that name: Illegal redefinition of variable: x"},
        {"half.h", "|y = 2", "x", "The name in line 4 would mean another 'x'"},
        {"half.h", "ha|lf(", "noise",
         "The name in line 5 of '" + source + "' would mean another 'noise'"},
    };
    for (const auto& one : cases) {
        SqxJson params = SqxJson::object();
        params["textDocument"]["uri"] = LsEditor::Uri(one.file);
        params["position"] = editor.PositionOf(one.file, one.mark);
        params["newName"] = one.word;
        EXPECT_EQ(editor.Refused("textDocument/rename", params)["message"], one.reason);
    }
}

TEST_F(SqxLsNames, SymbolsOfAFileAndOfTheWorkspace)
{
    std::string names;
    for (const SqxJson& symbol : editor.AskAt("textDocument/documentSymbol", "a.sl")) {
        names += symbol["name"].get<std::string>() + ":";
        for (const SqxJson& child : symbol["children"])
            names += " " + child["name"].get<std::string>();
        EXPECT_EQ(RangeText(symbol["range"]), "1:0-8:1");
        EXPECT_EQ(RangeText(symbol["selectionRange"]), "1:8-1:11");
    }
    EXPECT_EQ(names, "lit: Kd edge Nf");
    TemporaryFolder::Write("sub/b.sl", "float f(float x)\n{ return x; }\nlight lamp() { }\n");
    TemporaryFolder::Write(".hidden/c.sl", "light lump() { }\n");
    const SqxJson found = editor.Ask("workspace/symbol", SqxJson::parse(R"({"query": "LMP"})"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0]["name"], "lamp");
    EXPECT_EQ(RangeText(found[0]["location"]["range"]), "2:6-2:10");
    EXPECT_EQ(editor.Ask("workspace/symbol", SqxJson::parse(R"({"query": ""})")).size(), 3U);
}

TEST_F(SqxLsNames, SemanticTokensDistinguishUniformAndVarying)
{
    const SqxJson data = editor.AskAt("textDocument/semanticTokens/full", "a.sl")["data"];
    ASSERT_EQ(data.size() % 5, 0U);
    const SqxLsText text(k_source);
    SqxLsPosition at;
    std::vector<std::string> tokens;
    for (std::size_t i = 0; i < data.size(); i += 5) {
        if (data[i] != 0)
            at.character = 0;
        at.line += data[i].get<std::size_t>();
        at.character += data[i + 1].get<std::size_t>();
        const std::size_t begin = text.OffsetOf(at);
        tokens.push_back(std::string(text.Part({begin, begin + data[i + 2].get<std::size_t>()})) +
                         " " + data[i + 3].dump() + " " +
                         (data[i + 4].get<unsigned>() & 8U ? "u" : "") +
                         (data[i + 4].get<unsigned>() & 16U ? "v" : ""));
    }
    for (const char* wanted : {"lit 0 ", "Kd 2 u", "edge 3 v", "N 3 v", "TWICE 4 "})
        EXPECT_THAT(tokens, testing::Contains(wanted));
}

TEST_F(SqxLsNames, HintsShowDetailsAndArguments)
{
    SqxJson params = SqxJson::parse(R"({"range": {"start": {"line": 0, "character": 0},
                                                  "end": {"line": 99, "character": 0}}})");
    const auto hints = [&] {
        std::string text;
        for (const SqxJson& hint : editor.AskAt("textDocument/inlayHint", "a.sl", "", params))
            text += hint["position"]["line"].dump() + ":" + hint["position"]["character"].dump() +
                    " " + hint["label"].get<std::string>() + "\n";
        return text;
    };
    EXPECT_EQ(hints(), "3:14 : varying\n4:13 : varying\n5:25 amount:\n");
    params["range"]["end"]["line"] = 4;
    params["range"]["end"]["character"] = 0;
    EXPECT_EQ(hints(), "3:14 : varying\n");
    editor.Open("b.sl", "#define COUNT float n = s; n += 1;\n"
                        "surface b() { if (s > 0.5) { COUNT } else { COUNT } }\n");
    EXPECT_EQ(editor.AskAt("textDocument/inlayHint", "b.sl", "", params).size(), 1U)
        << "one for all expansions of a macro";
    editor.Notify(
        "workspace/didChangeConfiguration",
        SqxJson::parse(R"({"settings": {"shaderqx": {"inlayHints": {"details": false}}}})"));
    EXPECT_EQ(editor.asked, std::vector<std::string>{"workspace/inlayHint/refresh"});
    EXPECT_EQ(hints(), "");
}

}  // namespace

#include <cctype>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "sqxls/LsEditor.h"
#include "sqxls/SqxLsLayout.h"

namespace {

namespace fs = std::filesystem;

std::string LaidOut(const std::string& source, const SqxLsIndent& indent = {})
{
    SqxLsText text(source);
    const std::vector<SqxLsEdit> edits = SqxLsLayoutOf(text, indent);
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit)
        text.Replace(edit->span, edit->text);
    return text.Bytes();
}

TEST(SqxLsLayout, SetsBlanksAndIndentation)
{
    struct {
        const char* before;
        const char* after;
    } static const cases[] = {
        {"surface a ( float Kd=1 ;float Ks = -1 )\n{\nCi=Kd*Cs ;\n}",
         "surface a(float Kd = 1; float Ks = -1)\n{\n    Ci = Kd * Cs;\n}\n"},
        {"surface a(float Kd = 1;\n  float Ks = 1)\n{\n}\n",
         "surface a(float Kd = 1;\n          float Ks = 1)\n{\n}\n"},
        {"float f(\nfloat x)\n{\nreturn x;\n}\n", "float f(\n    float x)\n{\n    return x;\n}\n"},
        {"f()\n{\nif(a<b&&!c){\nx=1;\n}else if (d)\ny = 2;\nelse\nfor(i=0;i<n;i+=1)\nz[i] = "
         "3;\n}\n",
         "f()\n{\n    if (a < b && !c) {\n        x = 1;\n    } else if (d)\n        y = 2;\n"
         "    else\n        for (i = 0; i < n; i += 1)\n            z[i] = 3;\n}\n"},
        {"f()\n{\nx = a +\nb\n+ c;\ny = f(a,\nb);\n}\n",
         "f()\n{\n    x = a +\n        b\n        + c;\n    y = f(a,\n          b);\n}\n"},
        {"f() {\nilluminance(P,N,1)\n{\nCi+=Cl*(L.N);\n}\n}\n",
         "f() {\n    illuminance (P, N, 1)\n    {\n        Ci += Cl * (L.N);\n    }\n}\n"},
        {"f() { float a[2]={ 1,2 };  return a [0]; }\n",
         "f() { float a[2] = {1, 2}; return a[0]; }\n"},
        {"f() { c = color (1,-1,- 1)*color\"hsv\"(0,0,0) ; d = 1-(-2) ; e = - x*N . L; }\n",
         "f() { c = color (1, -1, -1) * color \"hsv\"(0, 0, 0); d = 1 - (-2); e = -x * N . L; "
         "}\n"},
        {"#  define A(x)   x /* a\n   b */  * 2\n\n\n\n   #if A\nf() {\n#else\ng() "
         "{\n#endif\nx;\n}\n",
         "#  define A(x)   x /* a\n   b */  * 2\n\n#if A\nf() {\n#else\ng() {\n#endif\n    "
         "x;\n}\n"},
        {"f()\n{\n  /* a\n     b */\nx = 1;   // c\n      // d\n}\n",
         "f()\n{\n    /* a\n       b */\n    x = 1;   // c\n    // d\n}\n"},
        {"f()\r\n{\r\nx=1;\r\n}\r\n", "f()\r\n{\r\n    x = 1;\r\n}\r\n"},
        {"a = b ? c:d;\nx = ! = y;\n", "a = b ? c : d;\nx = ! = y;\n"},
        {"x=\"no end;\n", "x=\"no end;\n"},
        {"x=1; /* no end\n", "x=1; /* no end\n"},
        {"x=@;\n", "x=@;\n"},
        {"", ""},
    };
    for (const auto& one : cases)
        EXPECT_EQ(LaidOut(one.before), one.after);
    EXPECT_EQ(LaidOut("f()\n{\nx = (a +\nb);\n}\n", {8, true}),
              "f()\n{\n\tx = (a +\n\t     b);\n}\n");
}

std::vector<std::string> TokensOf(const std::string& source)
{
    std::vector<std::string> texts;
    for (const SqxLsToken& token : SqxLsTokensOf(source)) {
        std::string text(token.text);
        if (token.kind == SqxLsToken::Kind::Comment)  // its later lines may move
            std::erase_if(text, [](unsigned char c) { return std::isspace(c) != 0; });
        texts.push_back(text);
    }
    return texts;
}

TEST(SqxLsLayout, KeepsTheTokensOfAllShadersAndIsStable)
{
    std::size_t sources = 0;
    std::size_t unchanged = 0;
    for (const char* folder : {SLC_EXAMPLES_FOLDER, SLC_TESTS_FOLDER})
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            const std::string extension = entry.path().extension();
            const bool isHeader =
                extension == ".h" && entry.path().parent_path().stem() == "include";
            if (extension != ".sl" && !isHeader)
                continue;
            std::ifstream file(entry.path());
            const std::string source{std::istreambuf_iterator<char>(file), {}};
            const std::string once = LaidOut(source);
            EXPECT_EQ(TokensOf(once), TokensOf(source)) << entry.path();
            EXPECT_EQ(LaidOut(once), once) << entry.path();
            ++sources;
            unchanged += once == source ? 1 : 0;
            // A source with one token per line is the hardest to lay out.
            std::string flat;
            for (const SqxLsToken& token : SqxLsTokensOf(source))
                flat += std::string(token.text) + "\n";
            const std::string laid = LaidOut(flat);
            EXPECT_EQ(TokensOf(laid), TokensOf(flat)) << entry.path();
            EXPECT_EQ(LaidOut(laid), laid) << entry.path();
        }
    EXPECT_GT(sources, 150U);
    EXPECT_GT(unchanged * 10, sources * 3) << "our own style, which it knows";
    RecordProperty("unchanged", static_cast<int>(unchanged));
}

TEST(SqxLsFormatting, EditsAFileOrARangeOfIt)
{
    LsEditor editor;
    editor.Open("a.sl", "surface a()\n{\n  Ci=Cs;\n  Oi=Os;\n}\n");
    const SqxJson options = SqxJson::parse(R"({"options": {"tabSize": 2, "insertSpaces": true}})");
    EXPECT_EQ(editor.Edited("a.sl", editor.AskAt("textDocument/formatting", "a.sl", "", options)),
              "surface a()\n{\n  Ci = Cs;\n  Oi = Os;\n}\n");
    const SqxJson range = SqxJson::parse(R"({"options": {"tabSize": 4, "insertSpaces": true},
        "range": {"start": {"line": 3, "character": 0}, "end": {"line": 4, "character": 0}}})");
    EXPECT_EQ(
        editor.Edited("a.sl", editor.AskAt("textDocument/rangeFormatting", "a.sl", "", range)),
        "surface a()\n{\n  Ci=Cs;\n    Oi = Os;\n}\n");
}

}  // namespace

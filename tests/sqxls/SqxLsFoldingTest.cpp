#include <gtest/gtest.h>

#include "sqxls/LsEditor.h"

namespace {

TEST(SqxLsFolding, FoldsBlocksCommentsAndConditions)
{
    LsEditor editor;
    editor.Open("a.sl", "// one\n// two\n#if 1\nsurface a(float a = 1;\n          float b = 2)\n{\n"
                        "    if (a > b) {\n        Ci = 1;\n    }\n}\n#else\n\n#endif\n");
    std::string folds;
    for (const SqxJson& fold : editor.AskAt("textDocument/foldingRange", "a.sl"))
        folds += fold["startLine"].dump() + "-" + fold["endLine"].dump() + " " +
                 fold.value("kind", "") + "\n";
    EXPECT_EQ(folds, "3-4 \n5-8 \n6-7 \n0-1 comment\n2-9 region\n10-11 region\n");
}

TEST(SqxLsFolding, SelectsTheRangesAroundAPlace)
{
    LsEditor editor;
    editor.Open("a.sl", "surface a()\n{\n    Oi = 1;\n    Ci = mix(Cs, Os, 0.5);\n}\n");
    const SqxJson answer = editor.AskAt("textDocument/selectionRange", "a.sl", "",
                                        {{"positions", {editor.PositionOf("a.sl", "O|s, 0")}}});
    ASSERT_EQ(answer.size(), 1U);
    std::vector<std::string> texts;
    const SqxLsText text(editor.Text("a.sl"));
    for (SqxJson range = answer[0]; !range.is_null(); range = range.value("parent", SqxJson()))
        texts.emplace_back(text.Part(SqxLsReadRange(range["range"], text)));
    const std::vector<std::string> wanted = {"Os",
                                             "Cs, Os, 0.5",
                                             "(Cs, Os, 0.5)",
                                             "Ci = mix(Cs, Os, 0.5);",
                                             "\n    Oi = 1;\n    Ci = mix(Cs, Os, 0.5);\n",
                                             "{\n    Oi = 1;\n    Ci = mix(Cs, Os, 0.5);\n}",
                                             editor.Text("a.sl")};
    EXPECT_EQ(texts, wanted);
}

}  // namespace

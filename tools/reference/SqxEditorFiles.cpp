// The words come from the compiler's tables; the form of literals and comments is written here, as
// the scanner reads them.
//
// Tested by tests/reference/run.sh, which fails if the tree holds older files.

#include "reference/SqxEditorFiles.h"

#include <functional>
#include <string_view>
#include <vector>

#include "frontend/SlcScanner.h"
#include "reference/SqxBuiltInMeanings.h"
#include "symbols/SlcHiddenVariables.h"

namespace {

using Words = std::vector<std::string_view>;

/// Words that are colored alike.
struct WordGroup {
    Words words;
    const char* vimGroup;
    const char* vimLink;
    const char* scope;  // of the grammar
};

[[nodiscard]] Words KeywordsOf(SlcWordKind kind)
{
    Words words;
    for (const SlcKeyword& keyword : SlcKeywords())
        if (keyword.kind == kind)
            words.push_back(keyword.word);
    return words;
}

/// Built-ins that are keywords too, such as `surface`, are colored as keywords.
[[nodiscard]] Words BuiltIns()
{
    Words words;
    for (const SqxBuiltInMeaning& built : SqxBuiltInMeanings()) {
        bool isKeyword = false;
        for (const SlcKeyword& keyword : SlcKeywords())
            isKeyword = isKeyword || keyword.word == built.name;
        if (!isKeyword)
            words.push_back(built.name);
    }
    return words;
}

[[nodiscard]] Words Predefined()
{
    Words words;
    for (const SlcHiddenVariables::VarInfo& variable : SlcHiddenVariables::All())
        words.emplace_back(variable.name);
    return words;
}

[[nodiscard]] std::vector<WordGroup> WordGroups()
{
    return {
        {KeywordsOf(SlcWordKind::Shader), "slShader", "Structure", "storage.type.shader.sl"},
        {KeywordsOf(SlcWordKind::Detail), "slDetail", "StorageClass", "storage.modifier.sl"},
        {KeywordsOf(SlcWordKind::Type), "slType", "Type", "storage.type.sl"},
        {KeywordsOf(SlcWordKind::Statement), "slStatement", "Statement", "keyword.control.sl"},
        {KeywordsOf(SlcWordKind::Texture), "slTexture", "Function", "support.function.texture.sl"},
        {BuiltIns(), "slFunction", "Function", "support.function.sl"},
        {Predefined(), "slPredefined", "Identifier", "variable.language.sl"},
        {{"PI"}, "slConstant", "Constant", "constant.language.sl"},
    };
}

[[nodiscard]] std::string Joined(const Words& words, const char* separator)
{
    std::string text;
    for (const std::string_view word : words) {
        text += text.empty() ? "" : separator;
        text += word;
    }
    return text;
}

}  // namespace

std::string SqxVimSyntax()
{
    std::string text = R"(" Vim syntax file of the RenderMan Shading Language.
" Made by the build target `reference` from the compiler's tables: do not edit.

if exists("b:current_syntax")
  finish
endif

syn case match
)";
    for (const WordGroup& group : WordGroups())
        text +=
            std::string("syn keyword ") + group.vimGroup + " " + Joined(group.words, " ") + "\n";
    text += R"(syn match slNumber "\v<\d+(\.\d*)?([eE][-+]?\d+)?"
syn match slNumber "\v\.\d+([eE][-+]?\d+)?"
syn match slEscape contained "\\."
syn region slString start=+"+ skip=+\\.+ end=+"+ contains=slEscape
syn keyword slTodo contained TODO FIXME XXX
syn region slComment start="/\*" end="\*/" contains=slTodo
syn match slComment "//.*$" contains=slTodo
syn region slPreprocessor start="^\s*#" skip="\\$" end="$" contains=slComment,slString keepend

)";
    for (const WordGroup& group : WordGroups())
        text += std::string("hi def link ") + group.vimGroup + " " + group.vimLink + "\n";
    return text + R"(hi def link slNumber Number
hi def link slString String
hi def link slEscape SpecialChar
hi def link slComment Comment
hi def link slTodo Todo
hi def link slPreprocessor PreProc

let b:current_syntax = "sl"
)";
}

std::string SqxTextMateGrammar()
{
    std::string text = R"({
  "comment": "Made by the build target `reference` from the compiler's tables: do not edit.",
  "name": "RenderMan Shading Language",
  "scopeName": "source.sl",
  "fileTypes": ["sl"],
  "patterns": [
    { "name": "comment.block.sl", "begin": "/\\*", "end": "\\*/" },
    { "name": "comment.line.double-slash.sl", "match": "//.*$" },
    { "name": "meta.preprocessor.sl", "begin": "^\\s*#", "end": "(?<!\\\\)$",
      "patterns": [
        { "name": "string.quoted.sl", "match": "\"[^\"]*\"|<[^>]*>" },
        { "name": "comment.block.sl", "begin": "/\\*", "end": "\\*/" }
      ] },
    { "name": "string.quoted.double.sl", "begin": "\"", "end": "\"",
      "patterns": [ { "name": "constant.character.escape.sl", "match": "\\\\." } ] },
    { "name": "constant.numeric.sl",
      "match": "\\b\\d+(\\.\\d*)?([eE][-+]?\\d+)?|\\.\\d+([eE][-+]?\\d+)?" },
)";
    for (const WordGroup& group : WordGroups())
        text += std::string("    { \"name\": \"") + group.scope + "\", \"match\": \"\\\\b(" +
                Joined(group.words, "|") + ")\\\\b\" },\n";
    return text +
           R"json(    { "name": "entity.name.function.sl", "match": "\\b[A-Za-z_]\\w*(?=\\s*\\()" },
    { "name": "keyword.operator.sl", "match": "[-+*/.^=<>!&|?:]+" }
  ]
}
)json";
}

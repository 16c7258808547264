// The words come from the compiler's tables. The syntax of literals, comments and preprocessor
// lines is written here and follows the scanner and the preprocessor.
//
// Tested by tests/reference/run.sh, which fails if files in the tree are out of date.

#include "reference/SqxEditorFiles.h"

#include <functional>
#include <string_view>
#include <vector>

#include "frontend/SlcScanner.h"
#include "reference/SqxBuiltInMeanings.h"
#include "symbols/SlcHiddenVariables.h"

namespace {

using Words = std::vector<std::string_view>;

/// Words that get the same color.
struct WordGroup {
    Words words;
    const char* vimGroup;
    const char* vimLink;
    const char* scope;      // in the TextMate grammar
    const char* kateStyle;  // one of Kate's default styles, without "ds"
};

[[nodiscard]] Words KeywordsOf(SlcWordKind kind)
{
    Words words;
    for (const SlcKeyword& keyword : SlcKeywords())
        if (keyword.kind == kind)
            words.push_back(keyword.word);
    return words;
}

/// Returns the built-ins except those that are keywords too, such as `surface`, which are colored
/// as keywords.
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
        {KeywordsOf(SlcWordKind::Shader), "slShader", "Structure", "storage.type.shader.sl",
         "Keyword"},
        {KeywordsOf(SlcWordKind::Detail), "slDetail", "StorageClass", "storage.modifier.sl",
         "Attribute"},
        {KeywordsOf(SlcWordKind::Type), "slType", "Type", "storage.type.sl", "DataType"},
        {KeywordsOf(SlcWordKind::Statement), "slStatement", "Statement", "keyword.control.sl",
         "ControlFlow"},
        {KeywordsOf(SlcWordKind::Texture), "slTexture", "Function", "support.function.texture.sl",
         "Function"},
        {BuiltIns(), "slFunction", "Function", "support.function.sl", "Function"},
        {Predefined(), "slPredefined", "Identifier", "variable.language.sl", "Variable"},
        {{SlcHiddenVariables::Pi().name},
         "slConstant",
         "Constant",
         "constant.language.sl",
         "Constant"},
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

std::string SqxKateSyntax()
{
    std::string lists;
    std::string rules;
    std::string styles;
    for (const WordGroup& group : WordGroups()) {
        const std::string name = group.vimGroup;
        lists += "<list name=\"" + name + "\">\n<item>" + Joined(group.words, "</item>\n<item>") +
                 "</item>\n</list>\n";
        rules +=
            "<keyword attribute=\"" + name + "\" context=\"#stay\" String=\"" + name + "\"/>\n";
        styles += "<itemData name=\"" + name + "\" defStyleNum=\"ds" + group.kateStyle + "\"/>\n";
    }
    return R"xml(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE language>
<!-- Made by the build target `reference` from the compiler's tables: do not edit. -->
<language name="RenderMan Shading Language" section="Sources" extensions="*.sl" version="1"
          kateversion="5.0" casesensitive="1">
<highlighting>
)xml" + lists +
           R"xml(<contexts>
<context name="Normal" attribute="Normal" lineEndContext="#stay">
<DetectSpaces/>
<RegExpr attribute="Preprocessor" context="Preprocessor" String="#" firstNonSpace="1"/>
)xml" + rules +
           R"xml(<DetectIdentifier/>
<Float attribute="Number" context="#stay"/>
<Int attribute="Number" context="#stay"/>
<DetectChar attribute="String" context="String" char="&quot;"/>
<Detect2Chars attribute="Comment" context="LineComment" char="/" char1="/"/>
<Detect2Chars attribute="Comment" context="Comment" char="/" char1="*" beginRegion="Comment"/>
<DetectChar attribute="Normal" context="#stay" char="{" beginRegion="Block"/>
<DetectChar attribute="Normal" context="#stay" char="}" endRegion="Block"/>
</context>
<context name="String" attribute="String" lineEndContext="#stay">
<RegExpr attribute="Escape" context="#stay" String="\\."/>
<DetectChar attribute="String" context="#pop" char="&quot;"/>
</context>
<context name="LineComment" attribute="Comment" lineEndContext="#pop"/>
<context name="Comment" attribute="Comment" lineEndContext="#stay">
<Detect2Chars attribute="Comment" context="#pop" char="*" char1="/" endRegion="Comment"/>
</context>
<context name="Preprocessor" attribute="Preprocessor" lineEndContext="#pop">
<LineContinue attribute="Preprocessor" context="#stay"/>
<Detect2Chars attribute="Comment" context="LineComment" char="/" char1="/"/>
<Detect2Chars attribute="Comment" context="Comment" char="/" char1="*" beginRegion="Comment"/>
</context>
</contexts>
<itemDatas>
<itemData name="Normal" defStyleNum="dsNormal"/>
)xml" + styles +
           R"xml(<itemData name="Number" defStyleNum="dsFloat"/>
<itemData name="String" defStyleNum="dsString"/>
<itemData name="Escape" defStyleNum="dsSpecialChar"/>
<itemData name="Comment" defStyleNum="dsComment"/>
<itemData name="Preprocessor" defStyleNum="dsPreprocessor"/>
</itemDatas>
</highlighting>
<general>
<comments>
<comment name="singleLine" start="//"/>
<comment name="multiLine" start="/*" end="*/"/>
</comments>
<keywords casesensitive="1"/>
</general>
</language>
)xml";
}

// Only the tables of a page are generated; the text around them is written by hand. The lines
// between
//
//     <!-- table: NAME -->    and    <!-- end of table -->
//
// are replaced by the table of that name, generated from the compiler's tables. So a declaration in
// docs/built-ins.md is the one against which the compiler checks calls.
//
// Tested by tests/reference/run.sh, which fails if tables in the tree are out of date.

#include "reference/SqxReferencePages.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <stdexcept>
#include <vector>

#include "driver/SlcOptionRows.h"
#include "frontend/SlcLexicalNode.h"
#include "reference/SqxBuiltInExamples.h"
#include "reference/SqxBuiltInMeanings.h"
#include "reference/SqxMacroTables.h"
#include "sqx/SqxLayout.h"
#include "sqx/SqxNumbers.h"
#include "symbols/SlcFuncDeclaration.h"
#include "symbols/SlcFuncDescription.h"
#include "symbols/SlcHiddenVariables.h"
#include "symbols/SlcShaderSymbolTable.h"

namespace {

/// The declarations of each built-in by name; overloads are in the order of the library.
using Declarations = std::map<std::string, std::vector<std::string>, std::less<>>;

[[nodiscard]] std::string Declaration(const SlcFuncDescription& info)
{
    return SlcDeclarationText({info.name, info.returnType, info.argTypes, info.argDetails,
                               info.argStorages, info.tail.get()});
}

[[nodiscard]] Declarations ReadDeclarations()
{
    Declarations declarations;
    for (const SlcFuncDescription& function : SlcFuncDescription::All())
        declarations[function.name].push_back(Declaration(function));
    return declarations;
}

struct ShaderColumn {
    const char* name;
    SlcPtr<SlcShaderSymbolTable> table;
};

/// Returns "writes" if shaders of this type may write the variable, "reads" if they may only read
/// it, and an empty text if they do not have it.
[[nodiscard]] const char* AccessIn(const ShaderColumn& shader, const char* name)
{
    try {
        const auto entry = shader.table->GetVarEntry(SlcLexicalNode::CreateIdent(name), true);
        return entry->GetStorage()->IsReadWrite() ? "writes" : "reads";
    } catch (const SlcSymbolNotFound&) {
        return "";
    }
}

[[nodiscard]] std::string_view MeaningOf(const char* variable)
{
    const std::string_view meaning = SqxPredefinedMeaning(variable);
    if (meaning.empty())
        throw std::runtime_error("Predefined variable '" + std::string(variable) +
                                 "' has no meaning in SqxPredefinedMeanings.cpp");
    return meaning;
}

/// Returns the words for the letters of operands in `SqxLayout`.
[[nodiscard]] std::string Spelled(std::string_view letters)
{
    std::string text;
    for (const char letter : letters) {
        const char* word = "";
        switch (letter) {
        case 'w':
            word = "result";
            break;
        case 'r':
            word = "value";
            break;
        case 'm':
            word = "variable";
            break;
        case 'c':
            word = "flag";
            break;
        case 'n':
            word = "count";
            break;
        case '*':
            word = "...";
            break;
        case 'j':
            word = "place";
            break;
        case 's':
            word = "space";
            break;
        case 'i':
            word = "number";
            break;
        case 'd':
            word = "shadeop";
            break;
        }
        text += (text.empty() ? "" : " ");
        text += word;
    }
    return text;
}

/// Returns the anchor of a heading on a page: the heading in lower case.
[[nodiscard]] std::string AnchorOf(std::string_view heading)
{
    std::string anchor(heading);
    for (char& letter : anchor)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return anchor;
}

/// Returns links to all functions, one line for each chapter.
[[nodiscard]] std::string Contents()
{
    std::string text = "\n";
    std::string_view group;
    for (const SqxBuiltInMeaning& built : SqxBuiltInMeanings()) {
        if (built.group != group) {
            group = built.group;
            text.append(text == "\n" ? "" : "\n").append("- **").append(group).append("**:");
        }
        text += " [`" + std::string(built.name) + "`](#" + AnchorOf(built.name) + ")";
    }
    return text + "\n";
}

/// Returns the examples of a function as a list; empty if it has none.
[[nodiscard]] std::string ExampleList(std::string_view function)
{
    std::string text;
    for (const SqxBuiltInExample& example : SqxBuiltInExamples()) {
        if (example.function != function)
            continue;
        const bool isWord = example.value == "no number" || example.value == "infinite";
        text.append(text.empty() ? "\n- `" : "- `").append(example.code).append("` is ");
        text.append(isWord ? "" : "`").append(example.value).append(isWord ? "" : "`");
        text.append(example.note.empty() ? "" : ": ").append(example.note).append("\n");
    }
    return text;
}

[[nodiscard]] std::string Section(const SqxBuiltInMeaning& built,
                                  const std::vector<std::string>& declarations)
{
    std::string text = "\n### " + std::string(built.name) + "\n\n```\n";
    for (const std::string& declaration : declarations)
        text += declaration + "\n";
    std::string meaning(built.meaning);
    meaning[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(meaning[0])));
    text += "```\n\n" + meaning + ".";
    if (const std::string_view details = SqxBuiltInDetails(built.name); !details.empty())
        text.append("\n").append(details);
    return text + "\n" + ExampleList(built.name);
}

constexpr std::string_view k_start = "<!-- table: ";
constexpr std::string_view k_end = "<!-- end of table -->";

/// Returns the description of an option as Markdown, with quoted words and names in capitals as
/// code.
[[nodiscard]] std::string MeaningAsMarkdown(std::string_view meaning)
{
    const auto isCapital = [](char c) { return std::isupper(static_cast<unsigned char>(c)) != 0; };
    std::string text;
    while (!meaning.empty()) {
        const std::size_t end = std::min(meaning.find(' '), meaning.size());
        const std::string_view word = meaning.substr(0, end);
        meaning.remove_prefix(std::min(end + 1, meaning.size()));
        text += text.empty() ? "" : " ";
        if (word.size() > 1 && isCapital(word[0]) && isCapital(word[1])) {
            const std::size_t length = word.find_last_not_of(",;") + 1;
            text.append("`").append(word.substr(0, length)).append("`").append(word.substr(length));
        } else {
            text += word;
        }
    }
    std::replace(text.begin(), text.end(), '\'', '`');
    return text;
}

[[nodiscard]] std::string TableNamed(const std::string& name)
{
    if (name == "built-ins")
        return SqxBuiltInTable();
    if (name == "predefined")
        return SqxPredefinedTable();
    if (name == "instructions")
        return SqxInstructionTable();
    if (name == "plain-macros")
        return SqxPlainMacroTable();
    if (name == "form-macros")
        return SqxFormMacroTable();
    if (name == "options")
        return SqxCompilerOptionTable();
    throw std::runtime_error("There is no table '" + name + "'");
}

}  // namespace

std::string SqxBuiltInTable()
{
    const Declarations declarations = ReadDeclarations();
    std::string text = Contents();
    std::string_view group;
    for (const SqxBuiltInMeaning& built : SqxBuiltInMeanings()) {
        if (built.group != group) {
            group = built.group;
            text.append("\n## ").append(group).append("\n");
        }
        const auto found = declarations.find(built.name);
        if (found == declarations.end())
            throw std::runtime_error("There is no built-in '" + std::string(built.name) + "'");
        text += Section(built, found->second);
    }
    if (SqxBuiltInMeanings().size() != declarations.size())
        throw std::runtime_error("A built-in has no meaning in its first card");
    return text + "\n";
}

std::string SqxPredefinedTable()
{
    const ShaderColumn shaders[] = {
        {"surface", MakeShared<SlcSurfaceSymbolTable>(nullptr)},
        {"light", MakeShared<SlcLightSymbolTable>(nullptr)},
        {"displacement", MakeShared<SlcDisplacementSymbolTable>(nullptr)},
        {"volume", MakeShared<SlcVolumeSymbolTable>(nullptr)},
        {"imager", MakeShared<SlcImagerSymbolTable>(nullptr)},
    };
    std::string text = "\n| Name | Declaration | What it is |";
    std::string rule = "\n|---|---|---|";
    for (const ShaderColumn& shader : shaders) {
        text.append(" ").append(shader.name).append(" |");
        rule += "---|";
    }
    text += rule + "\n";
    for (const SlcHiddenVariables::VarInfo& variable : SlcHiddenVariables::All()) {
        text.append("| `").append(variable.name).append("` | ");
        text += variable.detail()->IsUniform() ? "uniform " : "varying ";
        text += variable.type()->ToString() + " | ";
        text.append(MeaningOf(variable.name)).append(" |");
        for (const ShaderColumn& shader : shaders)
            text.append(" ").append(AccessIn(shader, variable.name)).append(" |");
        text += "\n";
    }
    return text + "\n";
}

std::string SqxInstructionTable()
{
    std::string text = "\n| Number | Name | What follows |\n|---|---|---|\n";
    for (int number = 1; number <= SqxHighestNumber(); ++number) {
        const std::string_view name = SqxNumberName(number);
        if (name.empty())
            continue;
        const SqxLayout* layout = SqxLayout::Find(number);
        text += "| " + std::to_string(number) + " | `";
        text.append(name).append("` | ");
        text += (layout ? Spelled(layout->operands) : "never written") + " |\n";
    }
    return text + "\n";
}

std::string SqxCompilerOptionTable()
{
    std::string table = "| Option | Effect |\n|---|---|\n";
    for (const SlcOptionRow& row : SlcOptionRows()) {
        std::string words = "`";
        for (const char c : row.words)
            words += c == ',' ? "`," : c == ' ' ? " `" : std::string(1, c);
        if (!row.argument.empty())
            words.append(" ").append(row.argument);
        table += "| " + words + "` | " + MeaningAsMarkdown(row.meaning) + " |\n";
    }
    return table;
}

std::string SqxRefreshPage(const std::string& page)
{
    std::string fresh;
    std::size_t from = 0;
    for (std::size_t start; (start = page.find(k_start, from)) != std::string::npos;) {
        const std::size_t nameEnd = page.find(" -->\n", start);
        const std::size_t end = page.find(k_end, start);
        if (nameEnd == std::string::npos || end == std::string::npos)
            throw std::runtime_error("A table has no end");
        const std::size_t nameStart = start + k_start.size();
        fresh += page.substr(from, nameEnd + 5 - from) +
                 TableNamed(page.substr(nameStart, nameEnd - nameStart));
        from = end;
    }
    return fresh + page.substr(from);
}

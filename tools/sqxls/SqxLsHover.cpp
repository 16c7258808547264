// Tested by tests/sqxls/SqxLsNamesTest.cpp.

#include "sqxls/SqxLsHover.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "compiler/QxLanguage.h"
#include "reference/SqxBuiltInMeanings.h"
#include "sqxls/SqxLsCursor.h"
#include "sqxls/SqxLsUri.h"

namespace {

constexpr const char* k_kinds[] = {"surface", "light", "displacement", "volume", "imager"};

std::string Fenced(const std::string& code)
{
    return "```sl\n" + code + "\n```\n";
}

/// Returns the URI of the reference page of built-in functions, installed or in the source tree;
/// empty if it is in neither.
std::string PageUri()
{
    namespace fs = std::filesystem;
    std::error_code failed;
    const fs::path folder = fs::read_symlink("/proc/self/exe", failed).parent_path();
    for (const char* place :
         {"../share/doc/shaderqx/docs/built-ins.md", "../../../docs/built-ins.md"})
        if (const fs::path page = (folder / place).lexically_normal(); fs::exists(page, failed))
            return SqxLsUriOf(page.string());
    return "";
}

std::string PageLink(const std::string& function)
{
    static const std::string k_page = PageUri();
    std::string anchor = function;
    for (char& c : anchor)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return k_page.empty() ? "" : "\n\n[built-ins.md](" + k_page + "#" + anchor + ")";
}

std::string Sentence(std::string_view phrase)
{
    std::string text(phrase);
    if (!text.empty())
        text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    return text + ".";
}

/// Describes the derived detail of a variable or function; empty if the declaration states the
/// detail, or if none was derived.
std::string DetailText(const QxIndexedName& name, const QxIndexedUse& use)
{
    const std::string here = SqxLsDetailWord(use.detail);
    const std::string whole = SqxLsDetailWord(name.inferred);
    if (name.declaresDetail || (here.empty() && whole.empty()))
        return "";
    if (name.kind == QxNameKind::Function || name.kind == QxNameKind::Shadeop)
        return here.empty() ? "" : "\nReturns a " + here + " value here.";
    std::string text =
        here.empty() ? "\nNot declared uniform or varying" : "\nHolds a " + here + " value here";
    if (!whole.empty() && whole != here)
        text += ", and elsewhere a " + whole + " one";
    return text + ".";
}

std::string OwnerText(const QxSourceIndex& index, const QxIndexedName& name)
{
    const bool isVariable = name.kind == QxNameKind::Parameter || name.kind == QxNameKind::Local;
    if (!isVariable || name.owner < 0)
        return "";
    const QxIndexedName& owner = index.names[static_cast<std::size_t>(name.owner)];
    return std::string(name.kind == QxNameKind::Parameter ? "\nParameter of `" : "\nLocal of `") +
           owner.name + "`.";
}

std::string MacroText(const SqxLsCursor& cursor, const QxIndexedName& name)
{
    std::string head = "#define " + name.name;
    for (std::size_t i = 0; i < name.macroParameters.size(); ++i)
        head += (i == 0 ? "(" : ", ") + name.macroParameters[i];
    head += name.macroParameters.empty() ? "" : ")";
    std::string text =
        Fenced(name.declaration.empty() ? head + " " + name.defaultValue : name.declaration);
    for (const QxIndexedMacroUse& use : cursor.index->macroUses)
        if (use.name == cursor.use->name && !use.expansion.empty() &&
            use.range.Contains(cursor.file, cursor.place.line, cursor.place.column))
            return text + "\nBecomes\n" + Fenced(use.expansion);
    return text;
}

std::string TextOf(const SqxLsCursor& cursor, const QxIndexedName& name)
{
    switch (name.kind) {
    case QxNameKind::BuiltIn:
        return SqxLsBuiltInText(name.name, name.declaration);
    case QxNameKind::Predefined:
        return SqxLsPredefinedText(name.name);
    case QxNameKind::Macro:
        return MacroText(cursor, name);
    case QxNameKind::Space:
        return "Space " + name.name;
    case QxNameKind::Shader:
    case QxNameKind::Function:
    case QxNameKind::Parameter:
    case QxNameKind::Local:
    case QxNameKind::Shadeop:
        break;
    }
    return Fenced(name.declaration) + OwnerText(*cursor.index, name) +
           DetailText(name, *cursor.use);
}

}  // namespace

std::string SqxLsDetailWord(QxDetail detail)
{
    return detail == QxDetail::Uniform ? "uniform" : detail == QxDetail::Varying ? "varying" : "";
}

std::string SqxLsBuiltInText(const std::string& name, const std::string& chosen)
{
    std::string declarations;
    for (const QxIndexedName& overload : QxBuiltInFunctions())
        if (overload.name == name)
            declarations += (declarations.empty() ? "" : "\n") + overload.declaration +
                            (overload.declaration == chosen ? "  // this one" : "");
    if (declarations.empty())
        return "";
    std::string text = Fenced(declarations);
    for (const SqxBuiltInMeaning& built : SqxBuiltInMeanings())
        if (built.name == name)
            text += "\n" + Sentence(built.meaning);
    if (const std::string_view details = SqxBuiltInDetails(name); !details.empty())
        text.append("\n\n").append(details);
    return text + PageLink(name);
}

std::string SqxLsPredefinedText(const std::string& name)
{
    std::string read;
    std::string written;
    const QxIndexedName constant = QxPredefinedConstant();
    std::string declaration = name == constant.name ? constant.declaration : "";
    for (const char* kind : k_kinds)
        for (const QxIndexedName& variable : QxPredefinedVariables(kind)) {
            if (variable.name != name)
                continue;
            std::string& list = variable.storage == QxStorage::ReadWrite ? written : read;
            list += (list.empty() ? "" : ", ") + std::string(kind);
            declaration = variable.declaration;
        }
    for (const QxIndexedName& variable : QxLightLoopVariables())
        if (variable.name == name) {
            read += std::string(read.empty() ? "" : ", ") + "the body of a light loop";
            declaration = declaration.empty() ? variable.declaration : declaration;
        }
    if (declaration.empty())
        return "";
    std::string text = Fenced(declaration) + "\n" + Sentence(SqxPredefinedMeaning(name));
    text += read.empty() ? "" : "\n\nRead in: " + read + ".";
    return text + (written.empty() ? "" : "\n\nRead and written in: " + written + ".");
}

SqxJson SqxLsHover(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsCursor cursor = SqxLsCursorAt(workspace, params);
    const QxIndexedName* name = cursor.Name();
    if (!name)
        return nullptr;
    return {{"contents", {{"kind", "markdown"}, {"value", TextOf(cursor, *name)}}},
            {"range",
             SqxLsWriteRange(*cursor.text, SqxLsIndexed::SpanOf(*cursor.text, cursor.use->place))}};
}

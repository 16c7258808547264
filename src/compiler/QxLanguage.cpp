// Tested by tests/compiler/QxLanguageTest.cpp.

#include "compiler/QxLanguage.h"

#include <map>
#include <utility>

#include "compiler/SlcIndexNames.h"
#include "frontend/SlcScanner.h"
#include "frontend/SlcShaderTypeNode.h"
#include "support/SlcCompilation.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcBuiltInTable.h"
#include "symbols/SlcFuncDescription.h"
#include "symbols/SlcHiddenVariables.h"
#include "symbols/SlcShaderSymbolTable.h"

namespace {

QxIndexedName PublicBuiltIn(const SlcFuncDescription& info)
{
    QxIndexedName name;
    name.kind = QxNameKind::BuiltIn;
    SlcSetShape(name, {info.name, info.returnType, info.argTypes, info.argDetails, info.argStorages,
                       info.tail.get()});
    return name;
}

/// Returns a form of a texture access. Texture accesses follow a grammar rule, with a channel in
/// brackets, that no card can express.
QxIndexedName TextureAccess(std::string_view kind, std::string_view result,
                            const std::vector<std::string>& formals)
{
    QxIndexedName name;
    name.kind = QxNameKind::BuiltIn;
    name.name = kind;
    name.type = result;
    name.declaration = std::string(result) + " " + name.name + "(";
    for (const std::string& text : formals) {
        QxIndexedFormal formal;
        formal.text = text;
        formal.type = text.substr(0, text.find(' '));
        name.formals.push_back(std::move(formal));
        name.declaration.append(name.formals.size() == 1 ? "" : ", ").append(text);
    }
    name.takesMore = true;
    name.declaration += ", ...)";
    return name;
}

std::vector<QxIndexedName> AllBuiltIns()
{
    std::multimap<std::string, QxIndexedName> sorted;
    const auto add = [&sorted](QxIndexedName name) {
        const std::string key = name.name;
        sorted.emplace(key, std::move(name));
    };
    for (const SlcFuncDescription& function : SlcFuncDescription::All())
        add(PublicBuiltIn(function));
    for (const std::string_view result : {"float", "color"}) {
        add(TextureAccess("texture", result, {"string"}));
        add(TextureAccess("texture", result, {"string", "float s", "float t"}));
        add(TextureAccess("environment", result, {"string", "vector"}));
    }
    add(TextureAccess("shadow", "float", {"string", "point"}));
    std::vector<QxIndexedName> all;
    for (auto& [key, name] : sorted)
        all.push_back(std::move(name));
    return all;
}

template <class Kind>
SlcPtr<SlcSymbolTable> TableOf(std::string_view word)
{
    Kind kind;
    if (kind.ToString() != word)
        return nullptr;
    return SlcShaderSymbolTableCreater(MakeShared<SlcSemanticError>())(
        &kind, MakeShared<SlcSymbolTable>());
}

QxIndexedName PublicVariable(const SlcVarSymbolEntry& entry)
{
    QxIndexedName name;
    name.kind = QxNameKind::Predefined;
    name.name = entry.GetName();
    SlcSetPredefined(name, entry);
    return name;
}

void AddVariable(std::vector<QxIndexedName>& variables, SlcSymbolTable& table, const char* name)
{
    SlcIdentNode* const ident = SlcLexicalNode::CreateIdent(name);
    if (table.IsInCurrent(ident, false))
        variables.push_back(PublicVariable(*table.GetVarEntry(ident, true)));
}

QxWordKind PublicKind(SlcWordKind kind)
{
    switch (kind) {
    case SlcWordKind::Shader:
        return QxWordKind::Shader;
    case SlcWordKind::Detail:
        return QxWordKind::Detail;
    case SlcWordKind::Type:
        return QxWordKind::Type;
    case SlcWordKind::Statement:
        return QxWordKind::Statement;
    case SlcWordKind::Texture:
        break;
    }
    return QxWordKind::Texture;
}

}  // namespace

const std::vector<QxIndexedName>& QxBuiltInFunctions()
{
    static const std::vector<QxIndexedName> all = [] {
        SlcCompilation compilation;
        const SlcCompilation::Entered entered(compilation);
        return AllBuiltIns();
    }();
    return all;
}

std::vector<QxIndexedName> QxPredefinedVariables(std::string_view shaderKind)
{
    SlcCompilation compilation;
    const SlcCompilation::Entered entered(compilation);
    std::vector<QxIndexedName> variables;
    for (const auto& table :
         {TableOf<SlcSurfaceShaderTypeNode>(shaderKind),
          TableOf<SlcLightShaderTypeNode>(shaderKind), TableOf<SlcVolumeShaderTypeNode>(shaderKind),
          TableOf<SlcDisplacementShaderTypeNode>(shaderKind),
          TableOf<SlcImagerShaderTypeNode>(shaderKind)}) {
        if (!table)
            continue;
        for (const SlcHiddenVariables::VarInfo& variable : SlcHiddenVariables::All())
            AddVariable(variables, *table, variable.name);
    }
    return variables;
}

QxIndexedName QxPredefinedConstant()
{
    SlcCompilation compilation;
    const SlcCompilation::Entered entered(compilation);
    const auto table = SlcBuiltInTable({});
    SlcIdentNode* const pi = SlcLexicalNode::CreateIdent(SlcHiddenVariables::Pi().name);
    return PublicVariable(*table->GetVarEntry(pi, true));
}

std::vector<QxIndexedName> QxLightLoopVariables()
{
    SlcCompilation compilation;
    const SlcCompilation::Entered entered(compilation);
    const auto table = MakeShared<SlcIlluminanceSymbolTable>(MakeShared<SlcSymbolTable>(), true);
    std::vector<QxIndexedName> variables;
    for (const SlcHiddenVariables::VarInfo& variable : SlcHiddenVariables::AllOfIlluminance())
        AddVariable(variables, *table, variable.name);
    return variables;
}

std::vector<QxWord> QxKeywords()
{
    std::vector<QxWord> words;
    for (const SlcKeyword& keyword : SlcKeywords())
        words.push_back({keyword.word, PublicKind(keyword.kind)});
    return words;
}

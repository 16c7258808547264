// Tested by tests/sqxls/SqxLsNamesTest.cpp.

#include "sqxls/SqxLsSemanticTokens.h"

#include "sqxls/SqxLsCursor.h"

namespace {

enum class TokenType : unsigned { Class, Function, Parameter, Variable, Macro, String };
constexpr const char* k_types[] = {"class", "function", "parameter", "variable", "macro", "string"};

constexpr const char* k_modifiers[] = {"declaration", "readonly", "modification",
                                       "uniform",     "varying",  "defaultLibrary"};
constexpr unsigned k_declaration = 1;
constexpr unsigned k_readonly = 2;
constexpr unsigned k_modification = 4;
constexpr unsigned k_uniform = 8;
constexpr unsigned k_varying = 16;
constexpr unsigned k_defaultLibrary = 32;

TokenType TypeOf(QxNameKind kind)
{
    switch (kind) {
    case QxNameKind::Shader:
        return TokenType::Class;
    case QxNameKind::Function:
    case QxNameKind::BuiltIn:
    case QxNameKind::Shadeop:
        return TokenType::Function;
    case QxNameKind::Parameter:
        return TokenType::Parameter;
    case QxNameKind::Local:
    case QxNameKind::Predefined:
        return TokenType::Variable;
    case QxNameKind::Macro:
        return TokenType::Macro;
    case QxNameKind::Space:
        break;
    }
    return TokenType::String;
}

unsigned ModifiersOf(const QxIndexedUse& use, const QxIndexedName& name)
{
    const QxDetail detail = use.detail == QxDetail::None ? name.detail : use.detail;
    unsigned modifiers = 0;
    if (use.role == QxUseRole::Definition)
        modifiers |= k_declaration;
    if (use.role == QxUseRole::Write)
        modifiers |= k_modification;
    if (name.storage == QxStorage::ReadOnly || name.storage == QxStorage::Input)
        modifiers |= k_readonly;
    if (detail == QxDetail::Uniform)
        modifiers |= k_uniform;
    if (detail == QxDetail::Varying)
        modifiers |= k_varying;
    if (name.kind == QxNameKind::BuiltIn || name.kind == QxNameKind::Predefined)
        modifiers |= k_defaultLibrary;
    return modifiers;
}

}  // namespace

SqxJson SqxLsSemanticLegend()
{
    return {{"tokenTypes", k_types}, {"tokenModifiers", k_modifiers}};
}

SqxJson SqxLsSemanticTokens(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsIndexed indexed = SqxLsIndexOf(workspace, params);
    const SqxLsText& text = *indexed.text;
    SqxJson data = SqxJson::array();
    SqxLsPosition last;
    std::size_t end = 0;
    for (const QxIndexedUse& use : indexed.index->uses) {
        if (use.place.file != indexed.file || indexed.file < 0 || use.name < 0)
            continue;
        const SqxLsSpan span = SqxLsIndexed::SpanOf(text, use.place);
        if (span.begin < end || span.end <= span.begin)  // repeated by another expansion of a macro
            continue;
        end = span.end;
        const QxIndexedName& name = indexed.index->names[static_cast<std::size_t>(use.name)];
        const SqxLsPosition at = text.PositionOf(span.begin);
        data.push_back(at.line - last.line);
        data.push_back(at.line == last.line ? at.character - last.character : at.character);
        data.push_back(text.PositionOf(span.end).character - at.character);
        data.push_back(TypeOf(name.kind));
        data.push_back(ModifiersOf(use, name));
        last = at;
    }
    return {{"data", data}};
}

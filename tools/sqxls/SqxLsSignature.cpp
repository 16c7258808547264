// Tested by tests/sqxls/SqxLsCompletionTest.cpp.

#include "sqxls/SqxLsSignature.h"

#include <algorithm>
#include <utility>

#include "compiler/QxLanguage.h"
#include "sqxls/SqxLsContext.h"
#include "sqxls/SqxLsCursor.h"
#include "sqxls/SqxLsHover.h"

namespace {

using Overloads = std::vector<const QxIndexedName*>;

bool IsMacro(const QxIndexedName& name)
{
    return name.kind == QxNameKind::Macro;
}

/// Returns the overloads of a name. A macro of that name with parameters hides them.
Overloads OverloadsOf(const QxSourceIndex& index, const std::string& name)
{
    Overloads overloads;
    for (const QxIndexedName& function : index.names) {
        if (function.name != name)
            continue;
        if (IsMacro(function) && !function.macroParameters.empty())
            return {&function};
        if (function.kind == QxNameKind::Function || function.kind == QxNameKind::Shadeop)
            overloads.push_back(&function);
    }
    for (const QxIndexedName& function : QxBuiltInFunctions())
        if (function.name == name)
            overloads.push_back(&function);
    return overloads;
}

std::vector<std::string> FormalsOf(const QxIndexedName& function)
{
    if (IsMacro(function))
        return function.macroParameters;
    std::vector<std::string> texts;
    for (const QxIndexedFormal& formal : function.formals)
        texts.push_back(formal.text);
    return texts;
}

/// Returns the formal parameters as ranges of the declaration's text.
SqxJson ParametersOf(const QxIndexedName& function)
{
    SqxJson parameters = SqxJson::array();
    std::size_t at = function.declaration.find('(');
    for (const std::string& formal : FormalsOf(function)) {
        at = std::min(function.declaration.find(formal, at), function.declaration.size());
        const std::size_t end = std::min(at + formal.size(), function.declaration.size());
        parameters.push_back({{"label", {at, end}}});
        at = end;
    }
    return parameters;
}

/// Returns the number in the index of the overload that the compiler has chosen for the call; -1 if
/// it has chosen none.
int ChosenOf(const SqxLsCursor& cursor, std::size_t callBegin)
{
    const SqxLsPlace name = cursor.text->PlaceOf(callBegin);
    for (const QxIndexedCall& call : cursor.index->calls)
        if (call.place.file == cursor.file && call.place.line == name.line &&
            call.place.column == name.column)
            return call.name;
    return -1;
}

/// Returns the position in `overloads` of the overload that the compiler has chosen; if there is
/// none, that of the first overload with enough parameters; otherwise 0.
std::size_t ActiveOf(const SqxLsCursor& cursor, const SqxLsContext& context,
                     const Overloads& overloads)
{
    const int chosen = ChosenOf(cursor, context.callBegin);
    for (std::size_t i = 0; i < overloads.size() && chosen >= 0; ++i)
        if (overloads[i]->declaration ==
            cursor.index->names[static_cast<std::size_t>(chosen)].declaration)
            return i;
    for (std::size_t i = 0; i < overloads.size(); ++i)
        if (overloads[i]->formals.size() > context.argument || overloads[i]->takesMore)
            return i;
    return 0;
}

}  // namespace

SqxJson SqxLsSignatureHelp(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsCursor cursor = SqxLsCursorAt(workspace, params);
    const SqxLsContext context = SqxLsContextAt(*cursor.text, cursor.offset);
    const Overloads overloads = OverloadsOf(*cursor.index, context.call);
    if (context.call.empty() || overloads.empty())
        return nullptr;
    SqxJson signatures = SqxJson::array();
    for (const QxIndexedName* overload : overloads)
        signatures.push_back(
            {{"label", overload->declaration}, {"parameters", ParametersOf(*overload)}});
    const std::size_t active = ActiveOf(cursor, context, overloads);
    if (const std::string text = SqxLsBuiltInText(context.call, "");
        !text.empty() && !IsMacro(*overloads[active]))
        signatures[active]["documentation"] = {{"kind", "markdown"}, {"value", text}};
    return {{"signatures", std::move(signatures)},
            {"activeSignature", active},
            {"activeParameter", context.argument}};
}

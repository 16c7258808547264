// Tested by tests/sqxls/SqxLsCompletionTest.cpp.

#include "sqxls/SqxLsSignature.h"

#include <algorithm>
#include <utility>

#include "compiler/QxLanguage.h"
#include "sqxls/SqxLsContext.h"
#include "sqxls/SqxLsCursor.h"
#include "sqxls/SqxLsHover.h"

namespace {

std::vector<const QxIndexedName*> OverloadsOf(const QxSourceIndex& index, const std::string& name)
{
    std::vector<const QxIndexedName*> overloads;
    for (const QxIndexedName& function : index.names)
        if (function.name == name &&
            (function.kind == QxNameKind::Function || function.kind == QxNameKind::Shadeop))
            overloads.push_back(&function);
    for (const QxIndexedName& function : QxBuiltInFunctions())
        if (function.name == name)
            overloads.push_back(&function);
    return overloads;
}

/// The formals as parts of the declaration.
SqxJson ParametersOf(const QxIndexedName& function)
{
    SqxJson parameters = SqxJson::array();
    std::size_t at = function.declaration.find('(');
    for (const QxIndexedFormal& formal : function.formals) {
        at = std::min(function.declaration.find(formal.text, at), function.declaration.size());
        const std::size_t end = std::min(at + formal.text.size(), function.declaration.size());
        parameters.push_back({{"label", {at, end}}});
        at = end;
    }
    return parameters;
}

/// The overload that the checks have chosen, or the first that takes so many arguments.
std::size_t ActiveOf(const SqxLsCursor& cursor, const QxCallAtPlace& call, std::size_t argument,
                     const std::vector<const QxIndexedName*>& overloads)
{
    const int chosen =
        call.call < 0 ? -1 : cursor.index->calls[static_cast<std::size_t>(call.call)].name;
    for (std::size_t i = 0; i < overloads.size() && chosen >= 0; ++i)
        if (overloads[i]->declaration ==
            cursor.index->names[static_cast<std::size_t>(chosen)].declaration)
            return i;
    for (std::size_t i = 0; i < overloads.size(); ++i)
        if (overloads[i]->formals.size() > argument || overloads[i]->takesMore)
            return i;
    return 0;
}

}  // namespace

SqxJson SqxLsSignatureHelp(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsCursor cursor = SqxLsCursorAt(workspace, params);
    const SqxLsContext context = SqxLsContextAt(*cursor.text, cursor.offset);
    const auto overloads = OverloadsOf(*cursor.index, context.call);
    if (context.call.empty() || overloads.empty())
        return nullptr;
    const QxCallAtPlace call =
        cursor.index->CallAt(cursor.file, cursor.place.line, cursor.place.column);
    SqxJson signatures = SqxJson::array();
    for (const QxIndexedName* overload : overloads)
        signatures.push_back(
            {{"label", overload->declaration}, {"parameters", ParametersOf(*overload)}});
    const std::size_t active = ActiveOf(cursor, call, context.argument, overloads);
    if (const std::string text = SqxLsBuiltInText(context.call, ""); !text.empty())
        signatures[active]["documentation"] = {{"kind", "markdown"}, {"value", text}};
    return {{"signatures", std::move(signatures)},
            {"activeSignature", active},
            {"activeParameter", context.argument}};
}

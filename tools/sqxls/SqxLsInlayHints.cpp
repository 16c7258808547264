// Tested by tests/sqxls/SqxLsNamesTest.cpp.

#include "sqxls/SqxLsInlayHints.h"

#include <set>

#include "sqxls/SqxLsCursor.h"
#include "sqxls/SqxLsHover.h"

namespace {

void AddDetails(const SqxLsIndexed& indexed, const SqxLsSpan& range, SqxJson& hints)
{
    constexpr int k_type = 1;
    std::set<std::size_t> seen;  // each expansion of a macro declares the variables of its body
    for (const QxIndexedName& name : indexed.index->names) {
        const std::string detail = SqxLsDetailWord(name.inferred);
        if (name.kind != QxNameKind::Local || name.declaresDetail || detail.empty() ||
            name.place.file != indexed.file)
            continue;
        const std::size_t end = SqxLsIndexed::SpanOf(*indexed.text, name.place).end;
        if (end >= range.begin && end <= range.end && seen.insert(end).second)
            hints.push_back({{"position", SqxLsWritePosition(indexed.text->PositionOf(end))},
                             {"label", ": " + detail},
                             {"kind", k_type}});
    }
}

void AddArguments(const SqxLsIndexed& indexed, const SqxLsSpan& range, SqxJson& hints)
{
    constexpr int k_parameter = 2;
    for (const QxIndexedCall& call : indexed.index->calls) {
        if (call.name < 0)
            continue;
        const QxIndexedName& name = indexed.index->names[static_cast<std::size_t>(call.name)];
        for (std::size_t i = 0; i < std::min(call.arguments.size(), name.formals.size()); ++i) {
            const QxIndexedFormal& formal = name.formals[i];
            if (formal.name.empty() || call.arguments[i].file != indexed.file)
                continue;
            const SqxLsSpan argument = SqxLsIndexed::SpanOf(*indexed.text, call.arguments[i]);
            if (argument.begin < range.begin || argument.begin > range.end ||
                indexed.text->Part(argument) == formal.name)
                continue;
            hints.push_back(
                {{"position", SqxLsWritePosition(indexed.text->PositionOf(argument.begin))},
                 {"label", formal.name + ":"},
                 {"kind", k_parameter},
                 {"paddingRight", true}});
        }
    }
}

}  // namespace

SqxJson SqxLsInlayHints(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsIndexed indexed = SqxLsIndexOf(workspace, params);
    const SqxLsSpan range = SqxLsReadRange(SqxLsMember(params, "range"), *indexed.text);
    SqxJson hints = SqxJson::array();
    if (indexed.file < 0)
        return hints;
    if (workspace.Settings().showsDetails)
        AddDetails(indexed, range, hints);
    if (workspace.Settings().showsArguments)
        AddArguments(indexed, range, hints);
    return hints;
}

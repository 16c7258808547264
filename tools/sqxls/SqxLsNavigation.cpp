// Tested by tests/sqxls/SqxLsNamesTest.cpp.

#include "sqxls/SqxLsNavigation.h"

#include <utility>

#include "sqxls/SqxLsCursor.h"

SqxJson SqxLsDefinition(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsCursor cursor = SqxLsCursorAt(workspace, params);
    if (const QxIndexedInclude* include = cursor.Include())
        return cursor.LocationOf(workspace, {include->file, 1, 1, 0});
    const QxIndexedName* name = cursor.Name();
    return name ? cursor.LocationOf(workspace, name->place) : SqxJson();
}

SqxJson SqxLsReferences(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsCursor cursor = SqxLsCursorAt(workspace, params);
    SqxJson locations = SqxJson::array();
    if (!cursor.Name())
        return locations;
    const bool withDefinition = SqxLsFlag(params, "context/includeDeclaration");
    for (const QxIndexedUse* use : cursor.index->UsesOf(cursor.use->name)) {
        if (use->role == QxUseRole::Definition && !withDefinition)
            continue;
        if (SqxJson location = cursor.LocationOf(workspace, use->place); !location.is_null())
            locations.push_back(std::move(location));
    }
    return locations;
}

SqxJson SqxLsHighlights(SqxLsWorkspace& workspace, const SqxJson& params)
{
    constexpr int k_read = 2;
    constexpr int k_write = 3;
    const SqxLsCursor cursor = SqxLsCursorAt(workspace, params);
    SqxJson highlights = SqxJson::array();
    if (!cursor.Name())
        return highlights;
    for (const QxIndexedUse* use : cursor.index->UsesOf(cursor.use->name)) {
        const bool writes = use->role == QxUseRole::Definition || use->role == QxUseRole::Write;
        if (use->place.file == cursor.file)
            highlights.push_back(
                {{"range",
                  SqxLsWriteRange(*cursor.text, SqxLsIndexed::SpanOf(*cursor.text, use->place))},
                 {"kind", writes ? k_write : k_read}});
    }
    return highlights;
}

// Tested by tests/sqxls/SqxLsActionsTest.cpp.

#include "sqxls/SqxLsLens.h"

#include "sqxls/SqxLsCursor.h"
#include "sqxls/SqxLsUri.h"

SqxJson SqxLsLenses(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsIndexed indexed = SqxLsIndexOf(workspace, params);
    SqxJson lenses = SqxJson::array();
    for (const QxIndexedName& name : indexed.index->names) {
        if (name.kind != QxNameKind::Shader || name.place.file != indexed.file)
            continue;
        SqxJson arguments = SqxJson::array();
        arguments.push_back(SqxLsTextMember(params, "textDocument/uri"));
        lenses.push_back(
            {{"range",
              SqxLsWriteRange(*indexed.text, SqxLsIndexed::SpanOf(*indexed.text, name.place))},
             {"command",
              {{"title", "Preview"}, {"command", k_sqxLsPreview}, {"arguments", arguments}}}});
    }
    return lenses;
}

SqxJson SqxLsExecute(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxJson& arguments = SqxLsMember(params, "arguments");
    if (SqxLsTextMember(params, "command") != k_sqxLsPreview || !arguments.is_array() ||
        arguments.empty() || !arguments[0].is_string())
        throw SqxLsError(SqxLsErrorCode::InvalidParams, "There is no such command");
    const std::string path = SqxLsPathOf(arguments[0].get_ref<const std::string&>());
    const bool shows = arguments.size() < 2 || SqxLsMember(arguments[1], "show") != false;
    const bool opens = shows && !workspace.Client().showsDocuments;
    return {{"uri", workspace.Previews().AddressOf(path, workspace.Settings().preview, opens)},
            {"external", shows && !opens}};
}

#include "sqxls/SqxLsCursor.h"

#include <algorithm>

#include "sqxls/SqxLsUri.h"

const SqxLsText* SqxLsIndexed::TextOf(int number) const
{
    return number < 0 ? nullptr : analysis->TextOf(index->files[static_cast<std::size_t>(number)]);
}

SqxLsSpan SqxLsIndexed::SpanOf(const SqxLsText& text, const QxSourcePlace& place)
{
    const std::size_t begin = text.OffsetOf(SqxLsPlace{place.line, place.column});
    const auto length = static_cast<std::size_t>(std::max(place.length, 0));
    return {begin, std::min(begin + length, text.Bytes().size())};
}

SqxLsSpan SqxLsIndexed::SpanOf(const SqxLsText& text, const QxSourceRange& range)
{
    const std::size_t begin = text.OffsetOf(SqxLsPlace{range.line, range.column});
    return {begin, std::max(begin, text.OffsetOf(SqxLsPlace{range.endLine, range.endColumn}))};
}

SqxJson SqxLsIndexed::LocationOf(const SqxLsWorkspace& workspace, const QxSourcePlace& place) const
{
    const SqxLsText* other = TextOf(place.file);
    if (!other)
        return nullptr;
    const std::string path = SqxLsNormalPath(index->files[static_cast<std::size_t>(place.file)]);
    return {{"uri", SqxLsUriIn(workspace, path)},
            {"range", SqxLsWriteRange(*other, SpanOf(*other, place))}};
}

std::string SqxLsUriIn(const SqxLsWorkspace& workspace, const std::string& path)
{
    const SqxLsDocument* document = workspace.DocumentAt(path);
    return document ? document->uri : SqxLsUriOf(path);
}

SqxLsIndexed SqxLsIndexOf(SqxLsWorkspace& workspace, const SqxJson& params)
{
    SqxLsDocument& document = workspace.DocumentOf(params);
    SqxLsIndexed indexed;
    indexed.analysis = workspace.AnalysisOf(document);
    indexed.index = indexed.analysis->result.index.get();
    indexed.text = document.text;
    if (!indexed.index)
        throw SqxLsError(SqxLsErrorCode::RequestFailed, "The source could not be read");
    const auto& files = indexed.index->files;
    for (std::size_t i = 0; i < files.size() && indexed.file < 0; ++i)
        if (SqxLsNormalPath(files[i]) == document.path)
            indexed.file = static_cast<int>(i);
    return indexed;
}

SqxLsCursor SqxLsCursorAt(SqxLsWorkspace& workspace, const SqxJson& params)
{
    SqxLsCursor cursor{SqxLsIndexOf(workspace, params), 0, {}, nullptr};
    cursor.offset = cursor.text->OffsetOf(SqxLsReadPosition(SqxLsMember(params, "position")));
    cursor.place = cursor.text->PlaceOf(cursor.offset);
    cursor.use = cursor.index->UseAt(cursor.file, cursor.place.line, cursor.place.column);
    return cursor;
}

const QxIndexedName* SqxLsCursor::Name() const
{
    return use && use->name >= 0 ? &index->names[static_cast<std::size_t>(use->name)] : nullptr;
}

const QxIndexedInclude* SqxLsCursor::Include() const
{
    for (const QxIndexedInclude& include : index->includes) {
        const QxSourcePlace& name = include.place;
        if (name.file == file && name.line == place.line && name.column <= place.column &&
            place.column <= name.column + name.length)
            return &include;
    }
    return nullptr;
}

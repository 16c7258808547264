// A new name may capture other names or be captured, which depends on scopes, overloads and macros.
// Instead of modelling these rules, this code compiles the renamed texts: each use must then refer
// to the same definition as before.
//
// Tested by tests/sqxls/SqxLsNamesTest.cpp.

#include "sqxls/SqxLsRename.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "compiler/QxLanguage.h"
#include "sqxls/SqxLsCursor.h"

namespace {

bool CanBeRenamed(const QxIndexedName& name)
{
    switch (name.kind) {
    case QxNameKind::Shader:
    case QxNameKind::Function:
    case QxNameKind::Parameter:
    case QxNameKind::Local:
    case QxNameKind::Macro:
        return name.place.file >= 0;
    case QxNameKind::Predefined:
    case QxNameKind::BuiltIn:
    case QxNameKind::Shadeop:
    case QxNameKind::Space:
        break;
    }
    return false;
}

[[noreturn]] void Refuse(const std::string& reason)
{
    throw SqxLsError(SqxLsErrorCode::RequestFailed, reason);
}

void CheckWord(const std::string& word)
{
    const bool isName = !word.empty() && std::isdigit(static_cast<unsigned char>(word[0])) == 0 &&
                        std::all_of(word.begin(), word.end(), SqxLsIsWordByte);
    if (!isName)
        Refuse("'" + word + "' is no name");
    for (const QxWord& keyword : QxKeywords())
        if (keyword.word == word)
            Refuse("'" + word + "' is a word of the language");
}

/// Returns the offsets of all uses of the name at the cursor, by the number of the file.
std::map<int, std::set<std::size_t>> PlacesOf(const SqxLsCursor& cursor)
{
    std::map<int, std::set<std::size_t>> places;
    for (const QxIndexedUse* use : cursor.index->UsesOf(cursor.use->name))
        if (const SqxLsText* text = cursor.TextOf(use->place.file))
            places[use->place.file].insert(SqxLsIndexed::SpanOf(*text, use->place).begin);
    return places;
}

std::string Renamed(const SqxLsText& text, const std::set<std::size_t>& places, std::size_t length,
                    const std::string& word)
{
    SqxLsText renamed = text;
    for (auto place = places.rbegin(); place != places.rend(); ++place)
        renamed.Replace({*place, *place + length}, word);
    return renamed.Bytes();
}

/// Returns a text such as " in line 3 of 'a.h'"; without the file, if it is the document. Empty for
/// a place in no file.
std::string PlaceText(const SqxLsCursor& cursor, const QxSourcePlace& place)
{
    if (place.file < 0)
        return "";
    const std::string& path = cursor.index->files[static_cast<std::size_t>(place.file)];
    return " in line " + std::to_string(place.line) +
           (place.file == cursor.file ? "" : " of '" + path + "'");
}

/// Refuses the new name unless the names used in the renamed source are in the same lines as before
/// and refer to the same definitions.
void CompareMeanings(const SqxLsCursor& cursor, const QxSourceIndex& after, const std::string& word)
{
    const QxSourceIndex& before = *cursor.index;
    std::map<int, int> nameBefore;  // by the number of the name in `after`
    std::map<int, int> nameAfter;   // by the number of the name in `before`
    const std::size_t count = std::min(before.uses.size(), after.uses.size());
    for (std::size_t i = 0; i < count; ++i) {
        const int old = before.uses[i].name;
        const int now = after.uses[i].name;
        const bool isSame = nameAfter.emplace(old, now).first->second == now &&
                            nameBefore.emplace(now, old).first->second == old &&
                            before.uses[i].place.line == after.uses[i].place.line;
        if (!isSame)
            Refuse("The name" + PlaceText(cursor, before.uses[i].place) + " would mean another '" +
                   word + "'");
    }
    if (before.uses.size() != after.uses.size())
        Refuse("There is another '" + word + "' that it would be mistaken for");
}

std::vector<const QxCompileReport*> ErrorsIn(const QxCompileResult& result)
{
    std::vector<const QxCompileReport*> errors;
    for (const QxCompileReport& report : result.reports)
        if (report.severity == QxCompileReport::Severity::Error)
            errors.push_back(&report);
    return errors;
}

/// Refuses the new name if the renamed source has more errors. Reports the first error that is new
/// by its line; texts are not compared, since those of old errors may contain the renamed name.
void CompareErrors(const QxCompileResult& before, const QxCompileResult& after)
{
    const auto errorsBefore = ErrorsIn(before);
    const auto errorsAfter = ErrorsIn(after);
    if (errorsAfter.size() <= errorsBefore.size())
        return;
    std::map<std::pair<std::string, int>, int> counts;  // by line
    for (const QxCompileReport* error : errorsBefore)
        ++counts[{error->file, error->line}];
    for (const QxCompileReport* error : errorsAfter)
        if (--counts[{error->file, error->line}] < 0)
            Refuse("With that name: " + error->text);
}

}  // namespace

SqxJson SqxLsPrepareRename(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsCursor cursor = SqxLsCursorAt(workspace, params);
    const QxIndexedName* name = cursor.Name();
    if (!name || !CanBeRenamed(*name))
        return nullptr;
    return {{"range",
             SqxLsWriteRange(*cursor.text, SqxLsIndexed::SpanOf(*cursor.text, cursor.use->place))},
            {"placeholder", name->name}};
}

SqxJson SqxLsRename(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsCursor cursor = SqxLsCursorAt(workspace, params);
    const std::string& word = SqxLsTextMember(params, "newName");
    const QxIndexedName* name = cursor.Name();
    if (!name)
        Refuse("There is no name here");
    if (!CanBeRenamed(*name))
        Refuse("'" + name->name + "' belongs to the language");
    CheckWord(word);
    SqxJson changes = SqxJson::object();
    std::map<std::string, std::string> texts;
    for (const auto& [file, places] : PlacesOf(cursor)) {
        const SqxLsText& text = *cursor.TextOf(file);
        const std::string path =
            SqxLsNormalPath(cursor.index->files[static_cast<std::size_t>(file)]);
        SqxJson& edits = changes[SqxLsUriIn(workspace, path)] = SqxJson::array();
        for (const std::size_t place : places)
            edits.push_back({{"range", SqxLsWriteRange(text, {place, place + name->name.size()})},
                             {"newText", word}});
        texts[path] = Renamed(text, places, name->name.size(), word);
    }
    const auto renamed = workspace.Analyse(cursor.analysis->path, texts);
    CompareMeanings(cursor, *renamed->result.index, word);
    CompareErrors(cursor.analysis->result, renamed->result);
    return {{"changes", changes}};
}

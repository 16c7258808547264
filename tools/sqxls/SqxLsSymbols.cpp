// Tested by tests/sqxls/SqxLsNamesTest.cpp.

#include "sqxls/SqxLsSymbols.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <set>
#include <utility>

#include "compiler/QxLanguage.h"
#include "sqxls/SqxLsCursor.h"
#include "sqxls/SqxLsTokens.h"

namespace {

namespace fs = std::filesystem;

enum SymbolKind { Class = 5, Function = 12, Variable = 13, Constant = 14 };

int KindOf(const QxIndexedName& name)
{
    switch (name.kind) {
    case QxNameKind::Shader:
        return Class;
    case QxNameKind::Function:
    case QxNameKind::BuiltIn:
    case QxNameKind::Shadeop:
        return Function;
    case QxNameKind::Macro:
    case QxNameKind::Space:
        return Constant;
    case QxNameKind::Parameter:
    case QxNameKind::Local:
    case QxNameKind::Predefined:
        break;
    }
    return Variable;
}

SqxJson SymbolOf(const SqxLsIndexed& indexed, const QxIndexedName& name)
{
    const SqxLsText& text = *indexed.text;
    const SqxLsSpan word = SqxLsIndexed::SpanOf(text, name.place);
    SqxLsSpan whole =
        name.range.file == indexed.file ? SqxLsIndexed::SpanOf(text, name.range) : word;
    whole = {std::min(whole.begin, word.begin), std::max(whole.end, word.end)};
    return {{"name", name.name},
            {"detail", name.type},
            {"kind", KindOf(name)},
            {"range", SqxLsWriteRange(text, whole)},
            {"selectionRange", SqxLsWriteRange(text, word)}};
}

SqxJson SymbolsOwnedBy(const SqxLsIndexed& indexed, int owner)
{
    SqxJson symbols = SqxJson::array();
    const auto& names = indexed.index->names;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const QxIndexedName& name = names[i];
        if (name.owner != owner || name.place.file != indexed.file || indexed.file < 0)
            continue;
        SqxJson symbol = SymbolOf(indexed, name);
        if (name.kind == QxNameKind::Shader || name.kind == QxNameKind::Function)
            symbol["children"] = SymbolsOwnedBy(indexed, static_cast<int>(i));
        symbols.push_back(std::move(symbol));
    }
    return symbols;
}

/// True if the letters of the query appear in the name in the same order, ignoring case.
bool Matches(std::string_view query, std::string_view name)
{
    const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    std::size_t at = 0;
    for (const char c : query) {
        while (at < name.size() && lower(name[at]) != lower(c))
            ++at;
        if (at++ >= name.size())
            return false;
    }
    return true;
}

bool IsShaderWord(const SqxLsToken& token)
{
    static const std::vector<QxWord> k_words = QxKeywords();
    return std::any_of(k_words.begin(), k_words.end(), [&](const QxWord& word) {
        return word.kind == QxWordKind::Shader && word.word == token.text;
    });
}

/// Calls `visit(token, kind)` for the name of each shader and function that the text seems to
/// define: a word before parentheses and a block.
template <class Visit>
void ForEachDefinition(const SqxLsText& text, Visit visit)
{
    const auto tokens = SqxLsTokensOf(text.Bytes());
    const auto partners = SqxLsPartnersOf(tokens);
    for (std::size_t i = 0; i + 1 < tokens.size(); i = std::max(i, partners[i]) + 1) {
        const std::size_t close = partners[i + 1];
        if (tokens[i].kind != SqxLsToken::Kind::Word || tokens[i + 1].text != "(" || close == i + 1)
            continue;
        std::size_t body = close + 1;
        while (body < tokens.size() && tokens[body].kind == SqxLsToken::Kind::Comment)
            ++body;
        if (body < tokens.size() && tokens[body].text == "{")
            visit(tokens[i], i > 0 && IsShaderWord(tokens[i - 1]) ? Class : Function);
    }
}

/// Returns the paths of all open files, and of the sources in the folders of the workspace, except
/// in hidden folders. Two limits keep the search of large folders short.
std::set<std::string> SourcesOf(SqxLsWorkspace& workspace)
{
    constexpr std::size_t k_most = 5000;
    constexpr std::size_t k_mostEntries = 200000;
    std::size_t entries = 0;
    std::set<std::string> paths;
    for (const auto& [uri, document] : workspace.Documents())
        paths.insert(document.path);
    for (const std::string& folder : workspace.Folders()) {
        std::error_code failed;
        fs::recursive_directory_iterator entry(
            folder, fs::directory_options::skip_permission_denied, failed);
        for (; !failed && entry != fs::recursive_directory_iterator() && paths.size() < k_most &&
               ++entries < k_mostEntries;
             entry.increment(failed)) {
            const std::string name = entry->path().filename().string();
            if (name.starts_with('.') && entry->is_directory(failed))
                entry.disable_recursion_pending();
            else if (entry->path().extension() == ".sl")
                paths.insert(SqxLsNormalPath(entry->path().string()));
        }
    }
    return paths;
}

}  // namespace

SqxJson SqxLsDocumentSymbols(SqxLsWorkspace& workspace, const SqxJson& params)
{
    return SymbolsOwnedBy(SqxLsIndexOf(workspace, params), -1);
}

SqxJson SqxLsWorkspaceSymbols(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const std::string& query = SqxLsTextMember(params, "query");
    SqxJson symbols = SqxJson::array();
    for (const std::string& path : SourcesOf(workspace)) {
        const auto text = workspace.TextOf(path);
        if (!text)
            continue;
        ForEachDefinition(*text, [&](const SqxLsToken& token, SymbolKind kind) {
            if (Matches(query, token.text))
                symbols.push_back({{"name", token.text},
                                   {"kind", kind},
                                   {"location",
                                    {{"uri", SqxLsUriIn(workspace, path)},
                                     {"range", SqxLsWriteRange(*text, token.span)}}}});
        });
    }
    return symbols;
}

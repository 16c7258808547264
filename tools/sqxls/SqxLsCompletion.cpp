// An item gets its documentation only when the editor asks to resolve it, since a list may have
// more than a hundred items.
//
// Tested by tests/sqxls/SqxLsCompletionTest.cpp.

#include "sqxls/SqxLsCompletion.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <utility>

#include "compiler/QxLanguage.h"
#include "sqxls/SqxLsContext.h"
#include "sqxls/SqxLsCursor.h"
#include "sqxls/SqxLsHover.h"
#include "sqxls/SqxLsWords.h"

namespace {

namespace fs = std::filesystem;

enum ItemKind { Function = 3, Variable = 6, Keyword = 14, Value = 12, File = 17, Constant = 21 };

/// The rank of an item in the list: the first character of the text by which editors sort it.
enum class Rank : char { Fits = '0', InScope = '1', Predefined = '2', BuiltIn = '3', Word = '4' };

class Items {
public:
    Items(const SqxLsCursor& cursor, const SqxLsContext& context, std::set<std::string> wanted)
        : m_range(SqxLsWriteRange(*cursor.text, context.typed)),
          m_wanted(std::move(wanted))
    {
    }

    void Add(const std::string& label, ItemKind kind, Rank rank, const std::string& detail,
             const std::string& type = "")
    {
        if (!m_seen.insert(label).second)
            return;
        const bool fits = m_wanted.contains(type);
        m_items.push_back(
            {{"label", label},
             {"kind", kind},
             {"detail", detail},
             {"sortText", std::string(1, static_cast<char>(fits ? Rank::Fits : rank)) + label},
             {"textEdit", {{"range", m_range}, {"newText", label}}}});
    }
    void Add(const QxIndexedName& name, Rank rank)
    {
        const bool isFunction = name.kind == QxNameKind::Function ||
                                name.kind == QxNameKind::BuiltIn ||
                                name.kind == QxNameKind::Shadeop;
        Add(name.name, isFunction ? Function : Variable, rank, name.declaration, name.type);
    }
    void Add(std::span<const SqxLsWord> words, ItemKind kind)
    {
        for (const SqxLsWord& word : words)
            Add(std::string(word.word), kind, Rank::InScope, std::string(word.meaning));
    }
    [[nodiscard]] SqxJson Take() { return std::move(m_items); }

private:
    SqxJson m_range;
    std::set<std::string> m_wanted;  // expected types
    std::set<std::string> m_seen;
    SqxJson m_items = SqxJson::array();
};

/// Returns the types that are expected at the place: as the argument of the innermost call around
/// it or, outside calls, as the value of an assignment. Empty if neither is known.
std::set<std::string> WantedTypes(const SqxLsCursor& cursor, const SqxLsContext& context)
{
    std::set<std::string> types;
    const auto addFormal = [&](const QxIndexedName& function) {
        if (function.name != context.call || context.argument >= function.formals.size())
            return;
        const std::string& type = function.formals[context.argument].type;
        types.insert(type);
        // Points, vectors and normals convert to each other.
        if (type.starts_with("any-") || type == "point" || type == "vector" || type == "normal")
            types.insert({"point", "vector", "normal"});
    };
    if (!context.call.empty()) {
        for (const QxIndexedName& name : cursor.index->names)
            if (name.kind == QxNameKind::Function)
                addFormal(name);
        for (const QxIndexedName& function : QxBuiltInFunctions())
            addFormal(function);
        return types;
    }
    for (const int number :
         cursor.index->NamesInScope(cursor.file, cursor.place.line, cursor.place.column))
        if (const auto& name = cursor.index->names[static_cast<std::size_t>(number)];
            name.name == context.target && types.empty())
            types.insert(name.type);
    for (const QxIndexedName& variable : QxPredefinedVariables(cursor.index->shaderKind))
        if (variable.name == context.target && types.empty())
            types.insert(variable.type);
    return types;
}

/// Adds names that appear to be declared before the place: words after a keyword. Used if the
/// compiler found no shader.
void AddDeclared(const SqxLsCursor& cursor, Items& items)
{
    const auto tokens =
        SqxLsTokensOf(std::string_view(cursor.text->Bytes()).substr(0, cursor.offset));
    for (std::size_t i = 0; i + 2 < tokens.size(); ++i)
        if (tokens[i].kind == SqxLsToken::Kind::Keyword &&
            tokens[i + 1].kind == SqxLsToken::Kind::Word)
            items.Add(std::string(tokens[i + 1].text),
                      tokens[i + 2].text == "(" ? Function : Variable, Rank::InScope,
                      std::string(tokens[i].text));
}

void AddCode(const SqxLsCursor& cursor, const SqxLsContext& context, Items& items)
{
    const QxSourceIndex& index = *cursor.index;
    const auto names = index.NamesInScope(cursor.file, cursor.place.line, cursor.place.column);
    for (const int name : names)
        items.Add(index.names[static_cast<std::size_t>(name)], Rank::InScope);
    if (index.shaderKind.empty())
        AddDeclared(cursor, items);
    if (context.isInLightLoop)
        for (const QxIndexedName& variable : QxLightLoopVariables())
            items.Add(variable, Rank::InScope);
    for (const QxIndexedName& name : index.names)
        if (name.kind == QxNameKind::Macro)
            items.Add(name.name, Constant, Rank::InScope,
                      "#define " + name.name + " " + name.defaultValue);
    for (const char* kind : {"surface", "light", "displacement", "volume", "imager"})
        if (index.shaderKind.empty() || index.shaderKind == kind)
            for (const QxIndexedName& variable : QxPredefinedVariables(kind))
                items.Add(variable, Rank::Predefined);
    items.Add(QxPredefinedConstant(), Rank::Predefined);
    for (const QxIndexedName& function : QxBuiltInFunctions())
        items.Add(function, Rank::BuiltIn);
    for (const QxWord& word : QxKeywords())
        items.Add(std::string(word.word), Keyword, Rank::Word, "");
}

void AddTexts(const SqxLsCursor& cursor, const SqxLsContext& context, Items& items)
{
    const bool isTexture =
        context.call == "texture" || context.call == "environment" || context.call == "shadow";
    if (isTexture && context.argument > 0)
        return items.Add(SqxLsTextureArguments(), Value);
    if (context.before == "color" || context.call == "ctransform")
        return items.Add(SqxLsColorSpaces(), Value);
    items.Add(SqxLsSpaces(), Value);
    for (const QxIndexedName& name : cursor.index->names)
        if (name.kind == QxNameKind::Space) {
            std::string word = name.name;
            std::erase(word, '"');
            items.Add(word, Value, Rank::InScope, "named in this source");
        }
}

/// Adds the files and folders that an include directive could name: those in the source's folder
/// and in the folders that the options name for included files, without compiled shaders and the
/// source itself. Stops after `k_most` entries.
void AddFiles(const SqxLsWorkspace& workspace, const SqxLsCursor& cursor,
              const SqxLsContext& context, Items& items)
{
    constexpr std::size_t k_most = 1000;
    const fs::path typed = fs::path(cursor.text->Part(context.typed)).parent_path();
    std::vector<fs::path> folders = {fs::path(cursor.analysis->path).parent_path()};
    for (const std::string& folder :
         SqxLsOptionsFor(cursor.analysis->path, workspace.Settings()).folders)
        folders.emplace_back(folder);
    std::size_t count = 0;
    for (const fs::path& folder : folders) {
        std::error_code failed;
        for (fs::directory_iterator entry(folder / typed, failed), end;
             !failed && entry != end && count < k_most; entry.increment(failed), ++count) {
            std::string name = (typed / entry->path().filename()).string();
            const std::string extension = entry->path().extension().string();
            if (entry->is_directory(failed))
                name += "/";
            else if (extension == ".sqx" || entry->path() == cursor.analysis->path)
                continue;
            items.Add(name, File, Rank::InScope, folder.string());
        }
    }
}

}  // namespace

SqxJson SqxLsCompletion(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsCursor cursor = SqxLsCursorAt(workspace, params);
    const SqxLsContext context = SqxLsContextAt(*cursor.text, cursor.offset);
    Items items(cursor, context, WantedTypes(cursor, context));
    switch (context.kind) {
    case SqxLsContext::Kind::Code:
        AddCode(cursor, context, items);
        break;
    case SqxLsContext::Kind::Directive:
        items.Add(SqxLsDirectives(), Keyword);
        break;
    case SqxLsContext::Kind::Include:
        AddFiles(workspace, cursor, context, items);
        break;
    case SqxLsContext::Kind::Text:
        AddTexts(cursor, context, items);
        break;
    case SqxLsContext::Kind::Comment:
        break;
    }
    return {{"isIncomplete", false}, {"items", items.Take()}};
}

SqxJson SqxLsResolveCompletion(SqxLsWorkspace&, const SqxJson& item)
{
    const std::string& label = SqxLsTextMember(item, "label");
    std::string text = SqxLsBuiltInText(label, "");
    const SqxJson& kind = SqxLsMember(item, "kind");
    if (kind == Variable)
        text = SqxLsPredefinedText(label);
    if (text.empty() || (kind != Variable && kind != Function))
        return item;
    SqxJson resolved = item;
    resolved["documentation"] = {{"kind", "markdown"}, {"value", text}};
    return resolved;
}

// Tested by tests/compiler/QxSourceIndexTest.cpp.

#include "compiler/QxSourceIndex.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <tuple>

namespace {

using Place = std::tuple<int, int, int>;  // file, line, column

bool IsVariable(const QxIndexedName& name)
{
    return name.kind == QxNameKind::Parameter || name.kind == QxNameKind::Local ||
           name.kind == QxNameKind::Predefined;
}

bool IsWord(const std::string& text)
{
    return !text.empty() &&
           (std::isalpha(static_cast<unsigned char>(text.front())) != 0 || text.front() == '_');
}

/// True for a word that may precede "(" without being a call.
bool IsHead(const std::string& word)
{
    for (const std::string_view head :
         {"if", "while", "for", "solar", "illuminate", "illuminance", "return", "float", "string",
          "color", "point", "vector", "normal", "matrix", "void", "else"})
        if (word == head)
            return true;
    return false;
}

}  // namespace

bool QxSourceRange::Contains(int otherFile, int otherLine, int otherColumn) const
{
    return file == otherFile && std::tie(line, column) <= std::tie(otherLine, otherColumn) &&
           std::tie(otherLine, otherColumn) <= std::tie(endLine, endColumn);
}

int QxSourceIndex::FileNumber(std::string_view path) const
{
    const auto found = std::find(files.begin(), files.end(), path);
    return found == files.end() ? -1 : static_cast<int>(found - files.begin());
}

const QxIndexedUse* QxSourceIndex::UseAt(int file, int line, int column) const
{
    const auto next =
        std::upper_bound(uses.begin(), uses.end(), Place(file, line, column),
                         [](const Place& place, const QxIndexedUse& use) {
                             return place < Place(use.place.file, use.place.line, use.place.column);
                         });
    if (next == uses.begin())
        return nullptr;
    const QxIndexedUse& use = *(next - 1);
    const bool isHere = use.place.file == file && use.place.line == line &&
                        column <= use.place.column + use.place.length;
    if (!isHere)
        return nullptr;
    // Several names may be used at one place; return the first of the uses.
    return &*std::partition_point(uses.begin(), next - 1, [&](const QxIndexedUse& other) {
        return Place(other.place.file, other.place.line, other.place.column) <
               Place(use.place.file, use.place.line, use.place.column);
    });
}

std::vector<const QxIndexedUse*> QxSourceIndex::UsesOf(int name) const
{
    std::vector<const QxIndexedUse*> found;
    for (const QxIndexedUse& use : uses)
        if (use.name == name)
            found.push_back(&use);
    return found;
}

unsigned QxSourceIndex::OrderAt(int file, int line, int column) const
{
    // The tokens of a file are in order, if those from a macro count as at its name. So the first
    // token of the file that is not before the place ends the search.
    unsigned order = 0;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const QxSourcePlace& place = tokens[i].use.file >= 0 ? tokens[i].use : tokens[i].place;
        if (place.file == file && std::tie(place.line, place.column) < std::tie(line, column))
            order = static_cast<unsigned>(i) + 1;
        else if (place.file == file)
            break;
    }
    return order;
}

int QxSourceIndex::BlockAt(int file, int line, int column) const
{
    const unsigned order = OrderAt(file, line, column);
    int innermost = 0;
    // Parents precede their children, so the last match is the innermost.
    for (std::size_t i = 1; i < blocks.size(); ++i)
        if (blocks[i].begin < order && order < blocks[i].end)
            innermost = static_cast<int>(i);
    return blocks.empty() ? -1 : innermost;
}

std::vector<int> QxSourceIndex::NamesInScope(int file, int line, int column) const
{
    const unsigned order = OrderAt(file, line, column);
    std::vector<int> found;
    std::set<std::string_view> variables;
    bool seesVariables = true;
    for (int at = BlockAt(file, line, column); at >= 0;) {
        const QxIndexedBlock& block = blocks[static_cast<std::size_t>(at)];
        for (auto visible = block.names.rbegin(); visible != block.names.rend(); ++visible) {
            const QxIndexedName& name = names[static_cast<std::size_t>(visible->name)];
            const bool isSeen = visible->from <= order && name.kind != QxNameKind::Shader &&
                                (!IsVariable(name) || seesVariables);
            if (isSeen && (!IsVariable(name) || variables.insert(name.name).second))
                found.push_back(visible->name);
        }
        seesVariables = seesVariables && !block.isClosed;
        at = block.parent;
    }
    return found;
}

QxSourcePlace QxSourceIndex::MacroAround(int file, int line, int column) const
{
    QxSourceRange outermost;
    for (const QxIndexedMacroUse& use : macroUses)
        if (use.range.Contains(file, line, column) &&
            (outermost.file < 0 || use.range.Contains(file, outermost.line, outermost.column)))
            outermost = use.range;
    return {outermost.file, outermost.line, outermost.column, 0};
}

QxCallAtPlace QxSourceIndex::CallAt(int file, int line, int column) const
{
    QxCallAtPlace result;
    int depth = 0;
    const QxSourcePlace macro = MacroAround(file, line, column);
    const auto isPassedOver = [&](const Token& token) {
        const bool isHere = token.use.file == macro.file && token.use.line == macro.line &&
                            token.use.column == macro.column;
        return macro.file >= 0 && isHere &&
               (token.isBody || token.place.file != file ||
                std::tie(token.place.line, token.place.column) >= std::tie(line, column));
    };
    // Unfinished code may leave any parentheses open, so a brace ends the search, and so does a ";"
    // outside parentheses that are closed again.
    for (std::size_t i = OrderAt(file, line, column); i-- > 0;) {
        if (isPassedOver(tokens[i]))
            continue;
        const std::string& text = tokens[i].text;
        if (text == "{" || text == "}" || (text == ";" && depth == 0))
            return {};
        if (text == ")" || text == "]")
            ++depth;
        else if (text == "," && depth == 0)
            ++result.argument;
        else if ((text == "(" || text == "[") && depth > 0)
            --depth;
        else if (text == "(" && i > 0 && IsWord(tokens[i - 1].text) &&
                 !IsHead(tokens[i - 1].text)) {
            result.name = tokens[i - 1].text;
            result.place = tokens[i - 1].place;
            for (std::size_t c = 0; c < calls.size() && result.call < 0; ++c)
                if (calls[c].place == result.place)
                    result.call = static_cast<int>(c);
            return result;
        } else if (text == "(" || text == "[") {
            result.argument = 0;
        }
    }
    return {};
}

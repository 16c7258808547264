// Tested by tests/compiler/QxSourceIndexTest.cpp.

#include "compiler/SlcIndexPlaces.h"

#include <algorithm>
#include <cctype>
#include <tuple>

namespace {

bool IsWordPart(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

std::size_t FindWord(std::string_view text, std::string_view word, std::size_t from)
{
    for (std::size_t at = text.find(word, from); at != std::string_view::npos;
         at = text.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        if ((at == 0 || !IsWordPart(text[at - 1])) &&
            (end == text.size() || !IsWordPart(text[end])))
            return at;
    }
    return std::string_view::npos;
}

}  // namespace

std::size_t SlcIndexPlaces::TokenAt(std::size_t offset) const
{
    const auto& tokens = m_trace.Tokens();
    const auto found = std::lower_bound(
        tokens.begin(), tokens.end(), offset,
        [](const SlcPreprocessorTrace::Token& t, std::size_t place) { return t.offset < place; });
    return static_cast<std::size_t>(found - tokens.begin());
}

std::size_t SlcIndexPlaces::Find(const SlcTextRange& range, std::string_view text) const
{
    const auto& tokens = m_trace.Tokens();
    for (std::size_t i = TokenAt(range.begin); i < tokens.size() && tokens[i].offset < range.end;
         ++i)
        if (tokens[i].text == text)
            return i;
    return k_none;
}

QxSourcePlace SlcIndexPlaces::Public(const SlcPreprocessorTrace::Place& place)
{
    return {place.file, place.line, place.column, place.length};
}

QxSourcePlace SlcIndexPlaces::PlaceOf(std::size_t token) const
{
    const SlcPreprocessorTrace::Token& found = Token(token);
    return Public(found.place.file >= 0 ? found.place : found.use);
}

SlcIndexPlaces::Part SlcIndexPlaces::FindPart(const SlcTextRange& range, std::string_view word,
                                              std::size_t skipped) const
{
    const auto& tokens = m_trace.Tokens();
    for (std::size_t i = TokenAt(range.begin); i < tokens.size() && tokens[i].offset < range.end;
         ++i, skipped = 0)
        if (const std::size_t at = FindWord(tokens[i].text, word, skipped); at != std::string::npos)
            return {i, at, word.size()};
    return {};
}

QxSourcePlace SlcIndexPlaces::PlaceOf(const Part& part) const
{
    QxSourcePlace place = PlaceOf(part.token);
    const std::string& text = Token(part.token).text;
    // If the lengths differ, a line continuation splits the token, or no file contains its text.
    if (static_cast<std::size_t>(place.length) == text.size() && text.size() > part.length) {
        place.column += static_cast<int>(part.begin);
        place.length = static_cast<int>(part.length);
    }
    return place;
}

QxSourcePlace SlcIndexPlaces::ShownPlaceOf(std::size_t token) const
{
    const SlcPreprocessorTrace::Token& found = Token(token);
    return Public(found.isBody || found.place.file < 0 ? found.use : found.place);
}

QxSourceRange SlcIndexPlaces::Between(const QxSourcePlace& first, const QxSourcePlace& last)
{
    const QxSourceRange whole = {first.file, first.line, first.column, last.line,
                                 last.column + last.length};
    const bool isOrdered = std::tie(first.line, first.column) <= std::tie(last.line, last.column);
    if (first.file == last.file && isOrdered)
        return whole;
    return {first.file, first.line, first.column, first.line, first.column + first.length};
}

QxSourceRange SlcIndexPlaces::RangeOf(const SlcTextRange& range) const
{
    const std::size_t first = TokenAt(range.begin);
    const std::size_t end = TokenAt(range.end);
    if (first >= end)
        return {};
    return Between(ShownPlaceOf(first), ShownPlaceOf(end - 1));
}

SlcTextRange SlcIndexPlaces::BodyOf(const SlcTextRange& definition) const
{
    const auto& tokens = m_trace.Tokens();
    int depth = 0;
    // The braces of array values may occur between the parentheses of the formals.
    for (std::size_t i = TokenAt(definition.begin);
         i < tokens.size() && tokens[i].offset < definition.end; ++i) {
        depth += tokens[i].text == "(" ? 1 : tokens[i].text == ")" ? -1 : 0;
        if (depth == 0 && tokens[i].text == "{")
            return {static_cast<std::uint32_t>(tokens[i].offset), definition.end};
    }
    return definition;
}

std::string SlcIndexPlaces::TextOf(const SlcTextRange& range) const
{
    const auto& tokens = m_trace.Tokens();
    std::string text;
    std::size_t end = range.begin;
    for (std::size_t i = TokenAt(range.begin); i < tokens.size() && tokens[i].offset < range.end;
         ++i) {
        // Blanks, or line markers.
        if (tokens[i].offset > end)
            text += ' ';
        end = std::min<std::size_t>(tokens[i].offset + tokens[i].text.size(), range.end);
        text += m_text.substr(tokens[i].offset, end - tokens[i].offset);
    }
    return text;
}

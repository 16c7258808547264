// Most changes replace or insert a span of text: a word, a group in brackets, a statement, or lines
// of byte-code. The ends of a span are found by a search from a random place. Nothing is parsed, so
// that an invalid text can be changed further.

#include "fuzz/Mutator.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>

namespace {

using Span = Mutator::Span;

constexpr std::size_t k_mostChanges = 4;
constexpr std::size_t k_mostLineChanges = 2;  // more would be refused at once

// Words that may replace a word, as those of the donor may.
constexpr std::array<std::string_view, 84> k_words = {
    "float",       "color",      "point",      "vector",      "normal", "matrix",
    "string",      "void",       "uniform",    "varying",     "output", "extern",
    "surface",     "light",      "volume",     "imager",      "if",     "else",
    "while",       "for",        "break",      "continue",    "return", "illuminate",
    "illuminance", "solar",      "texture",    "environment", "shadow", "displacement",
    "class",       "float[2.0]", "float[]",    "[]",          "[2]",    "[2.0]",
    "{",           "}",          "(",          ")",           ";",      ",",
    "=",           "+=",         "-=",         "*=",          "/=",     "==",
    "!=",          "&&",         "||",         "!",           "?",      ":",
    ".",           "^",          "/",          "-",           "\"\"",   "\"world\"",
    "\"a\\n%f\"",  "0",          "1",          "-1",          "1e38",   "1e-45",
    "32767",       "32768",      "2147483647", "1e999",       "P",      "N",
    "I",           "Ci",         "Oi",         "Cs",          "L",      "Cl",
    "s",           "u",          "(0, 1, 2)",  "{1, 2}",      "noise",  "ctransform",
};

// Lines that may replace a line of byte-code, as those of the donor may.
constexpr std::array<std::string_view, 12> k_numbers = {
    "0", "1", "2", "3", "7", "-1", "21", "435", "32767", "-32768", "1e38", ""};
constexpr std::size_t k_codeLine = 5;  // lines up to this length, with newline, count as code
constexpr std::string_view k_byteCodeStart = "\x7F";
constexpr std::string_view k_byteCodeVersion = "\n5 0\n";  // ends the part that all files share

bool IsWordPart(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

/// Returns the word at the place, or the character if it is not part of a word.
Span WordAt(std::string_view text, std::size_t at)
{
    Span word = {at, at + 1};
    if (!IsWordPart(text[at]))
        return word;
    while (word.begin > 0 && IsWordPart(text[word.begin - 1]))
        --word.begin;
    while (word.end < text.size() && IsWordPart(text[word.end]))
        ++word.end;
    return word;
}

/// Returns the span from the first opening bracket at or after the place to its closing bracket,
/// and sets `bracket` to the opening one. The span is empty if either is missing.
Span GroupAt(std::string_view text, std::size_t at, char& bracket)
{
    constexpr std::string_view openings = "([{";
    constexpr std::string_view closings = ")]}";
    const std::size_t begin = text.find_first_of(openings, at);
    if (begin == std::string_view::npos)
        return {};
    bracket = text[begin];
    const char closing = closings[openings.find(bracket)];
    int depth = 0;
    for (std::size_t i = begin; i < text.size(); ++i) {
        depth += text[i] == bracket ? 1 : 0;
        depth -= text[i] == closing ? 1 : 0;
        if (depth == 0)
            return {begin, i + 1};
    }
    return {};
}

/// Returns the text after the first semicolon or brace from the place on, up to the next one, which
/// is mostly a statement; an empty span if there is no such character.
Span StatementAt(std::string_view text, std::size_t at)
{
    constexpr std::string_view ends = ";{}";
    const std::size_t begin = text.find_first_of(ends, at);
    if (begin == std::string_view::npos)
        return {};
    const std::size_t end = text.find_first_of(ends, begin + 1);
    return {begin + 1, end == std::string_view::npos ? text.size() : end + 1};
}

/// Returns `count` lines, beginning with the line at the place; fewer at the end of the text. If
/// the place is a newline, returns one line less, beginning with the line after it.
Span LinesAt(std::string_view text, std::size_t at, std::size_t count)
{
    const std::size_t before = text.rfind('\n', at);
    Span lines = {before == std::string_view::npos ? 0 : before + 1, at};
    for (; count > 0 && lines.end < text.size(); --count)
        lines.end = std::min(text.find('\n', lines.end), text.size() - 1) + 1;
    return lines;
}

void Replace(std::string& text, const Span& span, std::string_view by)
{
    text.replace(span.begin, span.Size(), by);
}

std::string_view Part(std::string_view text, const Span& span)
{
    return text.substr(span.begin, span.Size());
}

}  // namespace

std::string Mutator::Mutate(std::string text, std::string_view donor, std::size_t limit)
{
    const std::size_t most = text.starts_with(k_byteCodeStart) ? k_mostLineChanges : k_mostChanges;
    for (std::size_t left = 1 + Below(most); left > 0; --left)
        Change(text, donor);
    text.resize(std::min(text.size(), limit));
    return text;
}

void Mutator::Change(std::string& text, std::string_view donor)
{
    if (text.empty())
        text = donor;
    if (text.empty())
        text = " ";
    if (donor.empty())
        donor = " ";
    if (text.starts_with(k_byteCodeStart) && Below(8) != 0)
        return ChangeLines(text, donor);
    switch (Below(8)) {
    case 0:
        return ChangeBytes(text);
    case 1:
    case 2:
        return MoveWords(text, donor);
    case 3:
    case 4:
        return ReplaceWord(text, donor);
    case 5:
    case 6:
        return ReplaceGroup(text, donor);
    default:
        return InsertStatement(text, donor);
    }
}

void Mutator::ChangeBytes(std::string& text)
{
    const std::size_t at = Below(text.size());
    const char byte = static_cast<char>(Below(256));
    switch (Below(3)) {
    case 0:
        text[at] = byte;
        break;
    case 1:
        text.insert(at, 1, byte);
        break;
    default:
        text.erase(at, 1 + Below(8));
    }
}

/// Removes up to 24 characters from the beginning of a word, or inserts such a part of the donor,
/// which is longer if its first word is.
void Mutator::MoveWords(std::string& text, std::string_view donor)
{
    const std::size_t length = 1 + Below(24);
    if (Below(3) == 0) {
        text.erase(WordAt(text, Below(text.size())).begin, length);
        return;
    }
    const Span from = WordAt(donor, Below(donor.size()));
    const std::string part(donor.substr(from.begin, std::max(from.Size(), length)));
    text.insert(WordAt(text, Below(text.size())).begin, part);
}

/// Changes lines of byte-code, most of which are numbers. Mostly keeps the number of lines, since
/// the reader finds a wrong count at once.
void Mutator::ChangeLines(std::string& text, std::string_view donor)
{
    const auto place = [this](std::string_view in) {
        const std::size_t version = in.find(k_byteCodeVersion);
        const std::size_t first = Below(32) == 0 || version == std::string_view::npos
                                      ? 0
                                      : version + k_byteCodeVersion.size();
        std::size_t at = 0;
        // Prefers lines of code; a random place is seldom in one, since they are short.
        for (int attempt = 0; attempt < 8 && first < in.size(); ++attempt) {
            at = first + Below(in.size() - first);
            if (LinesAt(in, at, 1).Size() <= k_codeLine)
                break;
        }
        return at;
    };
    const std::size_t count = Below(2) == 0 ? 1 : 1 + Below(6);
    const Span to = LinesAt(text, place(text), count);
    // A number close to the old one often names a variable or instruction of the same kind.
    if (Below(2) == 0)
        return MoveNumber(text, LinesAt(text, to.begin, 1));
    if (Below(6) == 0) {
        Replace(text, LinesAt(text, to.begin, 1),
                std::string(k_numbers[Below(k_numbers.size())]) + '\n');
        return;
    }
    // Lines of the text itself name things that the text contains, unlike most lines of a donor.
    const std::string own = text;
    const std::string_view from = Below(4) == 0 ? donor : own;
    const std::string lines(Part(from, LinesAt(from, place(from), count)));
    if (Below(12) == 0)
        text.insert(to.begin, lines);
    else
        Replace(text, to, lines);
}

void Mutator::MoveNumber(std::string& text, const Span& line)
{
    const int number = std::atoi(text.c_str() + line.begin);
    const int step = static_cast<int>(Below(9)) - 4;
    Replace(text, line, std::to_string(number + step) + '\n');
}

void Mutator::ReplaceWord(std::string& text, std::string_view donor)
{
    const Span to = WordAt(text, Below(text.size()));
    if (Below(2) == 0) {
        Replace(text, to, k_words[Below(k_words.size())]);
        return;
    }
    const std::string word(Part(donor, WordAt(donor, Below(donor.size()))));
    Replace(text, to, word);
}

void Mutator::ReplaceGroup(std::string& text, std::string_view donor)
{
    char toBracket = 0;
    char fromBracket = 0;
    const Span to = GroupAt(text, Below(text.size()), toBracket);
    const Span from = GroupAt(donor, Below(donor.size()), fromBracket);
    if (to.Size() == 0 || from.Size() == 0)
        return;
    const std::string group(Part(donor, from));
    // A group of another kind is inserted at the beginning of the existing one.
    if (toBracket == fromBracket)
        Replace(text, to, group);
    else
        text.insert(to.begin + 1, group);
}

void Mutator::InsertStatement(std::string& text, std::string_view donor)
{
    const Span to = StatementAt(text, Below(text.size()));
    const Span from = StatementAt(donor, Below(donor.size()));
    const std::string statement(Part(donor, from));
    if (Below(3) == 0)
        Replace(text, to, statement);
    else
        text.insert(to.begin, statement);
}

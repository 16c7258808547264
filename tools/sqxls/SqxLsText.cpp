// Tested by tests/sqxls/SqxLsTextTest.cpp.

#include "sqxls/SqxLsText.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace {

/// The length of a character, in bytes and in UTF-16 units.
struct Character {
    std::size_t bytes = 1;
    std::size_t units = 1;
};

/// Returns the length of the first character of a text, which must not be empty.
Character CharacterAt(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    if (first < 0xC2 || first > 0xF4)
        return {};
    const std::size_t size = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (text.size() < size)
        return {};
    for (std::size_t i = 1; i < size; ++i)
        if ((byte(i) & 0xC0U) != 0x80)
            return {};
    return {size, size == 4 ? 2U : 1U};
}

std::size_t LineOf(const std::vector<std::size_t>& lines, std::size_t offset)
{
    return static_cast<std::size_t>(std::upper_bound(lines.begin(), lines.end(), offset) -
                                    lines.begin()) -
           1;
}

constexpr std::string_view k_byteOrderMark = "\xEF\xBB\xBF";

}  // namespace

bool SqxLsIsWordByte(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

SqxLsText::SqxLsText(std::string bytes) : m_bytes(std::move(bytes))
{
    FindLines();
}

void SqxLsText::FindLines()
{
    m_lines.assign(1, 0);
    m_compilerLines.assign(1, 0);
    for (std::size_t i = 0; i < m_bytes.size(); ++i) {
        const bool isReturn = m_bytes[i] == '\r' && m_bytes.compare(i, 2, "\r\n") != 0;
        if (m_bytes[i] == '\n' || isReturn)
            m_lines.push_back(i + 1);
        if (m_bytes[i] == '\n')
            m_compilerLines.push_back(i + 1);
    }
}

std::string_view SqxLsText::Part(const SqxLsSpan& span) const
{
    return std::string_view(m_bytes).substr(span.begin, span.Length());
}

std::size_t SqxLsText::OffsetOf(const SqxLsPosition& position) const
{
    if (position.line >= m_lines.size())
        return m_bytes.size();
    std::size_t offset = m_lines[position.line];
    std::size_t end =
        position.line + 1 < m_lines.size() ? m_lines[position.line + 1] : m_bytes.size();
    while (end > offset && (m_bytes[end - 1] == '\n' || m_bytes[end - 1] == '\r'))
        --end;
    for (std::size_t units = 0; units < position.character && offset < end;) {
        const Character character =
            CharacterAt(std::string_view(m_bytes).substr(offset, end - offset));
        units += character.units;
        if (units > position.character)  // in the middle of a surrogate pair
            break;
        offset += character.bytes;
    }
    return offset;
}

std::size_t SqxLsText::OffsetOf(const SqxLsPlace& place) const
{
    const auto line = static_cast<std::size_t>(std::max(place.line, 1)) - 1;
    if (line >= m_compilerLines.size())
        return m_bytes.size();
    const std::size_t end =
        line + 1 < m_compilerLines.size() ? m_compilerLines[line + 1] - 1 : m_bytes.size();
    std::size_t begin = m_compilerLines[line];
    if (line == 0 && m_bytes.starts_with(k_byteOrderMark))  // the compiler does not count it
        begin += k_byteOrderMark.size();
    return std::min(begin + static_cast<std::size_t>(std::max(place.column, 1)) - 1, end);
}

SqxLsPosition SqxLsText::PositionOf(std::size_t offset) const
{
    offset = std::min(offset, m_bytes.size());
    SqxLsPosition position;
    position.line = LineOf(m_lines, offset);
    for (std::size_t at = m_lines[position.line]; at < offset;) {
        const Character character = CharacterAt(std::string_view(m_bytes).substr(at));
        if (at + character.bytes > offset)
            break;
        at += character.bytes;
        position.character += character.units;
    }
    return position;
}

SqxLsPlace SqxLsText::PlaceOf(std::size_t offset) const
{
    offset = std::min(offset, m_bytes.size());
    const std::size_t line = LineOf(m_compilerLines, offset);
    std::size_t column = offset - m_compilerLines[line];
    if (line == 0 && m_bytes.starts_with(k_byteOrderMark))
        column -= std::min(column, k_byteOrderMark.size());
    return {static_cast<int>(line) + 1, static_cast<int>(column) + 1};
}

SqxLsSpan SqxLsText::LineAround(std::size_t offset) const
{
    offset = std::min(offset, m_bytes.size());
    const std::size_t line = LineOf(m_lines, offset);
    SqxLsSpan span{m_lines[line], line + 1 < m_lines.size() ? m_lines[line + 1] : m_bytes.size()};
    const auto isBlank = [&](std::size_t at) {
        return std::isspace(static_cast<unsigned char>(m_bytes[at])) != 0;
    };
    while (span.end > span.begin && isBlank(span.end - 1))
        --span.end;
    while (span.begin < span.end && isBlank(span.begin))
        ++span.begin;
    return span;
}

SqxLsSpan SqxLsText::WordAt(std::size_t offset) const
{
    offset = std::min(offset, m_bytes.size());
    SqxLsSpan word{offset, offset};
    while (word.begin > 0 && SqxLsIsWordByte(m_bytes[word.begin - 1]))
        --word.begin;
    while (word.end < m_bytes.size() && SqxLsIsWordByte(m_bytes[word.end]))
        ++word.end;
    return word;
}

void SqxLsText::Replace(const SqxLsSpan& span, std::string_view text)
{
    m_bytes.replace(span.begin, span.Length(), text);
    FindLines();
}

// A file may contain anything, so each item is checked for presence, kind and range. The first
// fault ends the reading, and its message names the line and the section. Of the items, only quoted
// texts are copied.
//
// Tested by tests/backends/SqxReaderTest.cpp and the fuzz target `bytecode`.

#include "sqx/SqxCursor.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "sqx/SqxFileHead.h"

namespace {

/// True if a number that is out of range is too large, and not too small.
bool IsTooLarge(std::string_view number)
{
    const std::size_t e = std::min(number.find_first_of("eE"), number.size());
    const std::string_view digits = number.substr(0, e);
    std::string_view power = number.substr(std::min(e + 1, number.size()));
    if (power.starts_with('+'))
        power.remove_prefix(1);
    long exponent = 0;
    if (std::from_chars(power.data(), power.data() + power.size(), exponent).ec ==
        std::errc::result_out_of_range)
        return !power.starts_with('-');
    const auto point = static_cast<long>(std::min(digits.find('.'), digits.size()));
    const auto first = static_cast<long>(digits.find_first_of("123456789"));
    return exponent > first - point;
}

}  // namespace

std::string SqxFaultText(int line, const std::string& section, const std::string& fault)
{
    const std::string place = "line " + std::to_string(line);
    return (section.empty() ? place : place + ", " + section) + ": " + fault;
}

void SqxCursor::FailAt(int line, const std::string& message)
{
    m_message = SqxFaultText(line, m_section, message);
    m_faultLine = line;
    throw SqxMalformed();
}

void SqxCursor::SkipBlanks()
{
    while (m_text.starts_with(' '))
        m_text.remove_prefix(1);
}

std::string_view SqxCursor::ReadWord(const char* what)
{
    SkipBlanks();
    const auto end = std::min(m_text.find_first_of(" \n"), m_text.size());
    if (end == 0)
        Fail(std::string(what) + " is missing");
    const std::string_view word = m_text.substr(0, end);
    m_text.remove_prefix(end);
    return word;
}

int SqxCursor::ReadInt(const char* what)
{
    const std::string_view word = ReadWord(what);
    int value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size())
        Fail(std::string(what) + " is not a number: " + std::string(word));
    return value;
}

int SqxCursor::ReadCount(const char* what)
{
    const int value = ReadInt(what);
    if (value < 0)
        Fail(std::string(what) + " is negative");
    return value;
}

bool SqxCursor::ReadBool(const char* what)
{
    const int value = ReadInt(what);
    if (value != 0 && value != 1)
        Fail(std::string(what) + " is neither 0 nor 1");
    return value == 1;
}

double SqxCursor::ReadFloat(const char* what)
{
    const std::string_view word = ReadWord(what);
    double value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    const bool outOfRange = error == std::errc::result_out_of_range;
    if ((error != std::errc() && !outOfRange) || end != word.data() + word.size() ||
        !std::isfinite(value))
        Fail(std::string(what) + " is not a number: " + std::string(word));
    // A value too small for a double is accepted as 0.
    if ((outOfRange && IsTooLarge(word)) || std::abs(value) > std::numeric_limits<float>::max())
        Fail(std::string(what) + " does not fit into single precision: " + std::string(word));
    return value;
}

std::string SqxCursor::ReadQuoted(const char* what)
{
    SkipBlanks();
    if (!m_text.starts_with('"'))
        Fail(std::string(what) + " is not a quoted text");
    std::size_t end = 1;
    int lines = 0;
    for (; end < m_text.size() && m_text[end] != '"'; ++end) {
        if (m_text[end] == '\\')
            ++end;
        if (end < m_text.size() && m_text[end] == '\n')
            ++lines;
    }
    if (end >= m_text.size())
        Fail(std::string(what) + " has no end");
    std::string quoted(m_text.substr(0, end + 1));
    m_text.remove_prefix(end + 1);
    m_line += lines;
    return quoted;
}

void SqxCursor::EndLine()
{
    if (m_text.empty())
        Fail("The file ends too early");
    if (m_text.front() != '\n')
        Fail("Nothing more was expected in this line");
    m_text.remove_prefix(1);
    ++m_line;
}

int SqxCursor::ReadIntLine(const char* what)
{
    const int value = ReadInt(what);
    EndLine();
    return value;
}

int SqxCursor::ReadCountLine(const char* what)
{
    const int value = ReadCount(what);
    EndLine();
    return value;
}

bool SqxCursor::ReadBoolLine(const char* what)
{
    const bool value = ReadBool(what);
    EndLine();
    return value;
}

void SqxCursor::Expect(std::string_view line)
{
    if (!m_text.starts_with(line))
        Fail(line.empty() ? "An empty line was expected"
                          : "Not a byte-code file of version " + std::to_string(k_sqxMajorVersion));
    m_text.remove_prefix(line.size());
    EndLine();
}

void SqxCursor::ExpectEnd()
{
    if (!m_text.empty())
        Fail("Nothing was expected after the main code");
}

std::string SqxUnquoted(const std::string& quoted)
{
    return quoted.substr(1, quoted.size() - 2);
}

std::string SqxLiteralText(const std::string& quoted)
{
    constexpr std::string_view letters = "abfnrtv";
    constexpr std::string_view controls = "\a\b\f\n\r\t\v";
    const auto isOctal = [&](std::size_t i) {
        return i + 1 < quoted.size() && quoted[i] >= '0' && quoted[i] <= '7';
    };
    std::string text;
    for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
        if (quoted[i] != '\\' || i + 2 >= quoted.size()) {
            text += quoted[i];
            continue;
        }
        const char code = quoted[++i];
        if (const std::size_t letter = letters.find(code); letter != std::string_view::npos) {
            text += controls[letter];
        } else if (isOctal(i)) {
            int value = code - '0';
            for (int digits = 1; digits < 3 && isOctal(i + 1); ++digits)
                value = value * 8 + quoted[++i] - '0';
            text += static_cast<char>(value);
        } else {
            text += code;
        }
    }
    return text;
}

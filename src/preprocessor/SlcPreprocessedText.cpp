// Each token stays on its line and, where possible, in its column:
//
//     a.sl                             text
//     #define TWICE(x) (2 * x)         # 1 "a.sl"
//     f = TWICE(s); /* why */ t = 1;
//                                      f = (2 * s);           t = 1;
//
// From the "(" in the text on, columns differ from those of the file. Two objects of the class
// `SlcColumnChange` describe this:
// {offset of "(", 5, fixed} for the use of the macro, and {offset of ";", 13} for the rest.
//
// Tested by tests/preprocessor.

#include "preprocessor/SlcPreprocessedText.h"

#include <cctype>
#include <limits>

#include "preprocessor/SlcQuotedText.h"

namespace {

using enum SlcSourceTokenKind;

constexpr int k_mostNewLines = 8;  // more empty lines are replaced by a line marker

bool IsWord(char c)
{
    const auto u = static_cast<unsigned char>(c);
    return std::isalnum(u) != 0 || c == '_' || c == '$' || c == '.';
}

/// True if the two characters, when adjacent, could be read as parts of one token.
bool MayJoin(char before, char after)
{
    if (IsWord(before) && IsWord(after))
        return true;
    if (after == '=' || before == after)
        return true;
    constexpr std::string_view pairs[] = {"->", "/*", "<:", "<%", "%:", ":>", "%>", "L'", "L\""};
    for (const std::string_view pair : pairs)
        if (pair[0] == before && pair[1] == after)
            return true;
    return std::string_view("eEpP").find(before) != std::string_view::npos &&
           (after == '+' || after == '-');
}

}  // namespace

void SlcPreprocessedText::EndLine()
{
    if (!m_isOpen)
        return;
    m_text += '\n';
    // A line marker can set the line to the maximum.
    if (m_line < std::numeric_limits<int>::max())
        ++m_line;
    m_isOpen = false;
}

void SlcPreprocessedText::Marker(const std::string& name, int line, std::string_view flag)
{
    EndLine();
    m_text += "# " + std::to_string(line) + " " + SlcQuoted(name);
    m_text.append(flag).append("\n");
    m_name = name;
    m_line = line;
}

void SlcPreprocessedText::EnterFile(const std::string& name)
{
    Marker(name, 1, m_text.empty() ? "" : " 1");
}

void SlcPreprocessedText::ReturnToFile(const std::string& name, int line)
{
    Marker(name, line, " 2");
}

void SlcPreprocessedText::SetPlace(const std::string& name, int line)
{
    Marker(name, line, "");
}

void SlcPreprocessedText::MoveTo(int line)
{
    EndLine();
    if (line < m_line || line - m_line > k_mostNewLines) {
        Marker(m_name, line, "");
    } else {
        m_text.append(static_cast<std::size_t>(line - m_line), '\n');
        m_line = line;
    }
    m_lineBegin = m_text.size();
    m_lastEnd = nullptr;
    m_lastFromMacro = false;
    m_shift = 0;
}

void SlcPreprocessedText::Add(const SlcSourceToken& token)
{
    const bool isNeighbour = m_isOpen && !token.startsLine && !token.spaceBefore &&
                             token.at == m_lastEnd && !token.fromMacro;
    if (!m_isOpen || (token.line != m_line && !isNeighbour))
        MoveTo(token.line);
    if (!isNeighbour)
        AddGap(token);
    NoteColumn(token);
    if (m_trace)
        m_trace->AddToken(m_text.size(), token);
    m_text += token.text;
    m_isOpen = true;
    m_lastFromMacro = token.fromMacro;
    m_lastTextEnd = token.text.data() + token.text.size();
    m_lastEnd = token.fromMacro ? nullptr : m_lastTextEnd;
}

void SlcPreprocessedText::AddGap(const SlcSourceToken& token)
{
    const char* begin = m_lastEnd;
    if (!m_isOpen)
        begin = token.at - (token.column - 1);
    if (begin && (!m_isOpen || token.spaceBefore)) {
        for (; begin != token.at; ++begin)
            m_text += *begin == '\t' ? '\t' : ' ';
        return;
    }
    const bool needsBlank = token.spaceBefore || (m_isOpen && !token.text.empty() &&
                                                  MayJoin(m_text.back(), token.text.front()));
    if (needsBlank)
        m_text += ' ';
}

void SlcPreprocessedText::NoteColumn(const SlcSourceToken& token)
{
    const int shift = token.column - (static_cast<int>(m_text.size() - m_lineBegin) + 1);
    const bool goesOn = token.fromMacro ? m_lastFromMacro && m_columns.back().column == token.column
                                        : !m_lastFromMacro && m_shift == shift;
    if (goesOn)
        return;
    m_columns.push_back({m_text.size(), token.column, token.fromMacro});
    m_shift = shift;
}

void SlcPreprocessedText::AddLine(std::string_view text, int line)
{
    MoveTo(line);
    m_text += text;
    m_isOpen = true;
    EndLine();
}

void SlcPreprocessedText::Finish()
{
    EndLine();
}

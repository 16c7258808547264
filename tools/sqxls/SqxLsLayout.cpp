// The layout is made in one walk over the tokens. A gap between two tokens of one line is replaced
// by as many blanks as `SqxLsSpacing` returns. A gap with line breaks is replaced by one or two of
// them and the indentation of the next line:
//
//     surface a(float Kd = 1;         column after the open parenthesis
//               float Ks = 1)
//     {
//         if (s > 0.5)                indentation of the block
//             Ci = Cs *               one level more after a head such as `if (...)`
//                  Kd;                column of the assigned value
//         return Kd +
//             Ks;                     one level more in other statements
//     }
//
// The layout after `#else` and `#elif` starts from the same state as after `#if`, so that braces in
// all branches count once.
//
// Tested by tests/sqxls/SqxLsFormatTest.cpp.

#include "sqxls/SqxLsLayout.h"

#include <algorithm>

#include "sqxls/SqxLsSpacing.h"

namespace {

using Kind = SqxLsToken::Kind;

struct Bracket {
    std::size_t column = 0;  // of its contents
    bool isBlock = false;
    std::size_t outer = 0;  // indentation of the closing brace
};

struct State {
    std::vector<Bracket> open;        // from the outermost to the innermost
    std::size_t heads = 0;            // nested heads whose statement comes next
    bool isInStatement = false;       // the statement has begun
    std::size_t value = 0;            // column of the assigned value; 0 outside an assignment
    std::size_t headParenthesis = 0;  // size of `open` in the parentheses of a head; 0 outside
};

bool IsAssignment(std::string_view sign)
{
    return sign == "=" || sign == "+=" || sign == "-=" || sign == "*=" || sign == "/=";
}

class Layout {
public:
    Layout(const SqxLsText& source, const SqxLsIndent& indent)
        : m_source(source),
          m_indent(indent),
          m_tokens(SqxLsTokensOf(source.Bytes())),
          m_partners(SqxLsPartnersOf(m_tokens)),
          m_spacing(m_tokens, m_partners)
    {
    }

    std::vector<SqxLsEdit> Run()
    {
        for (const SqxLsToken& token : m_tokens)
            if (token.kind == Kind::Broken)
                return {};
        for (std::size_t i = 0; i < m_tokens.size(); ++i) {
            PlaceToken(i);
            Enter(i);
        }
        EndText();
        return std::move(m_edits);
    }

private:
    void PlaceToken(std::size_t i);
    [[nodiscard]] std::size_t IndentOf(std::size_t i) const;
    /// True if there is a line break between the token and the next one.
    [[nodiscard]] bool EndsLine(std::size_t i) const;
    [[nodiscard]] std::size_t BlockIndent() const;
    [[nodiscard]] std::string Blanks(std::size_t columns) const;
    void Replace(const SqxLsSpan& gap, const std::string& text);
    void MoveComment(const SqxLsToken& comment);
    void Enter(std::size_t i);
    void EnterSign(std::size_t i);
    void EnterDirective(const SqxLsToken& directive);
    void EndText();

    const SqxLsText& m_source;
    SqxLsIndent m_indent;
    std::vector<SqxLsToken> m_tokens;
    std::vector<std::size_t> m_partners;
    SqxLsSpacing m_spacing;
    std::vector<SqxLsEdit> m_edits;
    State m_state;
    std::vector<State> m_conditions;  // the state before each open `#if`
    std::size_t m_column = 0;         // end of the last token, in the new layout
    std::size_t m_lineIndent = 0;
};

std::string Layout::Blanks(std::size_t columns) const
{
    if (!m_indent.usesTabs || m_indent.width == 0)
        return std::string(columns, ' ');
    return std::string(columns / m_indent.width, '\t') + std::string(columns % m_indent.width, ' ');
}

void Layout::Replace(const SqxLsSpan& gap, const std::string& text)
{
    if (m_source.Part(gap) != text)
        m_edits.push_back({gap, text});
}

std::size_t Layout::BlockIndent() const
{
    return m_state.open.empty() ? 0 : m_state.open.back().column;
}

bool Layout::EndsLine(std::size_t i) const
{
    return i + 1 < m_tokens.size() &&
           m_source.Part({m_tokens[i].span.end, m_tokens[i + 1].span.begin}).find('\n') !=
               std::string_view::npos;
}

std::size_t Layout::IndentOf(std::size_t i) const
{
    const SqxLsToken& token = m_tokens[i];
    if (token.kind == Kind::Directive)
        return 0;
    if (token.text == "}" && !m_state.open.empty() && m_state.open.back().isBlock)
        return m_state.open.back().outer;
    if (!m_state.open.empty() && !m_state.open.back().isBlock)
        return BlockIndent();
    if (token.text == "{" && !m_spacing.IsListBrace(i))
        return BlockIndent() + (m_state.heads > 0 ? m_state.heads - 1 : 0) * m_indent.width;
    const bool goesOn = m_state.isInStatement && token.kind != Kind::Comment;
    if (goesOn && m_state.value > 0)
        return m_state.value;
    return BlockIndent() + (m_state.heads + (goesOn ? 1 : 0)) * m_indent.width;
}

/// Replaces the gap before a token; if it is a comment, also indents its other lines.
void Layout::PlaceToken(std::size_t i)
{
    const SqxLsToken& token = m_tokens[i];
    const bool isFirst = i == 0;
    const bool hasMark = isFirst && m_source.Bytes().starts_with("\xEF\xBB\xBF");
    const SqxLsSpan gap{isFirst ? (hasMark ? 3 : 0) : m_tokens[i - 1].span.end, token.span.begin};
    const std::string_view now = m_source.Part(gap);
    const auto breaks = static_cast<std::size_t>(std::count(now.begin(), now.end(), '\n'));
    if (breaks == 0 && !isFirst) {
        const std::size_t blanks = m_spacing.After(i - 1, now.size());
        Replace(gap, std::string(blanks, ' '));
        m_column += blanks;
    } else {
        const std::string_view lineBreak =
            now.find("\r\n") == std::string_view::npos ? "\n" : "\r\n";
        std::string text;
        for (std::size_t line = 0; line < std::min<std::size_t>(breaks, 2) && !isFirst; ++line)
            text += lineBreak;
        m_column = m_lineIndent = IndentOf(i);
        Replace(gap, text + Blanks(m_column));
    }
    if (token.kind == Kind::Comment)
        MoveComment(token);
    else
        m_column += token.span.Length();
}

/// Moves the other lines of a comment by as many columns as its first line has moved.
void Layout::MoveComment(const SqxLsToken& comment)
{
    const std::string& bytes = m_source.Bytes();
    const std::size_t lineBreak = bytes.rfind('\n', comment.span.begin);
    const std::size_t before =
        comment.span.begin - (lineBreak == std::string::npos ? 0 : lineBreak + 1);
    const std::size_t first = m_column;
    m_column += comment.span.Length();
    for (std::size_t at = bytes.find('\n', comment.span.begin); at < comment.span.end;
         at = bytes.find('\n', at + 1)) {
        const std::size_t text = bytes.find_first_not_of(" \t", at + 1);
        if (text >= comment.span.end || bytes[text] == '\n' || bytes[text] == '\r')
            continue;
        const std::string_view now = m_source.Part({at + 1, text});
        std::size_t column = now.size();
        if (now.find('\t') == std::string_view::npos && !m_indent.usesTabs) {
            column = std::max(column + first, before) - before;
            Replace({at + 1, text}, std::string(column, ' '));
        }  // with tabs, the line stays: only the editor knows their width
        m_column = column + std::min(bytes.find('\n', text), comment.span.end) - text;
    }
}

void Layout::Enter(std::size_t i)
{
    const SqxLsToken& token = m_tokens[i];
    switch (token.kind) {
    case Kind::Comment:
        return;
    case Kind::Directive:
        return EnterDirective(token);
    case Kind::Sign:
        return EnterSign(i);
    case Kind::Keyword:
        if (token.text == "else" || token.text == "if" || token.text == "for" ||
            token.text == "while" || token.text == "illuminance" || token.text == "illuminate" ||
            token.text == "solar") {
            const bool isElseIf = token.text == "if" && i > 0 && m_tokens[i - 1].text == "else" &&
                                  m_state.heads > 0 && !EndsLine(i - 1);
            m_state.heads += isElseIf ? 0 : 1;
            const bool hasParenthesis = token.text != "else";
            m_state.headParenthesis = hasParenthesis ? m_state.open.size() + 1 : 0;
            m_state.isInStatement = hasParenthesis;
            return;
        }
        break;
    case Kind::Word:
    case Kind::Number:
    case Kind::Text:
    case Kind::Broken:
        break;
    }
    m_state.isInStatement = true;
}

void Layout::EnterSign(std::size_t i)
{
    const std::string_view sign = m_tokens[i].text;
    const bool isBlock = sign == "{" && !m_spacing.IsListBrace(i);
    if (isBlock) {
        const std::size_t outer =
            BlockIndent() + (m_state.heads > 0 ? m_state.heads - 1 : 0) * m_indent.width;
        m_state.open.push_back({outer + m_indent.width, true, outer});
        m_state.heads = 0;
        m_state.isInStatement = false;
        m_state.value = 0;
        m_state.headParenthesis = 0;
        return;
    }
    m_state.isInStatement = true;
    const bool isAtTop = m_state.open.empty() || m_state.open.back().isBlock;
    const bool endsLine = EndsLine(i);
    if (isAtTop && m_state.value == 0 && IsAssignment(sign) && !endsLine)
        m_state.value = m_column + 1;
    if (sign == "(" || sign == "[" || sign == "{") {
        m_state.open.push_back({endsLine ? m_lineIndent + m_indent.width : m_column, false, 0});
    } else if (sign == ")" || sign == "]" || sign == "}") {
        const bool closesBlock =
            sign == "}" && !m_state.open.empty() && m_state.open.back().isBlock;
        const bool closesHead = m_state.headParenthesis == m_state.open.size();
        if (!m_state.open.empty() && (closesBlock || !m_state.open.back().isBlock))
            m_state.open.pop_back();
        if (closesBlock || (sign == ")" && closesHead && m_state.headParenthesis > 0)) {
            m_state.isInStatement = false;
            m_state.value = 0;
            m_state.headParenthesis = 0;
        }
        if (closesBlock)
            m_state.heads = 0;
    } else if (sign == ";" && isAtTop) {
        m_state.heads = 0;
        m_state.isInStatement = false;
        m_state.value = 0;
    }
}

void Layout::EnterDirective(const SqxLsToken& directive)
{
    const std::size_t begin = directive.text.find_first_not_of("# \t");
    if (begin == std::string_view::npos)
        return;
    const std::string_view word = directive.text.substr(begin);
    if (word.starts_with("if")) {
        m_conditions.push_back(m_state);
    } else if (word.starts_with("el") && !m_conditions.empty()) {
        m_state = m_conditions.back();
    } else if (word.starts_with("endif") && !m_conditions.empty()) {
        m_conditions.pop_back();
    }
}

void Layout::EndText()
{
    if (m_tokens.empty())
        return;
    const SqxLsSpan gap{m_tokens.back().span.end, m_source.Bytes().size()};
    Replace(gap, m_source.Part(gap).starts_with("\r\n") ? "\r\n" : "\n");
}

}  // namespace

std::vector<SqxLsEdit> SqxLsLayoutOf(const SqxLsText& source, const SqxLsIndent& indent)
{
    return Layout(source, indent).Run();
}

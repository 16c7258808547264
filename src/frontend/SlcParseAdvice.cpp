// Tracks the open parentheses, the open braces and the indentation of their lines, the head of the
// current statement (the part before its body, such as `if (x > 1)`), and whether a condition
// contains a comparison. SlcParseHints.cpp derives advice from this state. Unless advice is shown,
// token texts are not kept and no hints are made; then the state is only needed after a fault, and
// most sources have none. So tokens are only logged up to the first fault, and followed there.
//
// After a fault in a body the parser drops tokens up to a ";" or "}". If the fault is in the head
// of a statement, the next ";" or "}" usually belongs to the following block, so resuming there
// would unbalance the braces:
//
//     if (x > 1 {         rejected: "{"; a ";" is inserted before it, so that parsing
//         y = 1;          continues with the block as a separate statement
//     } else {            its "else" is dropped
//
// Tested by tests/frontend/SlcParseAdviceTest.cpp and MissingTokensTest.cpp.

#include "frontend/SlcParseAdvice.h"

#include <utility>

#include "frontend/SlcLaterWords.h"
#include "frontend/SlcLexicalNode.h"
#include "frontend/SlcScanner.h"
#include "frontend/SlcTokenFamilies.h"
#include "grammar.h"
#include "support/SlcDiagnostics.h"
#include "support/SlcSourcePosition.h"

using namespace SlcTokens;

namespace {

int IndentOfLine()
{
    const std::string& line = SlcCurrentPosition().currentLine;
    const std::size_t first = line.find_first_not_of(" \t");
    return first == std::string::npos ? 0 : static_cast<int>(first);
}

/// Returns the token for a report: its text in quotes, shortened if it is long.
std::string Named(int code, const std::string& text)
{
    constexpr std::size_t k_longest = 40;
    if (code == 0)
        return "end of the file";
    return "'" + (text.size() > k_longest ? text.substr(0, k_longest) + "..." : text) + "'";
}

bool OpensDefinition(const SlcSyntaxNode* name)
{
    const auto* const ident = dynamic_cast<const SlcIdentNode*>(name);
    return ident && SlcOpensLaterDefinition(ident->GetName());
}

}  // namespace

const SlcParseAdvice::Token& SlcParseAdvice::Before(std::size_t places) const
{
    static const Token none;
    return places < m_count && places < k_kept ? m_tokens[(m_count - 1 - places) % k_kept] : none;
}

int SlcParseAdvice::Next(SlcTokenValue& value, SlcTextRange& range)
{
    m_value = &value;
    return m_isFollowing ? NextFollowed(value, range) : NextLogged(value, range);
}

int SlcParseAdvice::NextLogged(SlcTokenValue& value, SlcTextRange& range)
{
    const int token = SlcScanner::Next(value);
    m_given = token;
    m_logged.push_back(static_cast<std::int16_t>(token));
    m_nodeBefore = m_lastNode;
    m_lastNode = value.node;
    range = RangeOfToken();
    if (token == 0)
        range.end = range.begin;
    return token;
}

void SlcParseAdvice::CatchUp()
{
    if (std::exchange(m_isFollowing, true))
        return;
    m_scanned = m_logged.size();
    for (const std::int16_t code : m_logged) {
        const std::size_t later = m_scanned - 1 - m_count;
        Token& token = NextPlace();
        token.code = code;
        // Only the last two tokens are asked for this.
        token.opensDefinition = code == IDENTIFIER && later < 2 &&
                                OpensDefinition(later == 0 ? m_lastNode : m_nodeBefore);
        Follow(token);
        ++m_count;
    }
    m_logged = {};
}

int SlcParseAdvice::NextFollowed(SlcTokenValue& value, SlcTextRange& range)
{
    if (m_pending == Pending::Separator) {
        m_pending = Pending::Block;
        return ';';
    }
    if (m_pending == Pending::Block) {
        m_pending = Pending::None;
        value = m_blockValue;
        range = RangeOfToken();
        return m_pendingBrace;
    }
    if (Inserts())
        return Insert(value, range);
    const bool dropsElse = std::exchange(m_dropsElse, false);
    int token = ReadKept();
    if (m_isRecovering)
        token = Resume(token);
    else if (dropsElse && token == ELSE)
        token = Read();
    else if (token == 0 && m_keepsBlocks && !m_braces.empty())
        token = CloseBrace();
    m_given = token;
    range = RangeOfToken();
    if (token == 0)
        range.end = range.begin;
    return token;
}

SlcTextRange SlcParseAdvice::RangeOfToken()
{
    const SlcSourcePosition& position = SlcCurrentPosition();
    const auto end = static_cast<std::uint32_t>(position.taken);
    // Braces that are inserted at the end to close blocks are located after the whole source.
    if (position.isAtEnd)
        return {end, end + 1};
    return {end - static_cast<std::uint32_t>(position.tokenLength), end};
}

int SlcParseAdvice::ReadKept()
{
    const Drops drops = std::exchange(m_drops, Drops::Nothing);
    if (drops == Drops::HeadOfFor)
        return ReadAfterHead();
    if (drops == Drops::Definition)
        return ReadToEnd();
    int token = Read();
    while (drops == Drops::Else && token == ELSE) {
        m_depth = m_braces.size();
        token = ReadToEnd();
        if (token == 0 || m_braces.size() < m_depth)
            break;
        token = Read();
    }
    return token;
}

/// If the parser resumed at a ";" in the head of a `for`, it would report the rest of the head too.
int SlcParseAdvice::ReadAfterHead()
{
    int token = Read();
    for (bool isInHead = true; isInHead && token != 0 && token != '{' && token != '}';
         token = Read())
        isInHead = token != ')' || m_parentheses.size() > m_headDepth;
    return token;
}

int SlcParseAdvice::ReadToEnd()
{
    while (true) {
        const int token = Read();
        const bool isOutside = m_braces.size() <= m_depth;
        if (token == 0 || (isOutside && (token == '}' || (token == ';' && m_openParentheses == 0))))
            return token;
    }
}

int SlcParseAdvice::Resume(int token)
{
    if (token == '{' && BeginsBlock()) {
        KeepBlock();
        m_pending = Pending::Block;
        return ';';
    }
    if (token == 0 && m_keepsBlocks && !m_braces.empty())
        token = CloseBrace();
    if (token == '}' && m_keepsBlocks)
        KeepEnd();
    if (token == ';' || token == '}') {
        m_isRecovering = false;
        m_dropsElse = m_faultHead == IF && token == ';';
    }
    return token;
}

int SlcParseAdvice::CloseBrace()
{
    m_braces.pop_back();
    return '}';
}

void SlcParseAdvice::KeepEnd()
{
    m_blockValue = *m_value;
    m_pendingBrace = '}';
    m_pending = Pending::Block;
}

bool SlcParseAdvice::BeginsBlock() const
{
    const bool hasHead = m_faultHead != 0 || m_headBefore != 0;
    return hasHead && Before(1).code != '=' && Before(1).code != m_faultHead;
}

void SlcParseAdvice::KeepBlock()
{
    m_isRecovering = false;
    m_blockValue = *m_value;
    m_pendingBrace = '{';
    if (m_faultHead == IF || m_headBefore == IF)
        m_blocksOfIf.push_back(m_braces.size());
}

int SlcParseAdvice::Read()
{
    const int code = Scan();
    Keep(code);
    return code;
}

void SlcParseAdvice::Keep(int code)
{
    Token& token = NextPlace();
    token.code = code;
    token.line = SlcCurrentPosition().line;
    token.text.clear();
    token.opensDefinition = code == IDENTIFIER && SlcOpensLaterDefinition(SlcScanner::TokenText());
    if (m_isShown && code != 0)
        token.text = SlcScanner::TokenText();
    Follow(token);
    ++m_count;
}

void SlcParseAdvice::Follow(const Token& token)
{
    m_openParentheses = m_parentheses.size();
    FollowHead(token);
    FollowCondition(token);
    switch (token.code) {
    case '(':
    case ')':
    case '{':
    case '}':
    case ';':
        FollowParenthesis(token);
        FollowBrace(token);
        break;
    default:
        break;
    }
}

void SlcParseAdvice::FollowHead(const Token& token)
{
    const int code = token.code;
    m_headBefore = m_head;
    if (m_headIsClosed && code != ')')
        m_head = 0;
    m_headIsClosed = m_headIsClosed && code == ')';
    const bool isKeyword = code == IF || code == WHILE || code == FOR || code == SOLAR ||
                           code == ILLUMINATE || code == ILLUMINANCE;
    const bool isFunction =
        code == '(' && m_head == 0 && Before(0).code == IDENTIFIER && IsType(Before(1).code);
    if (isKeyword || isFunction) {
        m_head = code;
        m_headDepth = m_parentheses.size();
        m_semicolons = 0;
    } else if (code == ')') {
        m_headIsClosed = m_head != 0 && m_parentheses.size() <= m_headDepth + 1;
    } else if (code == ';') {
        const bool isInHead =
            (m_head == FOR && m_semicolons++ < 2) || (m_head == '(' && !m_parentheses.empty());
        m_head = isInHead ? m_head : 0;
    } else if (code == '{' || code == '}') {
        m_head = 0;
    }
}

void SlcParseAdvice::FollowParenthesis(const Token& token)
{
    const bool isInHead = !m_parentheses.empty() && m_parentheses.back().token == FOR;
    if (token.code == '(') {
        m_parentheses.push_back({Before(0).code, Before(0).text});
    } else if (token.code == ')' && !m_parentheses.empty()) {
        m_called = m_parentheses.back().text;
        m_parentheses.pop_back();
    } else if (token.code == '{' || token.code == '}' || (token.code == ';' && !isInHead)) {
        m_parentheses.clear();
    }
}

void SlcParseAdvice::FollowBrace(const Token& token)
{
    if (token.code == '{') {
        m_braces.push_back({token.line, m_isShown ? IndentOfLine() : 0});
    } else if (token.code == '}') {
        m_lastClosing = token.line;
        m_lastClosed = m_braces.empty() ? Brace() : m_braces.back();
        if (m_braces.empty())
            return;
        // A closing brace that is indented less than the opening brace suggests that it is meant
        // for an outer block, and that the closing brace of this block is missing. If another "}"
        // follows directly, the indentation of the line says nothing about this brace.
        const bool isFirst = m_isShown && NextChar() != '}' && IndentOfLine() < m_lastClosed.indent;
        if (isFirst && m_suspect.line == 0)
            m_suspect = m_lastClosed;
        m_braces.pop_back();
        if (!m_blocksOfIf.empty() && m_blocksOfIf.back() > m_braces.size()) {
            m_blocksOfIf.pop_back();
            m_dropsElse = true;
        }
    }
}

void SlcParseAdvice::FollowCondition(const Token& token)
{
    const bool isEnd = token.code == ')' && m_parentheses.size() == m_conditionDepth + 1;
    const bool isOpen = m_condition == Condition::Open;
    m_strayComparison = m_comparison;
    // Compute this before the token is processed, since the parser may reject the token at once.
    m_lacksComparison =
        !m_compared &&
        (m_condition == Condition::Closed ||
         (isOpen && (isEnd || token.code == AND || token.code == OR || token.code == ';' ||
                     m_parentheses.size() == m_conditionDepth)));
    if (m_condition == Condition::Closed)
        m_condition = Condition::None;

    if (token.code == ';' || token.code == '{' || token.code == '}') {
        const bool isHeadOfFor = token.code == ';' && !isOpen && !m_parentheses.empty() &&
                                 m_parentheses.back().token == FOR;
        m_condition = isHeadOfFor ? Condition::Open : Condition::None;
        m_conditionDepth = m_parentheses.size();
        m_compared = m_comparison = false;
    } else if (token.code == IF || token.code == WHILE) {
        m_condition = Condition::Open;
        m_conditionDepth = m_parentheses.size();
        m_compared = m_comparison = false;
    } else if (token.code == AND || token.code == OR) {
        m_compared = false;
    } else if (IsComparison(token.code)) {
        m_compared = true;
        m_comparison = m_condition == Condition::None;
    } else if (token.code == '?') {
        m_comparison = false;
    } else if (isEnd && isOpen) {
        m_condition = Condition::Closed;
    }
}

void SlcParseAdvice::RejectedBlock()
{
    CatchUp();
    m_drops = Drops::Else;
}

std::string SlcParseAdvice::Rejected(const SlcParserTables& tables)
{
    CatchUp();
    const int token = m_given;
    if (m_keepsBlocks)
        m_found = {m_scanned - 1, Replacement(tables)};
    m_faultHead = m_head == 0 ? m_headBefore : m_head;
    // The parser stops dropping at a ";" or "}", and drops any other token.
    m_isRecovering = token != ';' && token != '}';
    m_dropsElse = m_faultHead == IF && token == ';';
    if (m_head == FOR && !m_headIsClosed && token != '{' && token != '}') {
        m_drops = Drops::HeadOfFor;
    } else if (m_isRecovering && (Before(0).opensDefinition || Before(1).opensDefinition)) {
        m_drops = Drops::Definition;
        m_depth = m_braces.size() - (token == '{' ? 1 : 0);
        m_isRecovering = false;
    } else if (token == '{' && BeginsBlock()) {
        KeepBlock();
        m_pending = Pending::Separator;
    } else if (token == '}' && m_keepsBlocks) {
        KeepEnd();
    }
    return m_isShown ? AdviceWith(Hint(tables)) : std::string();
}

std::string SlcParseAdvice::AdviceWith(const std::string& hint) const
{
    return "unexpected " + Named(Before(0).code, Before(0).text) + (hint.empty() ? "" : ": ") +
           hint;
}

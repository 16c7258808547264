// Outside of bodies the parser gives up at a fault, since the grammar has no place there at which
// to resume. If only the names of a source are needed, the source is parsed again with the fault
// repaired, repeatedly if necessary:
//
//     surface a(float Kd = 1 float Ks = 1)      rejected: the second "float"; with a ";" before it
//                                               the parser accepts what follows
//     surface a(float Kd = ; float Ks = 1)      the same with a number
//     surface a(float Kd = 1, float Ks = 1)     nothing helps: "float" is dropped
//
// Tested by tests/compiler/QxSourceIndexTest.cpp.

#include "frontend/SlcLexicalNode.h"
#include "frontend/SlcMissingToken.h"
#include "frontend/SlcParseAdvice.h"
#include "frontend/SlcScanner.h"
#include "grammar.h"
#include "support/SlcSourcePosition.h"

void SlcParseAdvice::KeepBlocks(std::vector<Repair> repairs)
{
    m_keepsBlocks = true;
    m_isShown = true;
    m_isFollowing = true;
    m_repairs = std::move(repairs);
}

std::optional<SlcParseAdvice::Repair> SlcParseAdvice::NextRepair() const
{
    if (SlcCurrentPosition().isAtEnd || m_scanned == 0)
        return std::nullopt;
    Repair repair = {m_scanned - 1, 0};
    // Shortly after a fault the parser reports no other, so `m_found` may be at an earlier token.
    if (m_found.at == repair.at)
        repair.token = m_found.token;
    const bool goesBack = !m_repairs.empty() && repair.at < m_repairs.back().at;
    return goesBack ? std::nullopt : std::optional(repair);
}

int SlcParseAdvice::Replacement(const SlcParserTables& tables) const
{
    if (const int missing = MissingToken(tables); missing != 0)
        return missing;
    const int value[] = {INT_CONST, m_given};
    return tables.CountAccepted(m_states, value) == 2 ? INT_CONST : 0;
}

int SlcParseAdvice::Scan()
{
    for (;;) {
        const int code = SlcScanner::Next(*m_value);
        ++m_scanned;
        const bool isLeftOut = m_nextRepair < m_repairs.size() &&
                               m_repairs[m_nextRepair].at + 1 == m_scanned &&
                               m_repairs[m_nextRepair].token == 0;
        if (!isLeftOut || code == 0)
            return code;
        ++m_nextRepair;
    }
}

bool SlcParseAdvice::Inserts() const
{
    return m_nextRepair < m_repairs.size() && m_repairs[m_nextRepair].at == m_scanned &&
           m_repairs[m_nextRepair].token != 0;
}

int SlcParseAdvice::Insert(SlcTokenValue& value, SlcTextRange& range)
{
    const int token = m_repairs[m_nextRepair++].token;
    const SlcPosition position = SlcScanner::Position();
    SlcSyntaxNode* const node = token == INT_CONST ? SlcLexicalNode::CreateInt(0, false) : nullptr;
    value = {node, position.line, position.column, position.file};
    Keep(token);
    range = {RangeOfToken().end, RangeOfToken().end};
    m_given = token;
    return token;
}

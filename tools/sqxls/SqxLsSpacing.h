#pragma once

#include <cstddef>
#include <vector>

#include "sqxls/SqxLsTokens.h"

/// Decides how many blanks stand between neighbours on one line.
class SqxLsSpacing {
public:
    /// Both must outlive the object; `partners` as `SqxLsPartnersOf` returns them.
    SqxLsSpacing(const std::vector<SqxLsToken>& tokens, const std::vector<std::size_t>& partners);

    /// The blanks after token `i`, of which there are `now`; a token must come after it.
    [[nodiscard]] std::size_t After(std::size_t i, std::size_t now) const;
    /// Whether a brace encloses values and not statements.
    [[nodiscard]] bool IsListBrace(std::size_t i) const { return m_isListBrace[i]; }

private:
    [[nodiscard]] bool IsUnary(std::size_t i) const;
    [[nodiscard]] std::size_t BeforeParenthesis(std::size_t i, std::size_t now) const;

    const std::vector<SqxLsToken>& m_tokens;
    std::vector<bool> m_isListBrace;
};

#pragma once

#include <cstddef>
#include <vector>

#include "sqxls/SqxLsTokens.h"

/// Decides how many blanks separate two neighbouring tokens of a line.
class SqxLsSpacing {
public:
    /// `tokens` must outlive the object; `partners` is what `SqxLsPartnersOf` returns for them.
    SqxLsSpacing(const std::vector<SqxLsToken>& tokens, const std::vector<std::size_t>& partners);

    /// Returns the number of blanks that belong after token `i`; `now` is their present number.
    /// Another token must follow.
    [[nodiscard]] std::size_t After(std::size_t i, std::size_t now) const;
    /// True if token `i` is a brace that encloses values, not statements.
    [[nodiscard]] bool IsListBrace(std::size_t i) const { return m_isListBrace[i]; }

private:
    [[nodiscard]] bool IsUnary(std::size_t i) const;
    [[nodiscard]] std::size_t BeforeParenthesis(std::size_t i, std::size_t now) const;

    const std::vector<SqxLsToken>& m_tokens;
    std::vector<bool> m_isListBrace;
};

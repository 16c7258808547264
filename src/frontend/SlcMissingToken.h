#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "frontend/SlcParserTables.h"

/// Guesses the separator or bracket that is missing before the token that the parser rejected.
/// `following` is the rejected token and the tokens after it on its line; `states` is the parser's
/// stack before the rejected token. `startsLine` means that this token is the first of its line.
///
/// Returns the token with which the parser would accept the most of `following`. Returns 0 if the
/// parser would reject the same token again after each insertion, or if it would get further
/// without that token.
[[nodiscard]] int SlcMissingToken(const SlcParserTables& tables,
                                  std::span<const std::int16_t> states,
                                  const std::vector<int>& following, bool startsLine);

/// Returns the tokens of `text`, the rest of a line, up to a comment or an invalid token; at most
/// `most` tokens.
[[nodiscard]] std::vector<int> SlcTokensOfLine(std::string_view text, std::size_t most);

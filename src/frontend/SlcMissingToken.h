#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "frontend/SlcParserTables.h"

/// Guesses the separator or bracket that is missing before the token that the parser rejected.
/// `following` begins with the rejected token; `states` is the parser's stack before that token.
/// `startsLine` means that the rejected token is the first of its line.
///
/// Returns the token with which the parser would accept the most of `following`. Returns 0 if none
/// helps, or if the parser would get further without the rejected token.
[[nodiscard]] int SlcMissingToken(const SlcParserTables& tables,
                                  std::span<const std::int16_t> states,
                                  const std::vector<int>& following, bool startsLine);

/// Returns the tokens of `text`, the rest of a line, up to a comment or an invalid token; at most
/// `most` tokens.
[[nodiscard]] std::vector<int> SlcTokensOfLine(std::string_view text, std::size_t most);

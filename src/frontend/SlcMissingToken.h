#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "frontend/SlcParserTables.h"

/// A separator or bracket that a source lacks before the token that the parser refuses, the first
/// of those that follow; at least one follows. `states` is the parser's stack at that place, and
/// `startsLine` says that the refused token is the first of its line.
///
/// Returns the one with which the parser would take most of the tokens that follow, or 0 if none
/// helps, or if the source reads further without the refused token.
[[nodiscard]] int SlcMissingToken(const SlcParserTables& tables,
                                  std::span<const std::int16_t> states,
                                  const std::vector<int>& following, bool startsLine);

/// The tokens of what is left of a line, up to a comment or something that is no token.
[[nodiscard]] std::vector<int> SlcTokensOfLine(std::string_view text, std::size_t most);

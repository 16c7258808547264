#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// Finds tokens that the parser could accept instead of one that it refuses. Defined beside the
/// tables of the generated parser, in grammar.y.
class SlcParserTables {
public:
    virtual ~SlcParserTables() = default;

    /// How many of these tokens, in their order, a parser with that stack would take without one of
    /// its rules for a missing token. Nothing is parsed. Linear in the tokens and the depth of the
    /// stack.
    [[nodiscard]] virtual std::size_t CountAccepted(std::span<const std::int16_t> states,
                                                    std::span<const int> tokens) const = 0;
};

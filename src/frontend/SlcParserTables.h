#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// Finds tokens that the parser could accept instead of one that it rejects. Defined next to the
/// tables of the generated parser, in grammar.y.
class SlcParserTables {
public:
    virtual ~SlcParserTables() = default;

    /// Returns how many of these tokens, in order, a parser with that stack would accept without
    /// using one of the grammar's rules for missing tokens. Runs no actions. Linear in the tokens
    /// and the depth of the stack.
    [[nodiscard]] virtual std::size_t CountAccepted(std::span<const std::int16_t> states,
                                                    std::span<const int> tokens) const = 0;
};

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// Tries tokens with the tables of the generated parser, to find those that the parser would accept
/// instead of one that it rejects. Implemented in grammar.y, next to the tables.
class SlcParserTables {
public:
    virtual ~SlcParserTables() = default;

    /// Returns how many of `tokens`, in order, a parser with the stack `states` would accept
    /// without the grammar's rules that report a missing token; 0 if `states` is empty. Runs no
    /// actions. Linear in the tokens and the depth of the stack.
    [[nodiscard]] virtual std::size_t CountAccepted(std::span<const std::int16_t> states,
                                                    std::span<const int> tokens) const = 0;
};

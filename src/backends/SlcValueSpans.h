#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <vector>

#include "icode/SlcListICode.h"

/// Where the values of varying locals are used: from the instruction that writes a value to the
/// last one that reads it.
///
/// A loop over points need not load a variable if no value of it crosses the start of the loop, nor
/// store it if none crosses the end.
class SlcValueSpans {
public:
    /// One walk over the list, which is not needed afterwards. `results` are used after the list.
    explicit SlcValueSpans(const SlcListICode& list, const std::deque<SlcOperand>& results = {});

    /// True if an instruction at `place` or later may read a value of the variable that an earlier
    /// one writes. Always true for operands that are not followed: all but varying locals, and
    /// arrays, array references and strings. O(log n) for n instructions.
    [[nodiscard]] bool MayCross(const SlcOperand& operand, std::size_t place) const;

private:
    struct Span {
        std::size_t write;
        std::size_t lastRead;
    };
    class Finder;

    std::map<SlcOperand, std::vector<Span>> m_spans;  // in order, disjoint; for look-up only
};

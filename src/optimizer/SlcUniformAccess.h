#pragma once

#include <deque>
#include <unordered_map>
#include <vector>

#include "icode/SlcICode.h"

/// The uniform operands that the instructions of a parallel run read and write.
///
/// A run goes from point to point, each through all of its instructions. Of two runs that become
/// one, the first must therefore not write what the second touches, nor read what it writes: the
/// next point would find what the one before has left.
class SlcUniformAccess {
public:
    /// By reference to an element, its array.
    using Arrays = std::unordered_map<const SlcLexType*, const SlcLexType*>;
    /// Those of a whole list.
    [[nodiscard]] static Arrays ArraysOf(const std::deque<SlcPtr<SlcICode>>& codes);

    /// `code` belongs to the run.
    void Add(const SlcPtr<SlcICode>& code, const Arrays& arrays);
    /// Costs what `next` has.
    [[nodiscard]] bool MayJoin(const SlcUniformAccess& next) const;
    /// Adds what `next` touches.
    void Join(const SlcUniformAccess& next);

private:
    std::unordered_map<const SlcLexType*, bool> m_isWritten;  // by operand of the run
};

/// The same for all runs of a list, by number in the order of their begin marks.
class SlcUniformAccessOfRuns {
public:
    explicit SlcUniformAccessOfRuns(const std::deque<SlcPtr<SlcICode>>& codes);

    /// Run `next` may go into run `first`, which includes those that it has been joined with. If
    /// so, joins them. All calls together are linear.
    [[nodiscard]] bool Join(std::size_t first, std::size_t next);

private:
    std::vector<SlcUniformAccess> m_runs;
};

#pragma once

#include <deque>
#include <unordered_map>
#include <vector>

#include "icode/SlcICode.h"

/// The uniform operands that the instructions of a parallel run read and write.
///
/// A run executes all of its instructions for one point before the next point. So two runs may be
/// joined only if the first does not write what the second accesses, nor read what the second
/// writes: otherwise a point would read a value from another point than in separate runs.
class SlcUniformAccess {
public:
    /// Maps each reference to an array element to the array.
    using Arrays = std::unordered_map<const SlcLexType*, const SlcLexType*>;
    /// Returns the references in a whole list.
    [[nodiscard]] static Arrays ArraysOf(const std::deque<SlcPtr<SlcICode>>& codes);

    /// Adds the accesses of `code`, which must be in the run.
    void Add(const SlcPtr<SlcICode>& code, const Arrays& arrays);
    /// True if `next` can be joined with this run. Linear in the size of `next`.
    [[nodiscard]] bool MayJoin(const SlcUniformAccess& next) const;
    /// Adds the accesses of `next`.
    void Join(const SlcUniformAccess& next);

private:
    std::unordered_map<const SlcLexType*, bool> m_isWritten;  // by operand of the run
};

/// The accesses of all runs of a list. Runs are numbered in code order.
class SlcUniformAccessOfRuns {
public:
    explicit SlcUniformAccessOfRuns(const std::deque<SlcPtr<SlcICode>>& codes);

    /// Joins run `next` with run `first` and all runs already joined with `first`, if that is
    /// allowed. True if `next` was joined. All calls together are linear.
    [[nodiscard]] bool Join(std::size_t first, std::size_t next);

private:
    std::vector<SlcUniformAccess> m_runs;
};

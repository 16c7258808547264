#pragma once

#include <deque>
#include <unordered_map>
#include <vector>

#include "icode/SlcICode.h"

/// The uniform variables that the instructions of a parallel run read and write.
///
/// By definition, a run executes all of its instructions for one point before the next point. So
/// two runs may be joined only if neither writes a uniform variable that the other accesses:
/// otherwise a point could read a value from another point than in separate runs.
class SlcUniformAccess {
public:
    /// Maps each variable that refers to an array element to the array.
    using Arrays = std::unordered_map<const SlcLexType*, const SlcLexType*>;
    /// Returns the references in a whole list. Each must refer only to elements of one array.
    [[nodiscard]] static Arrays ArraysOf(const std::deque<SlcPtr<SlcICode>>& codes);

    /// Adds the accesses of `code`, an instruction of the run. An access through a reference in
    /// `arrays` also counts as an access of the array.
    void Add(const SlcPtr<SlcICode>& code, const Arrays& arrays);
    /// True if `next` can be joined with this run. Linear in the size of `next`.
    [[nodiscard]] bool MayJoin(const SlcUniformAccess& next) const;
    /// Adds the accesses of `next`.
    void Join(const SlcUniformAccess& next);

private:
    std::unordered_map<const SlcLexType*, bool> m_isWritten;  // by uniform variable of the run
};

/// The accesses of all runs of a list. Runs are numbered in code order, from 0.
class SlcUniformAccessOfRuns {
public:
    /// Linear in the instructions of the list, which is not needed afterwards.
    explicit SlcUniformAccessOfRuns(const std::deque<SlcPtr<SlcICode>>& codes);

    /// Joins run `next` with run `first` and all runs already joined with `first`, if that is
    /// allowed. True if `next` was joined. Linear in the accesses of `next`.
    [[nodiscard]] bool Join(std::size_t first, std::size_t next);

private:
    std::vector<SlcUniformAccess> m_runs;
};

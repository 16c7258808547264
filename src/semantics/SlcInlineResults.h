#pragma once

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "frontend/SlcDetailNode.h"
#include "semantics/SlcCallPlace.h"
#include "support/SlcCollectable.h"

/// Limits the evaluations of one compile that cannot be shared, so that a chain of functions that
/// each call the previous one twice ends with a report instead of hanging.
class SlcInlineBudget : public SlcCollectable {
public:
    /// Counts an evaluation. Returns false once the limit is exceeded.
    [[nodiscard]] bool Take() { return ++m_taken <= k_most; }
    /// True on the first call, so that the report is made once.
    [[nodiscard]] bool IsFirstReport() { return !std::exchange(m_reported, true); }

private:
    static constexpr int k_most = 1'000'000;  // the lowering refuses to expand that many calls

    int m_taken = 0;
    bool m_reported = false;
};

/// The results of evaluating the body of one function. Calls with the same inputs share one
/// evaluation, if the function accesses no outer variables of unknown detail (`SlcBodyFacts`).
/// Without sharing, the number of evaluations would grow with the length of the expansion, which a
/// chain of functions that each call the previous one twice doubles at each link.
class SlcInlineResults {
public:
    /// The inputs of an evaluation, as a short text that is the key of its result.
    class Circumstances {
    public:
        /// Starts with the place of the call. `isQuiet` means that the evaluation does not report
        /// its faults, so that a call that must report them cannot share the result.
        Circumstances(const SlcCallPlace& place, bool isQuiet);
        /// Adds the inline detail of the next formal, in order.
        void AddArgument(const SlcDetailNode* detail) { Add(detail); }
        /// Returns the text, which is equal for calls that can share a result.
        [[nodiscard]] const std::string& Key() const { return m_key; }

    private:
        void Add(const SlcDetailNode* detail);

        std::string m_key;
    };

    struct Result {
        SlcDetailNode* detail = nullptr;      // null: a light statement would be nested
        std::vector<SlcDetailNode*> formals;  // their inline details at the end of the body
    };

    /// Returns the result for these inputs; null if there is none. Valid until `Keep` replaces it.
    [[nodiscard]] const Result* Find(const Circumstances& circumstances) const;
    /// Stores a result, replacing an earlier one for the same inputs, and returns the stored one.
    const Result& Keep(const Circumstances& circumstances, Result result);

private:
    std::unordered_map<std::string, Result> m_results;
};

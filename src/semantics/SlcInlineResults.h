#pragma once

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "frontend/SlcDetailNode.h"
#include "semantics/SlcCallPlace.h"
#include "support/SlcCollectable.h"

/// Bounds the evaluations of one compile that cannot be shared, so that functions which call each
/// other twice, and so on, end in a report and not in a hang.
class SlcInlineBudget : public SlcCollectable {
public:
    /// Counts an evaluation. False from the one on that is too many.
    [[nodiscard]] bool Take() { return ++m_taken <= k_most; }
    /// True once: the report has still to be made.
    [[nodiscard]] bool IsFirstReport() { return !std::exchange(m_reported, true); }

private:
    static constexpr int k_most = 1'000'000;  // a shader that large cannot be expanded

    int m_taken = 0;
    bool m_reported = false;
};

/// The results so far of evaluating the body of one function for its calls. Calls in the same
/// circumstances share one evaluation; otherwise a chain of functions that call each other twice
/// would be evaluated as often as its expansion is long.
class SlcInlineResults {
public:
    /// The inputs of an evaluation, as a short text that is only compared.
    class Circumstances {
    public:
        /// `isQuiet`: what it would report is still to be reported.
        Circumstances(const SlcCallPlace& place, bool isQuiet);
        /// In the order of the formals.
        void AddArgument(const SlcDetailNode* detail) { Add(detail); }
        [[nodiscard]] const std::string& Key() const { return m_key; }

    private:
        void Add(const SlcDetailNode* detail);

        std::string m_key;
    };

    struct Result {
        SlcDetailNode* detail = nullptr;      // null: a light statement would be nested
        std::vector<SlcDetailNode*> formals;  // their inline details at the end
    };

    /// Null if the body has not been evaluated in these circumstances. Good until the next `Keep`.
    [[nodiscard]] const Result* Find(const Circumstances& circumstances) const;
    /// Takes the place of what is known of them.
    const Result& Keep(const Circumstances& circumstances, Result result);

private:
    std::unordered_map<std::string, Result> m_results;
};

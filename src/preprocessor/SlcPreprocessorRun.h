#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>

#include "preprocessor/SlcPreprocessorReport.h"
#include "preprocessor/SlcPreprocessorTrace.h"
#include "preprocessor/SlcSourceToken.h"

/// A fault after which preprocessing cannot continue. Thrown by value after the report, and caught
/// in SlcPreprocessor.cpp.
class SlcPreprocessorStop {};

/// The state shared by the parts of the preprocessor during one run: the reports, the trace, the
/// generated texts, and the limit on the work.
class SlcPreprocessorRun {
public:
    /// Completes a report with the place of `token` and passes it to the user of the preprocessor.
    using Reporter = std::function<void(const SlcSourceToken& token, SlcPreprocessorReport report)>;

    /// `trace` may be null.
    SlcPreprocessorRun(Reporter reporter, SlcPreprocessorTrace* trace)
        : m_reporter(std::move(reporter)),
          m_trace(trace)
    {
    }

    /// Null if nothing is recorded.
    [[nodiscard]] SlcPreprocessorTrace* Trace() const { return m_trace; }

    /// Reports an error at `token`.
    void Error(const SlcSourceToken& token, std::string text);
    /// Reports a warning at `token`, shown at warning level `level` and above.
    void Warning(const SlcSourceToken& token, int level, std::string text);
    /// Reports an error and throws `SlcPreprocessorStop`.
    [[noreturn]] void Stop(const SlcSourceToken& token, std::string text);
    /// False once an error has been reported.
    [[nodiscard]] bool IsGood() const { return m_isGood; }

    /// Stores a text until the end of the run and returns it. A line break and a zero byte follow
    /// the returned text, so that a lexer can read it.
    [[nodiscard]] std::string_view Keep(std::string text);

    /// Allows work in proportion to the size of a source: macros and includes can generate endless
    /// text from a few lines, and the whole run must be linear in its input.
    void AllowFor(std::size_t characters) { m_allowed += k_workPerCharacter * characters; }
    /// Counts `work`, and stops with the report `text` at `token` if the sum exceeds the limit.
    void Spend(std::size_t work, const SlcSourceToken& token, std::string_view text);

private:
    static constexpr std::size_t k_workOfAnySource = std::size_t{1} << 24;
    static constexpr std::size_t k_workPerCharacter = 64;

    void Report(const SlcSourceToken& token, SlcPreprocessorReport report);

    // Each report holds a source line and its chain of includes, so an unlimited number of reports
    // could need quadratic memory.
    static constexpr int k_mostReports = 1001;  // one more than are shown

    Reporter m_reporter;
    SlcPreprocessorTrace* m_trace;
    int m_reports = 0;
    std::deque<std::string> m_texts;
    std::size_t m_allowed = k_workOfAnySource;
    bool m_isGood = true;
};

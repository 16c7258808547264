#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>

#include "preprocessor/SlcPreprocessorReport.h"
#include "preprocessor/SlcPreprocessorTrace.h"
#include "preprocessor/SlcSourceToken.h"

/// A fault after which the preprocessor does not go on. Thrown by value, after the report, and
/// caught by `SlcPreprocessor`.
class SlcPreprocessorStop {};

/// The state that the parts of the preprocessor share during one run: the reports, the texts that
/// are made, and the limit on the work.
class SlcPreprocessorRun {
public:
    /// Completes a report with the place of `token` and gives it to the user.
    using Reporter = std::function<void(const SlcSourceToken& token, SlcPreprocessorReport report)>;

    /// `trace` may be null.
    SlcPreprocessorRun(Reporter reporter, SlcPreprocessorTrace* trace)
        : m_reporter(std::move(reporter)),
          m_trace(trace)
    {
    }

    /// Null if nothing is recorded.
    [[nodiscard]] SlcPreprocessorTrace* Trace() const { return m_trace; }

    void Error(const SlcSourceToken& token, std::string text);
    /// Shown from the warning level `level` on.
    void Warning(const SlcSourceToken& token, int level, std::string text);
    /// Reports an error and throws `SlcPreprocessorStop`.
    [[noreturn]] void Stop(const SlcSourceToken& token, std::string text);
    /// False once an error has been reported.
    [[nodiscard]] bool IsGood() const { return m_isGood; }

    /// Keeps a text to the end of the run, with a line break and a zero byte after it, so that a
    /// lexer can read it.
    [[nodiscard]] std::string_view Keep(std::string text);

    /// So much source allows so much work: macros and includes can make endless text of a few
    /// lines, and the whole run must be linear in what is read.
    void AllowFor(std::size_t characters) { m_allowed += k_workPerCharacter * characters; }
    /// Stops with the report `text` if all that is allowed has been spent.
    void Spend(std::size_t work, const SlcSourceToken& token, std::string_view text);

private:
    static constexpr std::size_t k_workOfAnySource = std::size_t{1} << 24;
    static constexpr std::size_t k_workPerCharacter = 64;

    void Give(const SlcSourceToken& token, SlcPreprocessorReport report);

    // Each carries a source line and the way to its file, so that more would cost their square.
    static constexpr int k_mostReports = 1001;  // one more than are shown

    Reporter m_reporter;
    SlcPreprocessorTrace* m_trace;
    int m_reports = 0;
    std::deque<std::string> m_texts;
    std::size_t m_allowed = k_workOfAnySource;
    bool m_isGood = true;
};

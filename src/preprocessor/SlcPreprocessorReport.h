#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A fault that the preprocessor finds in a source.
struct SlcPreprocessorReport {
    /// An `#include` through which the file at fault was read.
    struct Includer {
        std::string file;
        int line = 0;
        bool operator==(const Includer&) const = default;
    };

    bool isError = true;
    int level = 0;  // for a warning: the lowest warning level that shows it
    std::string file;
    int line = 0;
    int column = 0;  // in bytes, from 1; 0 if the source itself cannot be read
    int length = 1;  // of the range at fault, in bytes
    std::string text;
    std::string sourceLine;           // its beginning if it is long; empty if unknown
    std::vector<Includer> includers;  // innermost first
};

/// Formats the report like those of the scanner: place and text, the source line, and a caret below
/// the place. Without a file, only the text.
[[nodiscard]] std::string SlcReportText(const SlcPreprocessorReport& report);

/// Formats the chain of includes that led to the file. In a cycle of includes, each `#include` is
/// named once. Empty for the source itself.
[[nodiscard]] std::string SlcIncludersText(const SlcPreprocessorReport& report);

/// Prints reports as they arrive. For consecutive reports with the same includers, these are
/// printed only once. After a thousand reports, prints a line that says that no more are shown.
class SlcReportPrinter {
public:
    /// Prints by `print`, once per report. Does not print warnings above the level.
    SlcReportPrinter(std::function<void(std::string_view)> print, int warningLevel)
        : m_print(std::move(print)),
          m_warningLevel(warningLevel)
    {
    }

    /// Prints the report, unless it is excluded by its level or the number of earlier reports.
    void Print(const SlcPreprocessorReport& report);

private:
    static constexpr int k_mostReports = 1000;

    std::function<void(std::string_view)> m_print;
    int m_warningLevel;
    int m_count = 0;
    std::string m_includers;  // text of the last report's includers
};

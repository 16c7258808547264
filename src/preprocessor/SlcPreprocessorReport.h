#pragma once

#include <ostream>
#include <string>
#include <vector>

/// A fault that the preprocessor finds in a source.
struct SlcPreprocessorReport {
    /// An `#include` that leads to the file at fault.
    struct Includer {
        std::string file;
        int line = 0;
        bool operator==(const Includer&) const = default;
    };

    bool isError = true;
    int level = 0;  // of a warning: the least warning level that shows it
    std::string file;
    int line = 0;
    int column = 0;  // in bytes, from 1
    int length = 1;  // of the place, in bytes
    std::string text;
    std::string sourceLine;           // of the file, or its beginning
    std::vector<Includer> includers;  // the innermost first
};

/// The report in the form of those of the scanner: place and text, the source line, and a caret
/// below the place.
[[nodiscard]] std::string SlcReportText(const SlcPreprocessorReport& report);

/// The lines that say how a file came to be read. Of files that include each other in a circle each
/// is named once. Empty for the source itself.
[[nodiscard]] std::string SlcIncludersText(const SlcPreprocessorReport& report);

/// Prints reports as they come. Includers are printed once for consecutive reports in one file, and
/// after a thousand reports of a source no more are shown.
class SlcReportPrinter {
public:
    /// Warnings above the level are left out.
    SlcReportPrinter(std::ostream& stream, int warningLevel)
        : m_stream(stream),
          m_warningLevel(warningLevel)
    {
    }

    void Print(const SlcPreprocessorReport& report);

private:
    static constexpr int k_mostReports = 1000;

    std::ostream& m_stream;
    int m_warningLevel;
    int m_count = 0;
    std::string m_includers;  // of the last report
};

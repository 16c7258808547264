// Prints reports in this form:
//
//     In file included from b.h:1,
//                      from a.sl:3:
//     c.h:4:10: ERROR: Cannot find the included file 'nowhere.h':
//
//              #include "nowhere.h"
//                       ^
//
// Tested by tests/preprocessor.

#include "preprocessor/SlcPreprocessorReport.h"

#include <algorithm>
#include <cstddef>
#include <utility>

std::string SlcReportText(const SlcPreprocessorReport& report)
{
    if (report.file.empty())  // the source itself cannot be read
        return (report.isError ? "ERROR: " : "WARNING: ") + report.text + "\n";
    const std::string place =
        report.file + ":" + std::to_string(report.line) + ":" + std::to_string(report.column) + ":";
    std::string text = place + (report.isError ? " ERROR: " : " WARNING: ") + report.text + ":\n\n";
    const std::string indent(place.size(), ' ');
    text += indent + report.sourceLine + "\n" + indent;
    // Repeat the tabs of the line, so that the caret is right for any tab width.
    const auto before = static_cast<std::size_t>(std::max(report.column - 1, 0));
    for (const char c : report.sourceLine.substr(0, before))
        text += c == '\t' ? '\t' : ' ';
    return text + "^\n";
}

std::string SlcIncludersText(const SlcPreprocessorReport& report)
{
    const auto& all = report.includers;
    std::string text;
    for (auto includer = all.begin(); includer != all.end(); ++includer) {
        if (std::find(all.begin(), includer, *includer) != includer)
            continue;
        text += text.empty() ? "In file included from " : ",\n                 from ";
        text += includer->file + ":" + std::to_string(includer->line);
    }
    return text.empty() ? text : text + ":\n";
}

void SlcReportPrinter::Print(const SlcPreprocessorReport& report)
{
    if (!report.isError && report.level > m_warningLevel)
        return;
    if (++m_count > k_mostReports) {
        if (m_count == k_mostReports + 1)
            m_print("More faults in the source are counted, not shown\n");
        return;
    }
    std::string includers = SlcIncludersText(report);
    // Print everything at once, so that lines of processes that share standard error do not mix.
    m_print((includers == m_includers ? std::string() : includers) + SlcReportText(report));
    m_includers = std::move(includers);
}

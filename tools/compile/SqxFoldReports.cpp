// Tested by tests/make/run.sh.

#include "compile/SqxFoldReports.h"

#include <map>
#include <sstream>
#include <string_view>
#include <vector>

namespace {

/// Returns the text of a report on an uninitialized variable, without its place; empty for any
/// other line.
[[nodiscard]] std::string_view UninitializedVariable(std::string_view line)
{
    const std::size_t start = line.find(": WARNING: Variable '");
    const bool isOne = start != std::string_view::npos && (line.ends_with("not be initialized") ||
                                                           line.ends_with("is not initialized"));
    return isOne ? line.substr(start) : std::string_view();
}

}  // namespace

std::string SqxFoldReports(const std::string& messages)
{
    struct Report {
        std::string text;
        int repetitions = 0;
    };
    std::vector<Report> reports;
    std::map<std::string, std::size_t, std::less<>> known;  // index in `reports`
    std::istringstream lines(messages);
    for (std::string line; std::getline(lines, line);) {
        if (line.find(": In function ") != std::string::npos)
            known.clear();
        const std::string_view variable = UninitializedVariable(line);
        if (const auto found = known.find(variable); found != known.end()) {
            ++reports[found->second].repetitions;
            continue;
        }
        if (!variable.empty())
            known.emplace(variable, reports.size());
        reports.push_back({line});
    }
    std::string folded;
    for (const auto& [text, repetitions] : reports) {
        folded += text;
        if (repetitions > 0)
            folded += " (and " + std::to_string(repetitions) +
                      (repetitions == 1 ? " time" : " times") + " after this)";
        folded += '\n';
    }
    return folded;
}

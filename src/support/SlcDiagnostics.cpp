// Reports that need no syntax tree, and the counters of all reports. Each report is composed first
// and written at once, so that lines of several processes that share standard error do not mix.
//
//     a.sl:3: ERROR: parse error:
//
//            float x = = 1;        the line as read
//                      ^           below the token, after blanks and the line's own tabs
//
// Two errors at one token are one fault: during error recovery the parser may reject the same token
// again.
//
// Tested by tests/support/SlcDiagnosticsTest.cpp.

#include "support/SlcDiagnostics.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <utility>

#include "support/SlcCompilation.h"
#include "support/SlcSourcePosition.h"

namespace {

// Each report repeats a source line, so without a limit the output for a file of garbage would be
// many times its size.
constexpr int k_maxSourceReports = 1000;

constexpr std::size_t k_nowhere = std::numeric_limits<std::size_t>::max();

struct Counters {
    int errors = 0;
    int warnings = 0;
    int warningLevel = 1;
    bool alwaysAdvises = false;
    bool endsByException = false;
    int sourceReports = 0;              // reports with a source line, also those not shown
    std::size_t lastError = k_nowhere;  // offset of the last error of scanner or parser
};

Counters& State()
{
    return SlcPartOfCompilation<Counters>();
}

struct ReportsSoFar {
    std::vector<SlcReport> reports;
};

struct ColumnsOfText {
    std::function<int(std::size_t, int)> ofPlace;
    std::function<SlcColumns(std::size_t, std::size_t, int)> ofRange;
};

/// Returns the column of the scanner's last token, from 0.
int TokenColumn(const SlcSourcePosition& position)
{
    return std::max(position.column - (position.isUncounted ? 0 : position.tokenLength), 0);
}

/// Records a report at the scanner's last token.
void RecordAtSource(bool isError, std::string_view text)
{
    const SlcSourcePosition& position = SlcCurrentPosition();
    SlcReport report;
    report.isError = isError;
    report.level = isError ? 0 : 1;
    report.file = position.file ? *position.file : std::string();
    report.line = position.line;
    report.length = std::max(position.tokenLength, 1);
    report.column = TokenColumn(position) + 1;
    const std::size_t end = std::max<std::size_t>(position.taken, 1);
    const auto& columnOf = SlcPartOfCompilation<ColumnsOfText>().ofPlace;
    if (columnOf)
        report.column =
            columnOf(end - std::min(end, static_cast<std::size_t>(report.length)), report.column);
    report.text = text;
    RecordReport(std::move(report));
}

struct ReportText {
    std::string* text = nullptr;  // null for standard error
};

/// Returns `file:line:` for the scanner's position.
std::string Place(const SlcSourcePosition& position)
{
    return (position.file ? *position.file : std::string()) + ":" + std::to_string(position.line) +
           ":";
}

/// Records the report, and prints its place and message, the source line and a caret under the last
/// token. Blanks and the line's own tabs precede the caret, so that it is in the right column for
/// any tab width. After the limit prints only, once, that reports are not shown.
void ReportAtSource(std::string_view kind, std::string_view message)
{
    if (++State().sourceReports > k_maxSourceReports) {
        if (State().sourceReports == k_maxSourceReports + 1)
            PrintReport("More faults in the source are counted, not shown\n");
        return;
    }
    const SlcSourcePosition& position = SlcCurrentPosition();
    RecordAtSource(kind == "ERROR", message);
    const std::string place = Place(position);
    const std::string indent(place.size(), ' ');
    const auto offset = static_cast<std::size_t>(TokenColumn(position));

    std::string report = place;
    report.append(" ").append(kind).append(": ").append(message).append(":\n\n");
    report.append(indent).append(position.currentLine).append("\n");
    report.append(indent).append(position.filler, 0, offset);
    report.append("^\n");
    PrintReport(report);
}

}  // namespace

SlcEndsByException::SlcEndsByException() : m_before(std::exchange(State().endsByException, true)) {}

SlcEndsByException::~SlcEndsByException()
{
    State().endsByException = m_before;
}

void EndCompilation(int status)
{
    if (State().endsByException)
        throw SlcCompilationEnd{status};
    std::exit(status);
}

void PrintReport(std::string_view text)
{
    if (std::string* const reports = SlcPartOfCompilation<ReportText>().text)
        *reports += text;
    else
        std::fwrite(text.data(), 1, text.size(), stderr);
}

void SetReports(std::string& text)
{
    SlcPartOfCompilation<ReportText>().text = &text;
}

const std::vector<SlcReport>& SlcReportsSoFar()
{
    return SlcPartOfCompilation<ReportsSoFar>().reports;
}

void RecordReport(SlcReport report)
{
    SlcPartOfCompilation<ReportsSoFar>().reports.push_back(std::move(report));
}

void RecordAdvice(std::string_view text)
{
    auto& reports = SlcPartOfCompilation<ReportsSoFar>().reports;
    if (reports.empty())
        return;
    std::string& advice = reports.back().advice;
    advice.append(advice.empty() ? "" : "\n").append(text);
}

void SetColumnsOfText(
    std::function<int(std::size_t offset, int column)> ofPlace,
    std::function<SlcColumns(std::size_t begin, std::size_t end, int line)> ofRange)
{
    SlcPartOfCompilation<ColumnsOfText>() = {std::move(ofPlace), std::move(ofRange)};
}

SlcColumns SlcColumnsOfRange(std::size_t begin, std::size_t end, int line)
{
    const auto& ofRange = SlcPartOfCompilation<ColumnsOfText>().ofRange;
    return ofRange ? ofRange(begin, end, line) : SlcColumns();
}

void ResetNbErrorsAndWarnings()
{
    State().errors = 0;
    State().warnings = 0;
    State().sourceReports = 0;
    State().lastError = k_nowhere;
}

void AddError()
{
    ++State().errors;
}

void AddWarning()
{
    ++State().warnings;
}

int NbErrors()
{
    return State().errors;
}

int NbWarnings()
{
    return State().warnings;
}

void SetWarningLevel(int level)
{
    if (level >= 0 && level <= 2)
        State().warningLevel = level;
}

int WarningLevel()
{
    return State().warningLevel;
}

void ShowAdvice(bool always)
{
    State().alwaysAdvises = always;
}

bool AdviceIsShown()
{
    return State().alwaysAdvises || State().warningLevel >= 2;
}

std::string_view SlcContactAddress()
{
    return SLC_CONTACT_ADDRESS;
}

void yyerror(const char* message)
{
    // Errors are compared by offset: adjacent invalid characters have the same column, which does
    // not count them. The end of the source has no characters, so one is added to distinguish
    // it from the token right before it.
    const std::size_t place = SlcCurrentPosition().taken + (SlcCurrentPosition().isAtEnd ? 1 : 0);
    if (std::exchange(State().lastError, place) == place)
        return;
    AddError();
    ReportAtSource("ERROR", message);
}

void Warning(std::string_view message)
{
    if (WarningLevel() == 0)
        return;
    AddWarning();
    ReportAtSource("WARNING", message);
}

void Advise(std::string_view text)
{
    if (!AdviceIsShown() || State().sourceReports > k_maxSourceReports)
        return;
    RecordAdvice(text);
    PrintReport(Place(SlcCurrentPosition()).append(" ADVICE: ").append(text).append("\n\n"));
}

void Warning(std::string_view message, std::string_view detail)
{
    if (WarningLevel() == 0)
        return;
    AddWarning();
    RecordAtSource(false, std::string(message).append(" -- ").append(detail));
    std::string report = Place(SlcCurrentPosition());
    report.append(" WARNING: ").append(message).append(" -- ").append(detail).append("\n\n");
    PrintReport(report);
}

void WarningNoSource(std::string_view message)
{
    if (WarningLevel() == 0)
        return;
    RecordReport({false, 1, "", 0, 0, 0, std::string(message), ""});
    PrintReport("WARNING : " + std::string(message) + "\n");
}

void SeverError(std::string_view program, std::string_view message)
{
    AddError();
    PrintReport(std::string(program).append(": ERROR: ").append(message).append("\n"));
}

void SevereWarning(std::string_view program, std::string_view message)
{
    PrintReport(std::string(program).append(": WARNING: ").append(message).append("\n"));
}

void FatalError(std::string_view message)
{
    AddError();
    RecordReport({true, 0, "", 0, 0, 0, std::string(message), ""});
    std::string report = "FATAL ERROR: ";
    report.append(message).append("\n***** Please contact '");
    report.append(SlcContactAddress()).append("' !!!\n");
    PrintReport(report);
    EndCompilation(1);
}

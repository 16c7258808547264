#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

/// Counters and reports that need no syntax tree. They are those of the compilation that the
/// calling thread is in; all text goes to standard error, unless the compilation has a stream of
/// its own.

/// A stage counted errors in the source; the driver prints the summary. Thrown by value.
class SlcCompilationError {};
/// A compile never started and the thrower has reported why. Thrown by value.
class SlcCompilationSevereError {};

/// A fatal report has been made, and the compile cannot go on. Thrown by value; what catches it
/// ends the program with this status.
struct SlcCompilationEnd {
    int status = 1;
};

/// While it lives, `EndCompilation` throws.
class SlcEndsByException {
public:
    SlcEndsByException();
    ~SlcEndsByException();
    SlcEndsByException(const SlcEndsByException&) = delete;
    SlcEndsByException& operator=(const SlcEndsByException&) = delete;

private:
    bool m_before;
};

/// Ends the compile after a fatal report: by `SlcCompilationEnd` if something waits for that, or
/// else with the process.
[[noreturn]] void EndCompilation(int status);

/// Where reports go.
[[nodiscard]] std::ostream& SlcReports();
/// The stream must outlive the compilation.
void SetReports(std::ostream& stream);

/// A report as data.
struct SlcReport {
    bool isError = true;
    int level = 0;  // of a warning: the least warning level that shows it
    std::string file;
    int line = 0;
    int column = 0;  // in the file, from 1; 0 if it is not known
    int length = 0;
    std::string text;
    std::string advice;  // lines
};
/// Those of the compilation that were shown, in their order.
[[nodiscard]] const std::vector<SlcReport>& SlcReportsSoFar();
/// Adds one; the reports below do it by themselves.
void RecordReport(SlcReport report);
/// Adds a line of advice to the last report; likewise.
void RecordAdvice(std::string_view text);

/// A piece of a line of a file. Zeros if it is not known.
struct SlcColumns {
    int column = 0;  // from 1
    int length = 0;
};
/// Sets how columns are found: of a place of the scanned text, for its column there, and of a range
/// of it, for the line that a report names. Without it the former is the same, and no range has a
/// column.
void SetColumnsOfText(
    std::function<int(std::size_t offset, int column)> ofPlace,
    std::function<SlcColumns(std::size_t begin, std::size_t end, int line)> ofRange);
/// Of a range of the scanned text, which a report places on that line.
[[nodiscard]] SlcColumns SlcColumnsOfRange(std::size_t begin, std::size_t end, int line);

/// What the driver reported before the parse is not part of the compile's counts.
void ResetNbErrorsAndWarnings();
/// Counts one; the reports below do it by themselves.
void AddError();
void AddWarning();
/// Of this compile, so far.
[[nodiscard]] int NbErrors();
[[nodiscard]] int NbWarnings();

/// 0 none, 1 important ones, 2 all. Other values are ignored.
void SetWarningLevel(int level);
[[nodiscard]] int WarningLevel();

/// Advice is shown at warning level 2, and at any level once this has been called with true.
void ShowAdvice(bool always);
[[nodiscard]] bool AdviceIsShown();

/// The address that fatal reports name.
[[nodiscard]] std::string_view SlcContactAddress();

/// Report at the scanner's position, with the source line and a caret under the last token.
/// Counts an error. The name is the one that the generated parser calls. Only the first 1000
/// reports of this form in a parse, errors and warnings together, are shown. A second error at one
/// token follows from the first: it is neither shown nor counted.
void yyerror(const char* message);
/// The same for a warning; silent, and not counted, at warning level 0.
void Warning(std::string_view message);
/// A line of advice below a report at the scanner's position: `file:line: ADVICE: text`. Never
/// counted.
void Advise(std::string_view text);
/// `file:line: WARNING: message -- detail` at the scanner's position, without the source line.
void Warning(std::string_view message, std::string_view detail);
/// A warning without a position, which is not counted.
void WarningNoSource(std::string_view message);
/// An error that belongs to no source line; the caller goes on.
void SeverError(std::string_view program, std::string_view message);
/// A warning of the program itself: always printed, never counted.
void SevereWarning(std::string_view program, std::string_view message);
/// A fault of the compiler: prints the message and the contact address, ends with status 1.
[[noreturn]] void FatalError(std::string_view message);

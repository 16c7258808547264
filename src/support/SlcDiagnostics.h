#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// Counters and reports that need no syntax tree. They belong to the current compilation of the
// calling thread. All text goes to standard error, unless the compilation collects it.

/// Ends a stage that has reported and counted errors. Thrown by value.
class SlcCompilationError {};
/// The source could not be read or preprocessed, and the reason has been reported. Thrown by value.
class SlcCompilationSevereError {};

/// A fatal report has been made, and the compilation cannot continue. Thrown by value. The driver
/// ends the program with this status; the compiler library derives the kind of failure from it.
struct SlcCompilationEnd {
    int status = 1;  // 2 if a token or a line is too long
};

/// While an object of this class exists, `EndCompilation` throws in the compilation that was
/// current when the object was made.
class SlcEndsByException {
public:
    SlcEndsByException();
    ~SlcEndsByException();
    SlcEndsByException(const SlcEndsByException&) = delete;
    SlcEndsByException& operator=(const SlcEndsByException&) = delete;

private:
    bool m_before;
};

/// Ends the compilation after a fatal report: throws `SlcCompilationEnd` if a `SlcEndsByException`
/// exists, otherwise ends the process.
[[noreturn]] void EndCompilation(int status);

/// Prints the text of reports at once.
void PrintReport(std::string_view text);
/// Collects the text of reports in `text`, which must outlive the compilation.
void SetReports(std::string& text);

/// A report as data.
struct SlcReport {
    bool isError = true;
    int level = 0;  // for a warning: the lowest warning level that shows it
    std::string file;
    int line = 0;
    int column = 0;  // in the file, from 1; 0 if unknown
    int length = 0;  // 0 if unknown
    std::string text;
    std::string advice;  // lines with "\n" between them
};
/// Returns the reports that `RecordReport` has added, in order.
[[nodiscard]] const std::vector<SlcReport>& SlcReportsSoFar();
/// Adds a report. `yyerror`, both forms of `Warning`, `WarningNoSource` and `FatalError` do this
/// for the reports that they print.
void RecordReport(SlcReport report);
/// Adds a line of advice to the last report, if there is one. `Advise` does this itself.
void RecordAdvice(std::string_view text);

/// A range of columns within one line of a file. Both members are 0 if the range is unknown.
struct SlcColumns {
    int column = 0;  // from 1
    int length = 0;
};
/// Sets how columns in the file are found. `ofPlace` maps an offset in the scanned text, given with
/// its column there, to a column. `ofRange` maps a range of the scanned text, reported for `line`,
/// to its columns. By default columns are those of the scanned text, and ranges have none.
void SetColumnsOfText(
    std::function<int(std::size_t offset, int column)> ofPlace,
    std::function<SlcColumns(std::size_t begin, std::size_t end, int line)> ofRange);
/// Returns the columns of a range of the scanned text that is reported for `line`.
[[nodiscard]] SlcColumns SlcColumnsOfRange(std::size_t begin, std::size_t end, int line);

/// Resets the counts before a parse, since earlier reports do not count. Also resets the limit of
/// `yyerror`, and forgets the token of its last error.
void ResetNbErrorsAndWarnings();
/// Count an error or a warning. A report function below counts its report unless it says otherwise.
void AddError();
void AddWarning();
/// Return the counts of this compilation since the last reset.
[[nodiscard]] int NbErrors();
[[nodiscard]] int NbWarnings();

/// Sets the level, 1 by default: 0 shows no warnings, 1 the important ones, 2 all. Other values are
/// ignored.
void SetWarningLevel(int level);
[[nodiscard]] int WarningLevel();

/// Shows advice at every warning level if `always` is true, otherwise, by default, only at level 2.
void ShowAdvice(bool always);
[[nodiscard]] bool AdviceIsShown();

/// Returns the contact address for fatal reports and reports of crashes.
[[nodiscard]] std::string_view SlcContactAddress();

/// Reports an error at the scanner's position, with the source line and a caret under the last
/// token, and counts it. The scanner and the grammar call it; its name is the one that generated
/// parsers call. Only the first 1000 reports of this form in a parse, errors and warnings together,
/// are shown, and then a line that says so. A second error at the same token follows from the
/// first: it is neither shown nor counted.
void yyerror(const char* message);
/// Reports a warning in the same form; silent, and not counted, at warning level 0.
void Warning(std::string_view message);
/// Adds a line of advice to the last report: `file:line: ADVICE: text`, with the scanner's
/// position. Silent unless advice is shown, and after the limit of `yyerror`; never counted.
void Advise(std::string_view text);
/// Reports `file:line: WARNING: message -- detail` at the scanner's position, without the source
/// line; silent, and not counted, at warning level 0.
void Warning(std::string_view message, std::string_view detail);
/// Reports a warning without a position; silent at warning level 0, and never counted.
void WarningNoSource(std::string_view message);
/// Reports and counts an error that does not belong to a source line; the caller continues.
void SeverError(std::string_view program, std::string_view message);
/// Reports a warning about the program run itself: always printed, never counted.
void SevereWarning(std::string_view program, std::string_view message);
/// Reports and counts a fault of the compiler: prints the message and the contact address, and
/// calls `EndCompilation` with status 1.
[[noreturn]] void FatalError(std::string_view message);

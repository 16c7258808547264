// Reports at nodes of the tree. The heading that names a function is printed before the first
// report in it. After an inner function with reports, the heading of the outer function is printed
// again before its next report (ResumeFunc). In quiet mode, for example while a loop is walked
// repeatedly only to compute details, errors, warnings and advice are neither printed nor counted.
//
// Tested by tests/support/SlcSemanticErrorTest.cpp.

#include "support/reports/SlcSemanticError.h"

#include <cstdlib>
#include <string>

#include "frontend/SlcLexicalNode.h"
#include "support/SlcDiagnostics.h"
#include "support/reports/SlcNearError.h"

namespace {

constexpr std::string_view k_advice = "ADVICE";

/// Records a report as data. Advice is added to the preceding report.
void Record(const SlcSemanticError::Place& place, std::string_view kind, std::string_view text,
            int level)
{
    if (kind == k_advice)
        return RecordAdvice(text);
    const SlcColumns columns = SlcColumnsOfRange(place.range.begin, place.range.end, place.line);
    RecordReport({kind != "WARNING", level, std::string(place.file), place.line, columns.column,
                  columns.length, std::string(text), ""});
}

/// Records and prints a report; if `node` is null, only its text, without the position and `kind`.
void Print(const SlcSyntaxNode* node, std::string_view kind, std::string text, int level = 0)
{
    if (node)
        return SlcSemanticError::PrintAt({*node->GetFileParsed(), node->GetNoLine(), node->Range()},
                                         kind, text, level);
    Record({}, kind, text, level);
    PrintReport(text.append("\n"));
}

std::string WithDetail(std::string_view message, std::string_view detail)
{
    return std::string(message).append(": ").append(detail);
}

}  // namespace

void SlcSemanticError::PrintAt(const Place& place, std::string_view kind, std::string_view text,
                               int level)
{
    Record(place, kind, text, level);
    std::string report(place.file);
    report.append(":").append(std::to_string(place.line)).append(": ").append(kind).append(": ");
    PrintReport(report.append(text).append("\n"));
}

SlcSemanticError::QuietAfterError::QuietAfterError(SlcSemanticError& errors, int before)
{
    if (NbErrors() != before)
        m_quiet.emplace(errors);
}

void SlcSemanticError::SetFuncName(const SlcIdentNode* function, const std::string* file)
{
    m_heading = {function, file, false};
}

void SlcSemanticError::ResumeFunc(Heading outer)
{
    outer.isPrinted = outer.isPrinted && !m_heading.isPrinted;
    m_heading = outer;
}

void SlcSemanticError::Error(const SlcSyntaxNode* node, std::string_view message)
{
    if (IsQuiet())
        return;
    CountError();
    PrintHeading();
    Print(node, "ERROR", std::string(message));
}

void SlcSemanticError::Error(const SlcSyntaxNode* node, std::string_view message,
                             std::string_view detail)
{
    if (IsQuiet())
        return;
    CountError();
    PrintHeading();
    Print(node, "ERROR", WithDetail(message, detail));
}

void SlcSemanticError::Error(const SlcSyntaxNode* node, std::string_view message,
                             SlcSyntaxNode* nearby)
{
    if (IsQuiet())
        return;
    std::string text(message);
    if (node && nearby)
        text.append(" (near '").append(SlcNearError()(nearby)).append("')");
    CountError();
    PrintHeading();
    Print(node, "ERROR", std::move(text));
}

void SlcSemanticError::Warning(const SlcSyntaxNode* node, std::string_view message, int level)
{
    if (IsQuiet() || WarningLevel() < level)
        return;
    AddWarning();
    PrintHeading();
    Print(node, "WARNING", std::string(message), level);
}

void SlcSemanticError::Warning(const SlcSyntaxNode* node, std::string_view message,
                               std::string_view detail, int level)
{
    if (IsQuiet() || WarningLevel() < level)
        return;
    AddWarning();
    PrintHeading();
    Print(node, "WARNING", WithDetail(message, detail), level);
}

void SlcSemanticError::Advise(const SlcSyntaxNode* node, std::string_view text)
{
    if (!IsQuiet() && AdviceIsShown())
        Print(node, k_advice, std::string(text));
}

void SlcSemanticError::FatalError(const SlcSyntaxNode* node, std::string_view message)
{
    CountError();
    PrintHeading();
    Print(node, "FATAL ERROR", std::string(message));
    PrintReport(std::string("***** Please contact '").append(SlcContactAddress()).append("' !\n"));
    EndCompilation(1);
}

void SlcSemanticError::FatalError(std::string_view message)
{
    ::FatalError(message);
}

void SlcSemanticError::CountError()
{
    m_noError = false;
    AddError();
}

void SlcSemanticError::PrintHeading()
{
    if (m_heading.isPrinted || !m_heading.function || !m_heading.file)
        return;
    m_heading.isPrinted = true;
    PrintReport(*m_heading.file + ": In function " + m_heading.function->GetName() + "\n");
}

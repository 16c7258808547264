// The compiler reports an unclosed quote and reads on after it, so the intended string is read as
// code up to the end of its line:
//
//     printf ("gain %f\n, Kd);         reports at '"', '%', 'f' and '\'
//
// If other strings follow, the first quote of the next one closes the open string. From there on
// the intended strings are read as code and the code as strings, and the last quote of the file is
// the unclosed one. The first string that crosses the end of a line is therefore taken as the
// error.
//
// Tested by tests/sqxls/SqxLsDiagnosticsTest.cpp.

#include "sqxls/SqxLsOpenStrings.h"

#include <algorithm>
#include <optional>

#include "sqxls/SqxLsTokens.h"
#include "sqxls/SqxLsWorkspace.h"

namespace {

/// The text of the report about a character that begins no token.
constexpr std::string_view k_refused = "Invalid charcacter";

/// The part of the source that the compiler reads as code instead of a string, or the reverse.
struct Misread {
    SqxLsSpan text;
    std::size_t quote = 0;  // offset of the quote that is taken as unclosed
    std::size_t next = 0;   // offset of the next token, where the parser may report an error
};

std::optional<Misread> MisreadPart(const SqxLsText& text)
{
    const std::string& bytes = text.Bytes();
    const std::vector<SqxLsToken> tokens = SqxLsTokensOf(bytes);
    if (tokens.empty() || tokens.back().kind != SqxLsToken::Kind::Broken ||
        tokens.back().text.front() != '"')
        return std::nullopt;
    for (const SqxLsToken& token : tokens)
        if (token.kind == SqxLsToken::Kind::Text && token.text.find('\n') != std::string_view::npos)
            return Misread{{text.LineAround(token.span.begin).begin, bytes.size() + 1},
                           token.span.begin,
                           bytes.size()};
    const std::size_t quote = tokens.back().span.begin;
    const std::size_t end = text.LineAround(quote).end;
    return Misread{{quote, end}, quote, bytes.find_first_not_of(" \t\r\n", end)};
}

}  // namespace

void SqxLsKeepOneOfOpenString(std::vector<QxCompileReport>& reports, const std::string& path,
                              const SqxLsText& text)
{
    const bool isRefused = std::any_of(reports.begin(), reports.end(),
                                       [](const auto& report) { return report.text == k_refused; });
    const std::optional<Misread> misread = isRefused ? MisreadPart(text) : std::nullopt;
    if (!misread)
        return;
    const auto follows = [&](const QxCompileReport& report) {
        if (SqxLsNormalPath(report.file) != path)
            return false;
        const std::size_t at = text.OffsetOf(SqxLsPlace{report.line, report.column});
        const bool isOfParser = report.text == "parse error" || report.text == "';' expected";
        return (misread->text.begin <= at && at < misread->text.end) ||
               (isOfParser && at == misread->next);
    };
    const auto kept = std::find_if(reports.begin(), reports.end(), [&](const auto& report) {
        return report.text == k_refused && follows(report);
    });
    if (kept == reports.end())
        return;
    QxCompileReport one = *kept;
    const SqxLsPlace place = text.PlaceOf(misread->quote);
    one.line = place.line;
    one.column = place.column;
    one.length = static_cast<int>(text.LineAround(misread->quote).end - misread->quote);
    one.advice = "the string that begins here has no end";
    const auto first = std::find_if(reports.begin(), reports.end(), follows);
    *first = one;
    reports.erase(std::remove_if(first + 1, reports.end(), follows), reports.end());
}

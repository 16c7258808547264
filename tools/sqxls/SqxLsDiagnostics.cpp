// Tested by tests/sqxls/SqxLsDiagnosticsTest.cpp.

#include "sqxls/SqxLsDiagnostics.h"

#include <algorithm>
#include <set>
#include <utility>

#include "sqxls/SqxLsUri.h"

namespace {

enum class Severity { Error = 1, Warning = 2 };

/// The compiler reports this where it resumes after an error; it is not an error itself. It is
/// added to the error before it, if the editor shows related information.
constexpr std::string_view k_resumes = "Compilation resumes here";

SqxLsSpan SpanOf(const QxCompileReport& report, const SqxLsText& text)
{
    const std::size_t begin = text.OffsetOf(SqxLsPlace{report.line, report.column});
    if (report.column < 1)
        return text.LineAround(begin);
    const std::size_t size = text.Bytes().size();
    const auto length = static_cast<std::size_t>(std::max(report.length, 0));
    const SqxLsSpan span{begin, std::min(begin + length, size)};
    if (length > 0)
        return span;
    const SqxLsSpan word = text.WordAt(begin);
    if (word.end > begin)
        return {begin, word.end};
    return {begin, std::min(begin + 1, std::max(text.LineAround(begin).end, begin))};
}

SqxJson Related(const SqxLsText& text, const std::string& path, const SqxLsSpan& span,
                const std::string& message)
{
    return {{"location", {{"uri", SqxLsUriOf(path)}, {"range", SqxLsWriteRange(text, span)}}},
            {"message", message}};
}

SqxJson DiagnosticOf(const QxCompileReport& report, const SqxLsReportPlace& place,
                     const SqxLsText& text, const SqxLsClient& client)
{
    const bool isError = report.severity == QxCompileReport::Severity::Error;
    SqxJson diagnostic = {
        {"range", SqxLsWriteRange(text, place.span)},
        {"severity", isError ? Severity::Error : Severity::Warning},
        {"source", "shaderqx"},
        {"message", report.text},
    };
    if (!isError)
        diagnostic["code"] = "w" + std::to_string(report.level);
    std::string& message = diagnostic["message"].get_ref<std::string&>();
    if (!place.isExact && !report.file.empty())
        message = report.file + ":" + std::to_string(report.line) + ": " + message;
    if (report.advice.empty())
        return diagnostic;
    if (client.showsRelatedInformation)
        diagnostic["relatedInformation"].push_back(
            Related(text, place.path, place.span, report.advice));
    else
        message += "; " + report.advice;
    return diagnostic;
}

}  // namespace

SqxLsReportPlace SqxLsPlaceOf(const QxCompileReport& report, const SqxLsAnalysis& analysis)
{
    const std::string path = SqxLsNormalPath(report.file);
    if (const SqxLsText* text = analysis.TextOf(path))
        return {path, SpanOf(report, *text), true};
    const SqxLsText* source = analysis.TextOf(analysis.path);
    return {analysis.path, source->LineAround(0), false};
}

std::map<std::string, SqxJson> SqxLsDiagnosticsOf(const SqxLsAnalysis& analysis,
                                                  const SqxLsClient& client)
{
    std::map<std::string, SqxJson> diagnostics;
    SqxJson* last = nullptr;
    for (const QxCompileReport& report : analysis.result.reports) {
        const SqxLsReportPlace place = SqxLsPlaceOf(report, analysis);
        const SqxLsText& text = *analysis.TextOf(place.path);
        if (report.text == k_resumes) {
            if (last && client.showsRelatedInformation)
                (*last)["relatedInformation"].push_back(
                    Related(text, place.path, place.span, report.text));
            continue;
        }
        SqxJson& list = diagnostics[place.path];
        list.push_back(DiagnosticOf(report, place, text, client));
        last = &list.back();
    }
    return diagnostics;
}

SqxJson SqxLsPublisher::MessageOf(const SqxLsWorkspace& workspace, const std::string& path) const
{
    SqxJson list = SqxJson::array();
    std::set<std::string> seen;
    for (const auto& [owner, files] : m_shown) {
        const auto found = files.find(path);
        if (found == files.end())
            continue;
        for (const SqxJson& diagnostic : found->second)
            if (seen.insert(diagnostic.dump(-1, ' ', false, SqxJson::error_handler_t::replace))
                    .second)
                list.push_back(diagnostic);
    }
    const SqxLsDocument* document = workspace.DocumentAt(path);
    SqxJson params = {{"uri", document ? document->uri : SqxLsUriOf(path)},
                      {"diagnostics", std::move(list)}};
    if (document)
        params["version"] = document->version;
    return {{"jsonrpc", "2.0"},
            {"method", "textDocument/publishDiagnostics"},
            {"params", std::move(params)}};
}

std::vector<SqxJson> SqxLsPublisher::Publish(const SqxLsWorkspace& workspace,
                                             const std::string& owner,
                                             std::map<std::string, SqxJson> diagnostics)
{
    std::set<std::string> paths;
    for (const auto& [path, list] : diagnostics)
        paths.insert(path);
    for (const auto& [path, list] : m_shown[owner])
        paths.insert(path);
    const auto document = workspace.DocumentAt(SqxLsPathOf(owner));
    if (document)
        paths.insert(document->path);
    if (diagnostics.empty() && !document)
        m_shown.erase(owner);
    else
        m_shown[owner] = std::move(diagnostics);
    std::vector<SqxJson> messages;
    messages.reserve(paths.size());
    for (const std::string& path : paths)
        messages.push_back(MessageOf(workspace, path));
    return messages;
}

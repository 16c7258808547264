#pragma once

#include <map>
#include <string>
#include <vector>

#include "sqxls/SqxLsClient.h"
#include "sqxls/SqxLsWorkspace.h"

/// The place of a report in an editor.
struct SqxLsReportPlace {
    std::string path;
    SqxLsSpan span;
    bool isExact = true;  // false if the compile has not read the file
};

/// Returns the place of a report; the first line of the source if its file has not been read.
[[nodiscard]] SqxLsReportPlace SqxLsPlaceOf(const QxCompileReport& report,
                                            const SqxLsAnalysis& analysis);

/// Returns the reports of a compile as diagnostics, by the path of the file that shows them.
[[nodiscard]] std::map<std::string, SqxJson> SqxLsDiagnosticsOf(const SqxLsAnalysis& analysis,
                                                                const SqxLsClient& client);

/// Records which diagnostics an editor shows. Those of an included file may come from several
/// sources.
class SqxLsPublisher {
public:
    /// Sets the diagnostics that the compile of the source `owner`, a URI, has for each file, and
    /// returns the messages that publish the changes. Files without diagnostics are cleared.
    [[nodiscard]] std::vector<SqxJson> Publish(const SqxLsWorkspace& workspace,
                                               const std::string& owner,
                                               std::map<std::string, SqxJson> diagnostics);

private:
    [[nodiscard]] SqxJson MessageOf(const SqxLsWorkspace& workspace, const std::string& path) const;

    std::map<std::string, std::map<std::string, SqxJson>> m_shown;  // by owner and path
};

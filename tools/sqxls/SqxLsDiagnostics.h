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
    bool isExact = true;  // false if the compile has not read the file, or none is named
};

/// Returns the place of a report; the first line of the source if the report names no file, or a
/// file that the compile has not read.
[[nodiscard]] SqxLsReportPlace SqxLsPlaceOf(const QxCompileReport& report,
                                            const SqxLsAnalysis& analysis);

/// Returns the reports of a compile as diagnostics, by the path of the file in which they are
/// shown.
[[nodiscard]] std::map<std::string, SqxJson> SqxLsDiagnosticsOf(const SqxLsAnalysis& analysis,
                                                                const SqxLsClient& client);

/// Records which diagnostics an editor shows. The compiles of several sources may report errors in
/// one included file.
class SqxLsPublisher {
public:
    /// Replaces the diagnostics from the compile of the source `owner`, a URI. Returns the messages
    /// for the editor, one per file: for the source, if it is open, and for each file in which that
    /// compile reports something or did so last time. A message contains the diagnostics of its
    /// file from all compiles.
    [[nodiscard]] std::vector<SqxJson> Publish(const SqxLsWorkspace& workspace,
                                               const std::string& owner,
                                               std::map<std::string, SqxJson> diagnostics);

private:
    [[nodiscard]] SqxJson MessageOf(const SqxLsWorkspace& workspace, const std::string& path) const;

    std::map<std::string, std::map<std::string, SqxJson>> m_shown;  // by owner, then by path
};

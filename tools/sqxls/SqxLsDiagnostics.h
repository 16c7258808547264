#pragma once

#include <map>
#include <string>
#include <vector>

#include "sqxls/SqxLsClient.h"
#include "sqxls/SqxLsWorkspace.h"

/// The place of a report, as far as an editor shows it.
struct SqxLsReportPlace {
    std::string path;
    SqxLsSpan span;
    bool isExact = true;  // false: the file is none that the compile has read
};

[[nodiscard]] SqxLsReportPlace SqxLsPlaceOf(const QxCompileReport& report,
                                            const SqxLsAnalysis& analysis);

/// The reports of a compile as diagnostics, by the path of the file that they stand in.
[[nodiscard]] std::map<std::string, SqxJson> SqxLsDiagnosticsOf(const SqxLsAnalysis& analysis,
                                                                const SqxLsClient& client);

/// Knows which diagnostics an editor shows. Those of an included file come from every source that
/// includes it.
class SqxLsPublisher {
public:
    /// Sets what the compile of the source `owner`, a URI, says of each file, and returns the
    /// messages that make it seen. Files of which it says nothing any more are cleared.
    [[nodiscard]] std::vector<SqxJson> Publish(const SqxLsWorkspace& workspace,
                                               const std::string& owner,
                                               std::map<std::string, SqxJson> diagnostics);

private:
    [[nodiscard]] SqxJson MessageOf(const SqxLsWorkspace& workspace, const std::string& path) const;

    std::map<std::string, std::map<std::string, SqxJson>> m_shown;  // by owner and path
};

#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "sqxmake/SqxMakeState.h"
#include "sqxmake/SqxSourceList.h"

/// The result of a build for each source, derived from the times of two files of the state before
/// and after the build: the stamp and the reports of errors of the source.
class SqxMakeOutcome {
public:
    /// To be created before the build. `sources` and `state` must outlive the object.
    SqxMakeOutcome(const std::vector<SqxSource>& sources, const SqxMakeState& state);

    /// To be called after the build. Prints counts such as "3 compiled, 52 up to date", and the
    /// paths of sources that had errors; if other sources were not tried, also advice to use `-k`,
    /// unless `keptGoing`. `leftOut` is the number of sources that were excluded because of the
    /// names of their shaders. Returns true if `leftOut` is 0 and each source has a stamp. A source
    /// with a stamp from before the build counts as up to date, even if its step did not run.
    [[nodiscard]] bool Print(bool keptGoing, std::size_t leftOut) const;

private:
    using Time = std::filesystem::file_time_type;
    struct Times {
        Time stamp;    // the earliest possible time if there is no stamp
        Time failure;  // the earliest possible time if the source had no errors
    };

    [[nodiscard]] Times TimesOf(const SqxSource& source) const;

    const std::vector<SqxSource>& m_sources;
    const SqxMakeState& m_state;
    std::vector<Times> m_before;  // by source
};

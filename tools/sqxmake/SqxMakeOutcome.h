#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "sqxmake/SqxMakeState.h"
#include "sqxmake/SqxSourceList.h"

/// The result of a build for each source, derived from the times of its stamp and of its reports of
/// errors before and after the build.
class SqxMakeOutcome {
public:
    /// To be created before the build. `sources` and `state` must outlive the object.
    SqxMakeOutcome(const std::vector<SqxSource>& sources, const SqxMakeState& state);

    /// To be called after the build. Prints counts such as "3 compiled, 52 up to date", and the
    /// paths of sources that had errors. Returns true if all sources are compiled. `leftOut` is the
    /// number of sources that were excluded because of the names of their shaders.
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

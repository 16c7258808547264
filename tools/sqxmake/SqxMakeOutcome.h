#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "sqxmake/SqxMakeState.h"
#include "sqxmake/SqxSourceList.h"

/// The result of a build for each source, derived from the times of stamps and failures before and
/// after the build.
class SqxMakeOutcome {
public:
    /// To be created before the build.
    SqxMakeOutcome(const std::vector<SqxSource>& sources, const SqxMakeState& state);

    /// To be called after the build. Prints "3 compiled, 52 up to date", and the sources that had
    /// errors or were not tried. Returns true if all are compiled. `leftOut` is the number of
    /// sources that were excluded because of the names of their shaders.
    [[nodiscard]] bool Print(bool keptGoing, std::size_t leftOut) const;

private:
    using Time = std::filesystem::file_time_type;
    struct Times {
        Time stamp;    // the earliest possible time if there is no stamp
        Time failure;  // the same if there is no failure
    };

    [[nodiscard]] Times TimesOf(const SqxSource& source) const;

    const std::vector<SqxSource>& m_sources;
    const SqxMakeState& m_state;
    std::vector<Times> m_before;  // by source
};

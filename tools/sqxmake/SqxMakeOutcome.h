#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "sqxmake/SqxMakeState.h"
#include "sqxmake/SqxSourceList.h"

/// What a build did with each source, seen by the times of stamps and failures before and after it.
class SqxMakeOutcome {
public:
    /// Before the build.
    SqxMakeOutcome(const std::vector<SqxSource>& sources, const SqxMakeState& state);

    /// After the build: "3 compiled, 52 up to date", with the sources that were refused or not
    /// tried. True if all are compiled. `leftOut`: sources that were not part of the build for
    /// their shader's name.
    [[nodiscard]] bool Print(bool keptGoing, std::size_t leftOut) const;

private:
    using Time = std::filesystem::file_time_type;
    struct Times {
        Time stamp;  // the least time if there is none
        Time failure;
    };

    [[nodiscard]] Times TimesOf(const SqxSource& source) const;

    const std::vector<SqxSource>& m_sources;
    const SqxMakeState& m_state;
    std::vector<Times> m_before;  // by source
};

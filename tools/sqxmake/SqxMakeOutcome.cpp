// Tested by tests/make/run.sh.

#include "sqxmake/SqxMakeOutcome.h"

#include <iostream>
#include <system_error>

namespace {

namespace fs = std::filesystem;

constexpr fs::file_time_type k_never = fs::file_time_type::min();

[[nodiscard]] fs::file_time_type TimeOf(const fs::path& path)
{
    std::error_code isGone;
    const auto time = fs::last_write_time(path, isGone);
    return isGone ? k_never : time;
}

/// Returns a text such as ", 3 refused"; empty for a count of 0.
[[nodiscard]] std::string Part(std::size_t count, const std::string& what)
{
    return count == 0 ? "" : ", " + std::to_string(count) + " " + what;
}

}  // namespace

SqxMakeOutcome::SqxMakeOutcome(const std::vector<SqxSource>& sources, const SqxMakeState& state)
    : m_sources(sources),
      m_state(state)
{
    for (const SqxSource& source : sources)
        m_before.push_back(TimesOf(source));
}

SqxMakeOutcome::Times SqxMakeOutcome::TimesOf(const SqxSource& source) const
{
    const std::string id = SqxMakeState::IdOf(source.path);
    return {TimeOf(m_state.StampOf(id)), TimeOf(m_state.FailureOf(id))};
}

bool SqxMakeOutcome::Print(bool keptGoing, std::size_t leftOut) const
{
    std::size_t compiled = 0;
    std::size_t upToDate = 0;
    std::size_t untried = 0;
    std::vector<std::string> refused;
    for (std::size_t i = 0; i < m_sources.size(); ++i) {
        const Times after = TimesOf(m_sources[i]);
        if (after.stamp != k_never && m_state.IsStale(m_sources[i].path))
            ++untried;
        else if (after.stamp != k_never)
            ++(after.stamp == m_before[i].stamp ? upToDate : compiled);
        else if (after.failure == k_never)
            ++untried;
        else
            refused.push_back(m_sources[i].path.string() +
                              (after.failure == m_before[i].failure ? " (as before)" : ""));
    }
    const std::string counts = std::to_string(compiled) + " compiled, " + std::to_string(upToDate) +
                               " up to date" + Part(untried, "not tried") +
                               Part(leftOut, "left out") + Part(refused.size(), "refused");
    if (refused.empty() && untried == 0 && leftOut == 0) {
        std::cout << counts << '\n';
        return true;
    }
    std::cerr << "sqxmake: " << counts << (refused.empty() ? "" : ":") << '\n';
    for (const std::string& source : refused)
        std::cerr << "  " << source << '\n';
    if (!keptGoing && untried > 0 && !refused.empty())
        std::cerr << "'-k' goes on after a refused source\n";
    return false;
}

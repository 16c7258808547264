#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <set>
#include <string>

/// Watches files and folders for changes. They need not exist yet.
class SqxViewWatch {
public:
    SqxViewWatch() = default;
    /// Records the current state of each path. `HasChanged` compares with this state.
    explicit SqxViewWatch(const std::set<std::string>& paths);

    /// When a file or folder was last written, renamed or given other properties, since 1970.
    using Time = std::chrono::nanoseconds;
    /// Returns the time of a file or folder; 0 if it does not exist.
    [[nodiscard]] static Time TimeOf(const std::string& path) { return StampOf(path).time; }

    /// True if any path differs from its recorded state, or has none, see `Replace`. Asks the file
    /// system about each path until one differs.
    [[nodiscard]] bool HasChanged() const;
    /// Records the current state of each path again.
    void Refresh();
    /// Watches these paths instead, for a caller who has read them since `start`. Paths that were
    /// watched before keep their recorded state. New paths that have changed since `start` count as
    /// changed until `Refresh`, since they may have been read before the change.
    void Replace(const std::set<std::string>& paths, const Time& start);

private:
    /// Properties of a file or folder. If it is written or replaced, at least one of them changes,
    /// unless it is written twice within one step of the file system's clock.
    struct Stamp {
        bool exists = false;
        Time time = {};
        unsigned long long size = 0;
        unsigned long long file = 0;  // number of the inode

        bool operator==(const Stamp&) const = default;
    };
    [[nodiscard]] static Stamp StampOf(const std::string& path);

    std::map<std::string, std::optional<Stamp>> m_stamps;  // without a stamp, a path has changed
};

#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>

/// Watches files and folders for changes, including those that do not exist yet.
class SqxViewWatch {
public:
    SqxViewWatch() = default;
    /// Records the current state of each path; later changes are compared with it.
    explicit SqxViewWatch(const std::set<std::string>& paths);

    /// True if any path differs from its recorded state. Checks each path.
    [[nodiscard]] bool HasChanged() const;
    /// Records the current state of each path again.
    void Refresh();
    /// Watches these paths instead. Paths that were watched before keep their recorded state, so
    /// that changes in the meantime are noticed.
    void Replace(const std::set<std::string>& paths);

private:
    /// Properties of a file or folder. Whenever it is written or replaced, at least one of them
    /// changes.
    struct Stamp {
        bool exists = false;
        long long seconds = 0;  // of the last change
        long long nanoseconds = 0;
        unsigned long long size = 0;
        unsigned long long file = 0;  // number of the inode

        bool operator==(const Stamp&) const = default;
    };
    [[nodiscard]] static Stamp StampOf(const std::string& path);

    std::map<std::string, Stamp> m_stamps;
};

#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>

/// Files and folders, and whether one of them has changed. Those that are not there are watched
/// too.
class SqxViewWatch {
public:
    SqxViewWatch() = default;
    /// Looks at each path now: later changes are compared with that.
    explicit SqxViewWatch(const std::set<std::string>& paths);

    /// One is another one than when it was first watched; costs a look at each.
    [[nodiscard]] bool HasChanged() const;
    /// From now on only later changes count.
    void Refresh();
    /// From now on these paths are watched, those that were watched before as they were then: so
    /// what changed in the meantime is seen.
    void Replace(const std::set<std::string>& paths);

private:
    /// What is new in a file or folder once something was written into it, or it was replaced.
    struct Stamp {
        bool exists = false;
        long long seconds = 0;  // of the last change
        long long nanoseconds = 0;
        unsigned long long size = 0;
        unsigned long long file = 0;

        bool operator==(const Stamp&) const = default;
    };
    [[nodiscard]] static Stamp StampOf(const std::string& path);

    std::map<std::string, Stamp> m_stamps;
};

// A file has changed if its time, size or inode differs, or if it now exists or no longer does:
// editors either write to a file or replace it. The time is that of the inode, since a renamed file
// keeps the time of its contents. Checking a few dozen files takes so little time that no
// notifications of the system are needed.
//
// Tested by tests/sqxview.

#include "sqxview/SqxViewWatch.h"

#include <sys/stat.h>

SqxViewWatch::Stamp SqxViewWatch::StampOf(const std::string& path)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        return {};
    return {true,
            std::chrono::seconds(status.st_ctim.tv_sec) +
                std::chrono::nanoseconds(status.st_ctim.tv_nsec),
            static_cast<unsigned long long>(status.st_size), status.st_ino};
}

SqxViewWatch::SqxViewWatch(const std::set<std::string>& paths)
{
    for (const std::string& path : paths)
        m_stamps.emplace(path, StampOf(path));
}

bool SqxViewWatch::HasChanged() const
{
    for (const auto& [path, stamp] : m_stamps)
        if (stamp != StampOf(path))
            return true;
    return false;
}

void SqxViewWatch::Refresh()
{
    for (auto& [path, stamp] : m_stamps)
        stamp = StampOf(path);
}

void SqxViewWatch::Replace(const std::set<std::string>& paths, const Time& start)
{
    std::map<std::string, std::optional<Stamp>> stamps;
    for (const std::string& path : paths) {
        const auto found = m_stamps.find(path);
        std::optional<Stamp>& stamp = stamps[path];
        if (found != m_stamps.end())
            stamp = found->second;
        else if (const Stamp now = StampOf(path); now.time < start)
            stamp = now;
    }
    m_stamps = std::move(stamps);
}

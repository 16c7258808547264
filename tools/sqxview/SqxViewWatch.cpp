// A file has changed if its time, size or inode differs: editors either write to a file or replace
// it. Checking a few dozen files from time to time costs less than notifications of the
// system.
//
// Tested by tests/sqxview.

#include "sqxview/SqxViewWatch.h"

#include <sys/stat.h>

SqxViewWatch::Stamp SqxViewWatch::StampOf(const std::string& path)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        return {};
    return {true, status.st_mtim.tv_sec, status.st_mtim.tv_nsec,
            static_cast<unsigned long long>(status.st_size), status.st_ino};
}

SqxViewWatch::SqxViewWatch(const std::set<std::string>& paths)
{
    Replace(paths);
}

bool SqxViewWatch::HasChanged() const
{
    for (const auto& [path, stamp] : m_stamps)
        if (StampOf(path) != stamp)
            return true;
    return false;
}

void SqxViewWatch::Refresh()
{
    for (auto& [path, stamp] : m_stamps)
        stamp = StampOf(path);
}

void SqxViewWatch::Replace(const std::set<std::string>& paths)
{
    std::map<std::string, Stamp> stamps;
    for (const std::string& path : paths) {
        const auto found = m_stamps.find(path);
        stamps.emplace(path, found != m_stamps.end() ? found->second : StampOf(path));
    }
    m_stamps = std::move(stamps);
}

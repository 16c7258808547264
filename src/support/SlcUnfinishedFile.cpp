// Tested by tests/support/QxDebugTest.cpp, tests/golden/unwritable_output.sl and
// tests/golden/concurrent_runs.cmd.

#include "support/SlcUnfinishedFile.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "support/QxDebug.h"

namespace {

/// Returns the part before the file name, including the slash; empty for a path without a slash.
[[nodiscard]] std::string FolderPart(const std::string& path)
{
    return path.substr(0, path.rfind('/') + 1);
}

[[nodiscard]] std::string MakeFolderNextTo(const std::string& path)
{
    std::string folder = FolderPart(path) + ".unfinished-XXXXXX";
    return ::mkdtemp(folder.data()) ? folder : std::string();
}

}  // namespace

SlcUnfinishedFile::SlcUnfinishedFile(std::string place, OnExit onExit, Else otherwise)
    : m_place(std::move(place)),
      m_folder(MakeFolderNextTo(m_place))
{
    const int reason = errno;
    const std::string name = m_place.substr(FolderPart(m_place).size());
    if (m_folder.empty() && otherwise == Else::Temporary) {
        std::error_code ignored;
        m_folder =
            MakeFolderNextTo((std::filesystem::temp_directory_path(ignored) / name).string());
        m_isBeside = m_folder.empty();
    }
    m_path = m_folder.empty() ? m_place : m_folder + '/' + name;
    // The folder is registered before the file, so that it is removed after the file: only an empty
    // folder can be removed.
    if (!m_folder.empty())
        QxDebug::RemoveOnSignal(m_folder.c_str());
    QxDebug::RemoveOnSignal(m_path.c_str(),
                            onExit == OnExit::MoveIntoPlace ? m_place.c_str() : nullptr);
    errno = reason;
}

SlcUnfinishedFile::~SlcUnfinishedFile()
{
    // Without a separate folder, `m_path` is also the final place, where a finished file must stay.
    if (!m_isMoved)
        ::unlink(m_path.c_str());
    if (!m_folder.empty())
        ::rmdir(m_folder.c_str());
    QxDebug::KeepOnSignal(m_path.c_str());
    QxDebug::KeepOnSignal(m_folder.c_str());
}

bool SlcUnfinishedFile::MoveIntoPlace()
{
    m_isMoved = std::rename(m_path.c_str(), m_place.c_str()) == 0;
    if (m_isMoved)
        QxDebug::KeepOnSignal(m_path.c_str());
    return m_isMoved;
}

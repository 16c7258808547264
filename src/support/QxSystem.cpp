// Thin wrappers around system calls. On failure, they return a neutral value, such as 0, false or
// -1, or do nothing: callers do not learn the reason.
//
// Between fork and exec a child only closes descriptors: allocating memory there could wait for a
// lock that no thread of the child will ever release.
//
// Tested by tests/support/QxSystemTest.cpp.

#include "support/QxSystem.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace {

struct FileSystemName {
    std::uint32_t number;
    const char* name;
};

// The numbers are those that `statfs` returns, most of them from linux/magic.h. ext2 and ext3 have
// the number of ext4.
constexpr FileSystemName k_fileSystems[] = {
    {0xEF53, "ext4"},         {0x58465342, "xfs"}, {0x9123683E, "btrfs"}, {0x01021994, "tmpfs"},
    {0x794C7630, "overlay"},  {0x6969, "nfs"},     {0xFF534D42, "cifs"},  {0xFE534D42, "smb2"},
    {0x65735546, "fuse"},     {0x4D44, "vfat"},    {0x2011BAB0, "exfat"}, {0x5346544E, "ntfs"},
    {0x7366746E, "ntfs3"},    {0x2FC12FC1, "zfs"}, {0xF2F52010, "f2fs"},  {0x52654973, "reiserfs"},
    {0x3153464A, "jfs"},      {0x9660, "iso9660"}, {0x15013346, "udf"},   {0x73717368, "squashfs"},
    {0x858458F6, "ramfs"},    {0x9FA0, "proc"},    {0x62656572, "sysfs"}, {0x01021997, "v9fs"},
    {0xCA451A4E, "bcachefs"}, {0x5346414F, "afs"}, {0x00C36400, "ceph"},
};

/// Owns a file descriptor, and closes it. Not open if the number is negative.
class Descriptor {
public:
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor()
    {
        if (IsOpen())
            ::close(m_number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] bool IsOpen() const { return m_number >= 0; }
    [[nodiscard]] int Number() const { return m_number; }
    /// False if closing failed: written data may then be lost.
    [[nodiscard]] bool Close() { return ::close(std::exchange(m_number, -1)) == 0; }

private:
    int m_number;
};

/// True if all data was written.
bool WriteAll(int file, const char* data, std::size_t size)
{
    while (size > 0) {
        const ssize_t written = ::write(file, data, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool CopyContents(int from, int to)
{
    char buffer[8192];
    for (;;) {
        const ssize_t count = ::read(from, buffer, sizeof buffer);
        if (count == 0)
            return true;
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 || !WriteAll(to, buffer, static_cast<std::size_t>(count)))
            return false;
    }
}

bool IsSameFile(int open, const char* path)
{
    struct stat first = {};
    struct stat second = {};
    return ::fstat(open, &first) == 0 && ::stat(path, &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

void AppendPath(const char* path, void* list)
{
    static_cast<std::vector<std::string>*>(list)->emplace_back(path);
}

/// Closes all descriptors except the standard streams. Runs in the child, between fork and exec.
void CloseOtherDescriptors()
{
    constexpr unsigned int first = STDERR_FILENO + 1;
    if (::close_range(first, ~0U, 0) == 0)
        return;
    const std::size_t end = QxSystem::MaxOpenFiles();
    for (std::size_t number = first; number < end; ++number)
        ::close(static_cast<int>(number));
}

/// Sets SIGCHLD to its default action while it exists, so that the caller can wait for a child: if
/// the process ignores SIGCHLD, the system discards the exit statuses of its children, and if the
/// program handles SIGCHLD, the handler may collect them.
class DefaultChildSignal {
public:
    DefaultChildSignal()
    {
        struct sigaction byDefault = {};
        byDefault.sa_handler = SIG_DFL;
        ::sigaction(SIGCHLD, &byDefault, &m_before);
    }
    ~DefaultChildSignal() { ::sigaction(SIGCHLD, &m_before, nullptr); }
    DefaultChildSignal(const DefaultChildSignal&) = delete;
    DefaultChildSignal& operator=(const DefaultChildSignal&) = delete;

private:
    struct sigaction m_before = {};
};

}  // namespace

void QxSystem::ScanDir(const char* directory, ScanCallback callback, void* data, bool recursive)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(directory), &::closedir);
    if (!entries)
        return;
    while (const dirent* entry = ::readdir(entries.get())) {
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        const std::string path = std::string(directory) + '/' + std::string(name);
        if (!recursive)
            callback(path.c_str(), data);
        else if (FileIsDir(path.c_str()))
            ScanDir(path.c_str(), callback, data, false);
    }
}

bool QxSystem::FileExists(const char* path)
{
    struct stat facts = {};
    return ::lstat(path, &facts) == 0;
}

bool QxSystem::FileIsDir(const char* path)
{
    struct stat facts = {};
    return ::lstat(path, &facts) == 0 && S_ISDIR(facts.st_mode);
}

std::uintmax_t QxSystem::FileSize(const char* path)
{
    if (!FileIsDir(path)) {
        struct stat facts = {};
        const bool isFile = ::stat(path, &facts) == 0 && !S_ISDIR(facts.st_mode);
        return isFile ? static_cast<std::uintmax_t>(facts.st_size) : 0;
    }
    // Read all entries first, so that the directory is closed before its subdirectories are opened:
    // a deep tree then needs no more descriptors than a flat one.
    std::vector<std::string> entries;
    ScanDir(path, AppendPath, &entries, false);
    std::uintmax_t sum = 0;
    for (const std::string& entry : entries)
        sum += FileSize(entry.c_str());
    return sum;
}

std::time_t QxSystem::FileAccessTime(const char* path)
{
    struct stat facts = {};
    return ::stat(path, &facts) == 0 ? facts.st_atime : 0;
}

std::time_t QxSystem::FileModifTime(const char* path)
{
    struct stat facts = {};
    return ::stat(path, &facts) == 0 ? facts.st_mtime : 0;
}

bool QxSystem::FileCopy(const char* from, const char* to)
{
    const Descriptor source(::open(from, O_RDONLY | O_CLOEXEC));
    if (!source.IsOpen())
        return false;
    // Opening the target would truncate the source.
    if (IsSameFile(source.Number(), to))
        return true;
    Descriptor target(::open(to, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    return target.IsOpen() && CopyContents(source.Number(), target.Number()) && target.Close();
}

float QxSystem::DiskFree(const char* path)
{
    struct statfs facts = {};
    return ::statfs(path, &facts) == 0
               ? static_cast<float>(facts.f_bavail) * static_cast<float>(facts.f_bsize)
               : 0;
}

float QxSystem::DiskSize(const char* path)
{
    struct statfs facts = {};
    return ::statfs(path, &facts) == 0
               ? static_cast<float>(facts.f_blocks) * static_cast<float>(facts.f_bsize)
               : 0;
}

long QxSystem::FsType(const char* path)
{
    struct statfs facts = {};
    return ::statfs(path, &facts) == 0 ? static_cast<long>(facts.f_type) : 0;
}

void QxSystem::SysFs(const char* path, std::string& name)
{
    name = "unknown";
    // Where `long` has 32 bits, large numbers are negative.
    const auto number = static_cast<std::uint32_t>(FsType(path));
    for (const FileSystemName& row : k_fileSystems)
        if (row.number == number)
            name = row.name;
}

std::size_t QxSystem::MaxOpenFiles()
{
    struct rlimit limit = {};
    return ::getrlimit(RLIMIT_NOFILE, &limit) == 0 ? static_cast<std::size_t>(limit.rlim_cur) : 0;
}

int QxSystem::Launch(const char* const* arguments)
{
    const pid_t child = ::fork();
    if (child != 0)
        return child;
    CloseOtherDescriptors();
    // execvp takes pointers to non-const text but does not modify it.
    ::execvp(arguments[0], const_cast<char* const*>(arguments));
    ::_exit(127);
}

int QxSystem::LaunchAndWait(const char* const* arguments)
{
    const DefaultChildSignal childSignal;
    const pid_t child = Launch(arguments);
    if (child < 0)
        return -1;
    int status = 0;
    while (::waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool QxSystem::HostName(char* buffer, std::size_t size)
{
    // A truncated name may lack the terminating null.
    return ::gethostname(buffer, size) == 0 && std::memchr(buffer, '\0', size) != nullptr;
}

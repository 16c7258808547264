#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>

/// File and process services of the operating system. The compiler uses only `ScanDir`, to find
/// shadeop libraries; the rest is part of the library for other programs.
///
/// No function reports errors: if a system call fails, the function returns the neutral result that
/// its comment states. Paths are null-terminated and must not be null; only the system limits their
/// length.
class QxSystem {
public:
    using ScanCallback = void (*)(const char* path, void* data);

    // Files.

    /// Calls `callback` with the path of each entry of `directory`, also of directories, but not of
    /// "." and "..", in the order of the file system. With `recursive`, calls it only for entries
    /// one level deeper: those of the subdirectories, without symbolic links to directories. A path
    /// is the directory, "/" and the name. Does nothing if `directory` cannot be read.
    static void ScanDir(const char* directory, ScanCallback callback, void* data, bool recursive);

    /// True if there is a file, a directory or a symbolic link, which may be dangling, at `path`.
    /// False on failure.
    [[nodiscard]] static bool FileExists(const char* path);
    /// True for a directory; false for a symbolic link to one, and on failure.
    [[nodiscard]] static bool FileIsDir(const char* path);
    /// Returns the size in bytes; for a directory, the total size of its contents, without the
    /// directories that symbolic links refer to. What cannot be read counts as 0.
    [[nodiscard]] static std::uintmax_t FileSize(const char* path);
    /// Return the time of the last access and of the last modification. 0 on failure.
    [[nodiscard]] static std::time_t FileAccessTime(const char* path);
    [[nodiscard]] static std::time_t FileModifTime(const char* path);
    /// Copies the contents, but no other properties. `to` is created or truncated first, unless it
    /// is the same file as `from`. False on failure; `to` may then contain part of the contents.
    [[nodiscard]] static bool FileCopy(const char* from, const char* to);

    // Properties of the file system that contains `path`.

    /// Return the bytes available to an ordinary user and the total size in bytes. 0 on failure.
    [[nodiscard]] static float DiskFree(const char* path);
    [[nodiscard]] static float DiskSize(const char* path);
    /// Returns the kernel's number of the file system type; 0 on failure.
    [[nodiscard]] static long FsType(const char* path);
    /// Sets `name` to that of the file system type, such as "ext4"; "unknown" for uncommon types
    /// and on failure.
    static void SysFs(const char* path, std::string& name);

    // Processes and the machine.

    /// Returns the number of files that this process may have open; 0 on failure.
    [[nodiscard]] static std::size_t MaxOpenFiles();
    /// Starts a program with these arguments, of type `const char*`, and does not wait for it. A
    /// path without "/" is searched in `PATH`. Of the open files, the child inherits only the
    /// standard streams. It exits with status 127 if the program cannot be executed. Returns the
    /// child's process ID, or -1 if no child could be created.
    template <class... Arguments>
    static int LaunchProgram(const char* path, Arguments... arguments)
    {
        const char* const list[] = {path, arguments..., nullptr};
        return Launch(list);
    }
    /// Does the same, but waits for the child. Returns its exit status, or -1 if no child could be
    /// created or it did not exit normally.
    template <class... Arguments>
    static int LaunchProgramAndWait(const char* path, Arguments... arguments)
    {
        const char* const list[] = {path, arguments..., nullptr};
        return LaunchAndWait(list);
    }
    /// Writes the name of the machine to the buffer. False on failure, also if the name and its
    /// terminating null do not fit.
    [[nodiscard]] static bool HostName(char* buffer, std::size_t size);

private:
    [[nodiscard]] static int Launch(const char* const* arguments);
    [[nodiscard]] static int LaunchAndWait(const char* const* arguments);
};

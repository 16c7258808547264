#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>

/// File and process services of the operating system. But for `ScanDir`, by which libraries are
/// found, told, unused: they are for programs beside the compiler.
///
/// None of them reports: a system call that fails gives the neutral result that is told with each.
/// Paths are texts that end in a null; none may be null, and their length has no limit here.
class QxSystem {
public:
    using ScanCallback = void (*)(const char* path, void* data);

    // Files.

    /// Calls back with `directory`, "/" and the name of each entry but "." and "..", directories
    /// too, in the order of the file system. `recursive` leaves those out and visits the entries of
    /// its directories in their place, one level below `directory` and no deeper. Nothing happens
    /// if `directory` cannot be read.
    static void ScanDir(const char* directory, ScanCallback callback, void* data, bool recursive);

    /// Also for a symbolic link that leads nowhere.
    [[nodiscard]] static bool FileExists(const char* path);
    /// A symbolic link to a directory is none.
    [[nodiscard]] static bool FileIsDir(const char* path);
    /// In bytes; of a directory the sum over all that is in it, links to directories left out.
    /// 0 on failure.
    [[nodiscard]] static std::uintmax_t FileSize(const char* path);
    /// 0 on failure.
    [[nodiscard]] static std::time_t FileAccessTime(const char* path);
    [[nodiscard]] static std::time_t FileModifTime(const char* path);
    /// The contents alone. `to` is created or cut first, unless it is the file `from` itself. On
    /// failure it may hold a part.
    [[nodiscard]] static bool FileCopy(const char* from, const char* to);

    // File systems, by the path of any file in one.

    /// Bytes that an ordinary user may still fill, and all bytes. 0 on failure.
    [[nodiscard]] static float DiskFree(const char* path);
    [[nodiscard]] static float DiskSize(const char* path);
    /// The number by which the kernel knows the type; 0 on failure.
    [[nodiscard]] static long FsType(const char* path);
    /// The name of the type, such as "ext4"; "unknown" for one that is not common, and on failure.
    static void SysFs(const char* path, std::string& name);

    // Processes and the machine.

    /// How many files this process may have open; 0 on failure.
    [[nodiscard]] static std::size_t MaxOpenFiles();
    /// Starts the program with these texts as its arguments and does not wait for it. A path
    /// without "/" is sought in `PATH`. The child has the standard streams and no other open file;
    /// it ends with status 127 if there is no such program. The child's process number, -1 if
    /// none could be made.
    template <class... Arguments>
    static int LaunchProgram(const char* path, Arguments... arguments)
    {
        const char* const list[] = {path, arguments..., nullptr};
        return Launch(list);
    }
    /// The same, and waits: the exit status, or -1 if the program was not started or did not exit
    /// by itself.
    template <class... Arguments>
    static int LaunchProgramAndWait(const char* path, Arguments... arguments)
    {
        const char* const list[] = {path, arguments..., nullptr};
        return LaunchAndWait(list);
    }
    /// False if it does not fit into the buffer with its null.
    [[nodiscard]] static bool HostName(char* buffer, std::size_t size);

private:
    [[nodiscard]] static int Launch(const char* const* arguments);
    [[nodiscard]] static int LaunchAndWait(const char* const* arguments);
};

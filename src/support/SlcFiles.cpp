// Tested by tests/golden and tests/backends/GenByteCodeTest.cpp.

#include "support/SlcFiles.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr mode_t k_anyoneMayReadAndWrite = 0666;  // less what the user's mask forbids

}  // namespace

SlcFile::SlcFile(const std::string& path, For use)
    : m_descriptor(use == For::Reading
                       ? ::open(path.c_str(), O_RDONLY | O_CLOEXEC)
                       : ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC,
                                k_anyoneMayReadAndWrite))
{
}

std::optional<std::string> SlcFile::ReadAll()
{
    constexpr std::size_t least = 4096;  // pipes have no size
    struct stat status = {};
    const bool hasSize = ::fstat(m_descriptor, &status) == 0 && status.st_size > 0;
    // One more, so that the end is found without more memory.
    std::string text(hasSize ? static_cast<std::size_t>(status.st_size) + 1 : least, '\0');
    std::size_t size = 0;
    for (;;) {
        const ssize_t count = ::read(m_descriptor, text.data() + size, text.size() - size);
        if (count < 0 && errno != EINTR)
            return std::nullopt;
        if (count == 0)
            break;
        size += count < 0 ? 0 : static_cast<std::size_t>(count);
        if (size == text.size())
            text.resize(2 * size);
    }
    text.resize(size);
    return text;
}

bool SlcFile::Write(std::string_view text)
{
    while (!text.empty()) {
        const ssize_t count = ::write(m_descriptor, text.data(), text.size());
        if (count < 0 && errno != EINTR)
            return false;
        text.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return true;
}

bool SlcFile::Close()
{
    const int descriptor = std::exchange(m_descriptor, -1);
    return descriptor < 0 || ::close(descriptor) == 0;
}

std::optional<std::string> SlcReadFile(const std::string& path)
{
    SlcFile file(path, SlcFile::For::Reading);
    if (!file.IsOpen())
        return std::nullopt;
    return file.ReadAll();
}

bool SlcWriteFile(const std::string& path, std::string_view text)
{
    SlcFile file(path, SlcFile::For::Writing);
    return file.IsOpen() && file.Write(text) && file.Close();
}

// Tested by tests/sqxshade/SqxShadeTest.cpp and tests/make/run.sh.

#include "process/SqxWholeFile.h"

#include <cerrno>
#include <fstream>
#include <string>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

[[nodiscard]] bool WriteBytes(const fs::path& path, std::string_view bytes)
{
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return !file.fail();
}

}  // namespace

bool SqxWriteWholeFile(const fs::path& path, std::string_view bytes)
{
    std::error_code unknown;
    const fs::file_status status = fs::status(path, unknown);
    errno = 0;
    if (fs::exists(status) && !fs::is_regular_file(status))
        return WriteBytes(path, bytes);
    fs::path unfinished = path;
    unfinished += "." + std::to_string(getpid());
    std::error_code failed;
    if (WriteBytes(unfinished, bytes)) {
        fs::rename(unfinished, path, failed);
        if (!failed)
            return true;
        errno = failed.value();
    }
    const int reason = errno;
    fs::remove(unfinished, failed);
    errno = reason;
    return false;
}

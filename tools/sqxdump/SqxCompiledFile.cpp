// The bytes are read in the constructor, since standard input can be read only once. The system
// loads a shared object by its path, so one from standard input is copied to an unnamed file in
// memory.
//
// Tested by tests/run/SqxDumpToolTest.cpp.

#include "sqxdump/SqxCompiledFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sys/mman.h>
#include <unistd.h>

#include "QxHostError.h"
#include "sqx/SqxReader.h"

namespace {

/// Returns the descriptor of a new unnamed file in memory with these bytes. Throws `QxHostError` if
/// the system refuses it.
[[nodiscard]] int CopyInMemory(const std::string& bytes)
{
    const int copy = memfd_create("shader", MFD_CLOEXEC);
    if (copy < 0)
        throw QxHostError(std::strerror(errno));
    for (std::size_t written = 0; written < bytes.size();) {
        const ssize_t part = write(copy, bytes.data() + written, bytes.size() - written);
        if (part < 0) {
            const int reason = errno;
            close(copy);
            throw QxHostError(std::strerror(reason));
        }
        written += static_cast<std::size_t>(part);
    }
    return copy;
}

}  // namespace

SqxCompiledFile::SqxCompiledFile(const std::string& file) : m_file(file)
{
    std::ifstream named;
    if (!IsStandardInput())
        named.open(file, std::ios::binary);
    std::istream& stream = IsStandardInput() ? std::cin : named;
    if (stream)
        m_bytes = SqxReader::Bytes(stream);
    if (stream.bad() || (!IsStandardInput() && !named.is_open()))
        throw QxHostError(std::strerror(errno));
}

SqxCompiledFile::~SqxCompiledFile()
{
    if (m_copy >= 0)
        close(m_copy);
}

bool SqxCompiledFile::IsSharedObject() const
{
    return m_bytes.starts_with("\177ELF");
}

std::string SqxCompiledFile::ShaderName() const
{
    return IsStandardInput() ? "" : std::filesystem::path(m_file).stem().string();
}

std::string SqxCompiledFile::PathToLoad()
{
    if (!IsStandardInput())
        return m_file;
    if (m_copy < 0)
        m_copy = CopyInMemory(m_bytes);
    return "/proc/self/fd/" + std::to_string(m_copy);
}

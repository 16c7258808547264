#include "support/QxSharedLibrary.h"

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace {

template <class Record>
bool ReadRecord(std::istream& file, Record& record)
{
    return static_cast<bool>(file.read(reinterpret_cast<char*>(&record), sizeof record));
}

/// The file names this machine's kind of library; the loader checks the rest of the kind.
bool IsLibraryHeader(const ElfW(Ehdr) & header)
{
    constexpr unsigned char wordSize = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
    return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 &&
           header.e_ident[EI_CLASS] == wordSize && header.e_phentsize == sizeof(ElfW(Phdr));
}

/// True if the file holds each segment to its end, the one for the loader among them.
bool HoldsItsSegments(std::istream& file, const ElfW(Ehdr) & header, std::uintmax_t size)
{
    bool isForLoader = false;
    file.seekg(static_cast<std::streamoff>(header.e_phoff));
    for (unsigned int i = 0; i < header.e_phnum; ++i) {
        ElfW(Phdr) segment;
        if (!ReadRecord(file, segment))
            return false;
        if (segment.p_offset > size || segment.p_filesz > size - segment.p_offset)
            return false;
        isForLoader |= segment.p_type == PT_DYNAMIC && segment.p_filesz > 0;
    }
    return isForLoader;
}

bool IsWholeLibrary(const std::string& path)
{
    std::error_code error;
    // To open anything else could wait for ever.
    if (!std::filesystem::is_regular_file(path, error))
        return false;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    std::ifstream file(path, std::ios::binary);
    ElfW(Ehdr) header;
    return !error && file && ReadRecord(file, header) && IsLibraryHeader(header) &&
           HoldsItsSegments(file, header, size);
}

}  // namespace

QxSharedLibrary::QxSharedLibrary(const std::string& path)
{
    if (IsWholeLibrary(path))
        m_handle = ::dlopen(path.c_str(), RTLD_LAZY);
}

QxSharedLibrary::~QxSharedLibrary()
{
    if (m_handle)
        ::dlclose(m_handle);
}

const void* QxSharedLibrary::Find(const std::string& name) const
{
    return m_handle ? ::dlsym(m_handle, name.c_str()) : nullptr;
}

std::size_t QxSharedLibrary::SizeOf(const void* object)
{
    Dl_info place = {};
    void* symbol = nullptr;
    if (::dladdr1(object, &place, &symbol, RTLD_DL_SYMENT) == 0 || !symbol ||
        place.dli_saddr != object)
        return 0;
    return static_cast<std::size_t>(static_cast<const ElfW(Sym)*>(symbol)->st_size);
}

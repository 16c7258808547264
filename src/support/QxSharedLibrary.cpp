// A library is looked at as a file before the loader gets it, since the loader maps what the
// headers say and dies on a file that is cut short. What of it can be read is then asked of the
// loader: the readable segments of the very module that has this dynamic section.
//
// Tested by tests/symbols/SlcShadeopLoaderTest.cpp with libraries that are cut, empty or no
// libraries.

#include "support/QxSharedLibrary.h"

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <span>

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

constexpr unsigned char k_symbolTypes = 0xf;  // the part of `st_info`

struct Segments {
    const link_map* library;
    QxMemoryRanges& memory;
};

/// For `dl_iterate_phdr`: adds what can be read of the library, when it comes to that.
int AddSegments(dl_phdr_info* info, std::size_t, void* data)
{
    const auto& segments = *static_cast<Segments*>(data);
    const std::span headers(info->dlpi_phdr, info->dlpi_phnum);
    const auto isDynamic = [&](const ElfW(Phdr) & header) {
        return header.p_type == PT_DYNAMIC &&
               info->dlpi_addr + header.p_vaddr ==
                   reinterpret_cast<ElfW(Addr)>(segments.library->l_ld);
    };
    if (std::none_of(headers.begin(), headers.end(), isDynamic))
        return 0;
    for (const auto& header : headers)
        if (header.p_type == PT_LOAD && (header.p_flags & PF_R) != 0)
            segments.memory.Add(
                // The loader tells addresses as numbers. NOLINTNEXTLINE(performance-no-int-to-ptr)
                {reinterpret_cast<const std::byte*>(info->dlpi_addr + header.p_vaddr),
                 static_cast<std::size_t>(header.p_memsz)});
    return 1;
}

}  // namespace

QxSharedLibrary::QxSharedLibrary(const std::string& path)
{
    if (IsWholeLibrary(path))
        m_handle = ::dlopen(path.c_str(), RTLD_LAZY);
    link_map* map = nullptr;
    if (!m_handle || ::dlinfo(m_handle, RTLD_DI_LINKMAP, &map) != 0)
        return;
    Segments segments = {map, m_memory};
    ::dl_iterate_phdr(&AddSegments, &segments);
}

QxSharedLibrary::~QxSharedLibrary()
{
    if (m_handle)
        ::dlclose(m_handle);
}

bool QxSharedLibrary::Exports(const std::string& name) const
{
    return m_handle && ::dlsym(m_handle, name.c_str());
}

QxMemoryRanges::Bytes QxSharedLibrary::FindObject(const std::string& name) const
{
    const void* object = m_handle ? ::dlsym(m_handle, name.c_str()) : nullptr;
    Dl_info place = {};
    void* entry = nullptr;
    if (!object || ::dladdr1(object, &place, &entry, RTLD_DL_SYMENT) == 0 || !entry ||
        place.dli_saddr != object)
        return {};
    const auto& symbol = *static_cast<const ElfW(Sym)*>(entry);
    if ((symbol.st_info & k_symbolTypes) != STT_OBJECT)
        return {};
    const QxMemoryRanges::Bytes bytes = m_memory.From(object);
    return symbol.st_size == 0 ? bytes
                               : bytes.first(std::min<std::size_t>(bytes.size(), symbol.st_size));
}

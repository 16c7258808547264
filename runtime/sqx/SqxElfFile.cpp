// Reads the parts of a library that a dynamic loader reads: segments, the dynamic section, a hash
// table of symbols, relocations. Only `Section` needs section headers, see SqxElfSection.cpp. Each
// record is copied after a bounds check, so no offset in the file can lead outside it.
//
// Format: "Executable and Linking Format", System V Application Binary Interface, chapters 4 and 5;
// the hash table `DT_GNU_HASH` is an extension of the GNU tools.
//
// Tested by tests/symbols/SlcShadeopLoaderTest.cpp and the fuzz target `shadeop_table`.

#include "sqx/SqxElfFile.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <elf.h>
#include <filesystem>
#include <iterator>
#include <link.h>
#include <memory>

#include "sqx/SqxElfRecord.h"

namespace {

using Bytes = SqxElfFile::Bytes;

/// The parameters that depend on the processor.
struct Machine {
    unsigned int number;
    unsigned int relative;  // relocation: base + addend
    unsigned int absolute;  // relocation: symbol + addend
};

#if defined(__x86_64__)
constexpr Machine k_machine = {EM_X86_64, R_X86_64_RELATIVE, R_X86_64_64};
#elif defined(__aarch64__)
constexpr Machine k_machine = {EM_AARCH64, R_AARCH64_RELATIVE, R_AARCH64_ABS64};
#elif defined(__riscv) && __riscv_xlen == 64
constexpr Machine k_machine = {EM_RISCV, R_RISCV_RELATIVE, R_RISCV_64};
#elif defined(__i386__)
constexpr Machine k_machine = {EM_386, R_386_RELATIVE, R_386_32};
#else
#error "Name the relocations of this processor"
#endif

constexpr bool k_isWide = sizeof(void*) == 8;
constexpr unsigned char k_wordSize = k_isWide ? ELFCLASS64 : ELFCLASS32;
constexpr unsigned char k_byteOrder =
    __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? ELFDATA2LSB : ELFDATA2MSB;
// Headers of older systems do not define these two constants.
constexpr int k_packedRelocationsSize = 35;
constexpr int k_packedRelocations = 36;
constexpr unsigned char k_symbolTypes = 0xf;  // the bits of `st_info` that contain the type

std::uint64_t RelocationType(std::uint64_t information)
{
    return k_isWide ? information & 0xffffffff : information & 0xff;
}

std::uint64_t RelocationSymbol(std::uint64_t information)
{
    return k_isWide ? information >> 32 : information >> 8;
}

bool IsLibraryHeader(const ElfW(Ehdr) & header)
{
    return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 &&
           header.e_ident[EI_CLASS] == k_wordSize && header.e_ident[EI_DATA] == k_byteOrder &&
           header.e_type == ET_DYN && header.e_machine == k_machine.number &&
           header.e_phentsize == sizeof(ElfW(Phdr));
}

std::uint32_t GnuHashOf(std::string_view name)
{
    std::uint32_t hash = 5381;
    for (const char c : name)
        hash = hash * 33 + static_cast<unsigned char>(c);
    return hash;
}

std::uint32_t HashOf(std::string_view name)
{
    std::uint32_t hash = 0;
    for (const char c : name) {
        hash = (hash << 4) + static_cast<unsigned char>(c);
        hash = (hash ^ (hash >> 24 & 0xf0)) & 0x0fffffff;
    }
    return hash;
}

SqxElfFile::Kind KindOf(unsigned char information)
{
    switch (information & k_symbolTypes) {
    case STT_FUNC:
    case STT_GNU_IFUNC:
        return SqxElfFile::Kind::Function;
    case STT_OBJECT:
        return SqxElfFile::Kind::Object;
    default:
        return SqxElfFile::Kind::Other;
    }
}

}  // namespace

SqxElfFile SqxElfFile::Open(const std::string& path)
{
    std::error_code error;
    // Opening anything else could block forever.
    if (!std::filesystem::is_regular_file(path, error))
        return SqxElfFile({});
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                               std::fclose);
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (!file || error)
        return SqxElfFile({});
    std::vector<std::byte> bytes(size);
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    return SqxElfFile(std::move(bytes));
}

SqxElfFile::SqxElfFile(std::vector<std::byte> bytes) : m_bytes(std::move(bytes))
{
    m_isLibrary = ReadHeaders();
    if (!m_isLibrary)
        m_segments.clear();
}

SqxElfFile::Bytes SqxElfFile::Section(std::string_view name) const
{
    return m_isLibrary ? SqxElfSection(m_bytes, name) : Bytes();
}

bool SqxElfFile::ReadHeaders()
{
    const Bytes file = m_bytes;
    const auto header = RecordAt<ElfW(Ehdr)>(file, 0);
    if (!header || !IsLibraryHeader(*header) || header->e_phoff > file.size())
        return false;
    Bytes dynamic;
    for (std::uint64_t i = 0; i < header->e_phnum; ++i) {
        const auto segment =
            RecordAt<ElfW(Phdr)>(file.subspan(header->e_phoff), i * sizeof(ElfW(Phdr)));
        if (!segment || segment->p_offset > file.size() ||
            segment->p_filesz > file.size() - segment->p_offset)
            return false;
        if (segment->p_type == PT_LOAD && (segment->p_flags & PF_R) != 0)
            m_segments.push_back({segment->p_vaddr, segment->p_offset, segment->p_filesz});
        if (segment->p_type == PT_DYNAMIC)
            dynamic = file.subspan(segment->p_offset, segment->p_filesz);
    }
    return ReadDynamic(dynamic);
}

/// Returns false if there is no dynamic section, or an empty one.
bool SqxElfFile::ReadDynamic(Bytes entries)
{
    for (std::uint64_t at = 0;; at += sizeof(ElfW(Dyn))) {
        const auto entry = RecordAt<ElfW(Dyn)>(entries, at);
        if (!entry || entry->d_tag == DT_NULL)
            return at > 0;
        const std::uint64_t value = entry->d_un.d_val;
        switch (entry->d_tag) {
        case DT_SYMTAB:
            m_symbols = value;
            break;
        case DT_STRTAB:
            m_strings.address = value;
            break;
        case DT_STRSZ:
            m_strings.size = value;
            break;
        case DT_HASH:
            m_hash = value;
            break;
        case DT_GNU_HASH:
            m_gnuHash = value;
            break;
        case DT_RELA:
            m_relocations.address = value;
            break;
        case DT_RELASZ:
            m_relocations.size = value;
            break;
        case DT_REL:
            m_bareRelocations.address = value;
            break;
        case DT_RELSZ:
            m_bareRelocations.size = value;
            break;
        case k_packedRelocations:
            m_packedRelocations.address = value;
            break;
        case k_packedRelocationsSize:
            m_packedRelocations.size = value;
            break;
        default:
            break;
        }
    }
}

SqxElfFile::Bytes SqxElfFile::At(std::uint64_t address) const
{
    for (const Segment& segment : m_segments)
        if (address >= segment.address && address - segment.address < segment.size) {
            const std::uint64_t from = address - segment.address;
            return Bytes(m_bytes).subspan(segment.offset + from, segment.size - from);
        }
    return {};
}

SqxElfFile::Bytes SqxElfFile::BytesOf(const Table& table) const
{
    const Bytes bytes = At(table.address);
    return bytes.first(static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), table.size)));
}

SqxElfFile::Bytes SqxElfFile::Contents(const Symbol& object) const
{
    if (object.kind != Kind::Object)
        return {};
    return object.size == 0 ? At(object.address) : BytesOf({object.address, object.size});
}

std::optional<std::string_view> SqxElfFile::TextAt(std::uint64_t address) const
{
    const Bytes bytes = At(address);
    const auto end = std::find(bytes.begin(), bytes.end(), std::byte{0});
    if (end == bytes.end())
        return std::nullopt;
    return std::string_view(reinterpret_cast<const char*>(bytes.data()),
                            static_cast<std::size_t>(end - bytes.begin()));
}

// Symbols

SqxElfFile::Symbol SqxElfFile::Find(std::string_view name) const
{
    if (!m_isLibrary)
        return {};
    return m_gnuHash != 0 ? FindByGnuHash(name) : FindByHash(name);
}

/// Layout of the table: the number of buckets, the first hashed symbol, the number of words of a
/// Bloom filter, a shift; the filter; the buckets; a hash per symbol, whose lowest bit ends a
/// chain.
SqxElfFile::Symbol SqxElfFile::FindByGnuHash(std::string_view name) const
{
    using Word = std::uint32_t;
    const Bytes table = At(m_gnuHash);
    const auto buckets = RecordAt<Word>(table, 0);
    const auto first = RecordAt<Word>(table, sizeof(Word));
    const auto filter = RecordAt<Word>(table, 2 * sizeof(Word));
    if (!buckets || !first || !filter || *buckets == 0)
        return {};
    const std::uint64_t bucketsAt = 4 * sizeof(Word) + std::uint64_t{*filter} * sizeof(ElfW(Addr));
    const std::uint64_t chainsAt = bucketsAt + std::uint64_t{*buckets} * sizeof(Word);
    const Word hash = GnuHashOf(name);
    const auto begin =
        RecordAt<Word>(table, bucketsAt + std::uint64_t{hash % *buckets} * sizeof(Word));
    if (!begin || *begin < *first)
        return {};
    for (std::uint64_t index = *begin;; ++index) {
        const auto entry = RecordAt<Word>(table, chainsAt + (index - *first) * sizeof(Word));
        if (!entry)
            return {};
        if ((*entry | 1U) == (hash | 1U))
            if (const Symbol symbol = SymbolAt(index, name); symbol.kind != Kind::None)
                return symbol;
        if ((*entry & 1U) != 0)
            return {};
    }
}

/// Layout of the table: the numbers of buckets and of symbols; the buckets; the next symbol of the
/// chain for each symbol.
SqxElfFile::Symbol SqxElfFile::FindByHash(std::string_view name) const
{
    using Word = std::uint32_t;
    const Bytes table = At(m_hash);
    const auto buckets = RecordAt<Word>(table, 0);
    const auto symbols = RecordAt<Word>(table, sizeof(Word));
    if (m_hash == 0 || !buckets || !symbols || *buckets == 0)
        return {};
    auto index = RecordAt<Word>(table, (2 + std::uint64_t{HashOf(name) % *buckets}) * sizeof(Word));
    // A chain in a bad file may be circular.
    for (Word steps = 0; index && *index != 0 && steps < *symbols; ++steps) {
        if (const Symbol symbol = SymbolAt(*index, name); symbol.kind != Kind::None)
            return symbol;
        index = RecordAt<Word>(table, (2 + std::uint64_t{*buckets} + *index) * sizeof(Word));
    }
    return {};
}

/// Returns the symbol; one of kind `None` unless it has this name and is defined in this file.
SqxElfFile::Symbol SqxElfFile::SymbolAt(std::uint64_t index, std::string_view name) const
{
    const auto symbol = RecordAt<ElfW(Sym)>(At(m_symbols), index * sizeof(ElfW(Sym)));
    if (!symbol || symbol->st_shndx == SHN_UNDEF)
        return {};
    const Bytes strings = BytesOf(m_strings);
    const std::uint64_t at = symbol->st_name;
    if (at > strings.size() || strings.size() - at <= name.size() ||
        std::memcmp(strings.data() + at, name.data(), name.size()) != 0 ||
        strings[at + name.size()] != std::byte{0})
        return {};
    return {KindOf(symbol->st_info), symbol->st_value, symbol->st_size};
}

// Pointers

std::vector<std::optional<std::uint64_t>> SqxElfFile::PointersAt(std::uint64_t address,
                                                                 std::size_t count) const
{
    const Bytes bytes = At(address);
    const auto stored = [&](std::uint64_t i) {
        return std::uint64_t{RecordAt<ElfW(Addr)>(bytes, i * sizeof(ElfW(Addr))).value_or(0)};
    };
    std::vector<std::optional<std::uint64_t>> pointers(
        std::min(count, bytes.size() / sizeof(ElfW(Addr))));
    // A nonzero number without a relocation is not an address.
    for (std::size_t i = 0; i < pointers.size(); ++i)
        if (stored(i) == 0)
            pointers[i] = 0;
    const auto apply = [&](std::uint64_t place, auto value) {
        const std::uint64_t i = (place - address) / sizeof(ElfW(Addr));
        if (place >= address && (place - address) % sizeof(ElfW(Addr)) == 0 && i < pointers.size())
            pointers[i] = value(i);
    };
    const Bytes relocations = BytesOf(m_relocations);
    for (std::uint64_t at = 0; const auto entry = RecordAt<ElfW(Rela)>(relocations, at);
         at += sizeof *entry)
        apply(entry->r_offset, [&](std::uint64_t) {
            return Relocated(entry->r_info, static_cast<std::uint64_t>(entry->r_addend));
        });
    const Bytes bare = BytesOf(m_bareRelocations);
    for (std::uint64_t at = 0; const auto entry = RecordAt<ElfW(Rel)>(bare, at);
         at += sizeof *entry)
        apply(entry->r_offset,
              [&](std::uint64_t i) { return Relocated(entry->r_info, stored(i)); });
    ForEachPackedRelocation([&](std::uint64_t place) { apply(place, stored); });
    return pointers;
}

/// Visits the address of each packed relocation. An even entry is an address; the odd entries after
/// it are bit maps of the words that follow that address.
template <class Visit>
void SqxElfFile::ForEachPackedRelocation(const Visit& visit) const
{
    constexpr std::uint64_t word = sizeof(ElfW(Addr));
    constexpr unsigned int wordsOfEntry = 8 * word - 1;
    const Bytes entries = BytesOf(m_packedRelocations);
    std::uint64_t place = 0;
    for (std::uint64_t at = 0; const auto entry = RecordAt<ElfW(Addr)>(entries, at); at += word) {
        if ((*entry & 1) == 0) {
            visit(*entry);
            place = *entry + word;
            continue;
        }
        for (unsigned int bit = 0; bit < wordsOfEntry; ++bit)
            if ((*entry >> (bit + 1) & 1) != 0)
                visit(place + bit * word);
        place += wordsOfEntry * word;
    }
}

std::optional<std::uint64_t> SqxElfFile::Relocated(std::uint64_t information,
                                                   std::uint64_t addend) const
{
    if (RelocationType(information) == k_machine.relative)
        return addend;
    if (RelocationType(information) != k_machine.absolute)
        return std::nullopt;
    const auto symbol =
        RecordAt<ElfW(Sym)>(At(m_symbols), RelocationSymbol(information) * sizeof(ElfW(Sym)));
    if (!symbol || symbol->st_shndx == SHN_UNDEF)
        return std::nullopt;
    return symbol->st_value + addend;
}

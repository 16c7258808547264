#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// A shared library, read as a file: its exports are found without loading it, so none of its code
/// runs. The file is not trusted: no content can make this class read outside it.
///
/// Addresses are those of the file, before a loader moves the library.
class SqxElfFile {
public:
    using Bytes = std::span<const std::byte>;

    enum class Kind { None, Function, Object, Other };

    struct Symbol {
        Kind kind = Kind::None;  // `None` if the library does not define it
        std::uint64_t address = 0;
        std::uint64_t size = 0;  // 0 if the library does not specify it
    };

    /// Reads the whole file. The result has no bytes if the file does not exist, is not a regular
    /// file or cannot be read.
    [[nodiscard]] static SqxElfFile Open(const std::string& path);
    explicit SqxElfFile(std::vector<std::byte> bytes);

    /// True for a shared library for this machine whose segments are all complete: the system's
    /// loader would crash on a truncated one. For any other file the operations below find nothing.
    [[nodiscard]] bool IsLibrary() const { return m_isLibrary; }

    /// Finds the exported symbol of that name, in expected constant time.
    [[nodiscard]] Symbol Find(std::string_view name) const;
    /// Returns the contents of the section with this name; empty if there is none. A library need
    /// not have sections.
    [[nodiscard]] Bytes Section(std::string_view name) const;
    /// Returns the bytes from the address to the end of its segment; empty if no readable segment
    /// in the file contains the address.
    [[nodiscard]] Bytes At(std::uint64_t address) const;
    /// Returns the bytes of an object; if it has no size, up to the end of its segment. Empty for
    /// any other symbol.
    [[nodiscard]] Bytes Contents(const Symbol& object) const;
    /// Returns the text at the address; none unless its terminating null is in the same segment.
    [[nodiscard]] std::optional<std::string_view> TextAt(std::uint64_t address) const;
    /// Returns the pointers at the address, with relocations applied: `count` of them, or those up
    /// to the end of the segment. An entry has no value if it is a pointer into another library, or
    /// a number other than 0 that is not relocated, or if its relocation is of another type than
    /// those of pointers. O(r + count) for r relocations.
    [[nodiscard]] std::vector<std::optional<std::uint64_t>> PointersAt(std::uint64_t address,
                                                                       std::size_t count) const;

private:
    struct Segment {
        std::uint64_t address;
        std::uint64_t offset;  // in the file
        std::uint64_t size;
    };

    /// The address and the size in bytes of a table, as the dynamic section specifies them.
    struct Table {
        std::uint64_t address = 0;
        std::uint64_t size = 0;
    };

    [[nodiscard]] bool ReadHeaders();
    [[nodiscard]] bool ReadDynamic(Bytes entries);
    [[nodiscard]] Bytes BytesOf(const Table& table) const;
    [[nodiscard]] Symbol FindByGnuHash(std::string_view name) const;
    [[nodiscard]] Symbol FindByHash(std::string_view name) const;
    [[nodiscard]] Symbol SymbolAt(std::uint64_t index, std::string_view name) const;
    template <class Visit>
    void ForEachPackedRelocation(const Visit& visit) const;
    [[nodiscard]] std::optional<std::uint64_t> Relocated(std::uint64_t information,
                                                         std::uint64_t addend) const;

    std::vector<std::byte> m_bytes;
    bool m_isLibrary = false;
    std::vector<Segment> m_segments;  // only those that are loaded and readable
    Table m_strings;
    Table m_relocations;      // with addends
    Table m_bareRelocations;  // relocations whose addends are stored at their address
    Table m_packedRelocations;
    std::uint64_t m_symbols = 0;
    std::uint64_t m_hash = 0;
    std::uint64_t m_gnuHash = 0;
};

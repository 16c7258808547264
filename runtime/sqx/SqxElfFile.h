#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// A shared library, read as a file: what it exports is found without loading it, so that none of
/// its code runs. The file is not trusted: nothing is read outside of it, whatever it holds.
///
/// Addresses are those of the file, before a loader moves the library.
class SqxElfFile {
public:
    using Bytes = std::span<const std::byte>;

    enum class Kind { None, Function, Object, Other };

    struct Symbol {
        Kind kind = Kind::None;  // none if the library itself does not define it
        std::uint64_t address = 0;
        std::uint64_t size = 0;  // 0 if the library does not say
    };

    /// Reads all of the file; one that is not there, or is no regular file, is empty.
    [[nodiscard]] static SqxElfFile Open(const std::string& path);
    explicit SqxElfFile(std::vector<std::byte> bytes);

    /// It is a shared library of this machine, and holds each of its segments to the end: the
    /// loader of the system ends the process for one that is cut short. For any other file what
    /// follows finds nothing.
    [[nodiscard]] bool IsLibrary() const { return m_isLibrary; }

    /// What the library exports by that name, in expected constant time.
    [[nodiscard]] Symbol Find(std::string_view name) const;
    /// What the file holds from the address on to the end of its segment; empty if nothing.
    [[nodiscard]] Bytes At(std::uint64_t address) const;
    /// The bytes of an object; those to the end of its segment if it has no size. None of any other
    /// symbol.
    [[nodiscard]] Bytes Contents(const Symbol& object) const;
    /// The text at the address; none unless its null stands in the same segment.
    [[nodiscard]] std::optional<std::string_view> TextAt(std::uint64_t address) const;
    /// The pointers at the address, as the loader would leave them; none for one that points to
    /// another library. O(r + count) for r relocations.
    [[nodiscard]] std::vector<std::optional<std::uint64_t>> PointersAt(std::uint64_t address,
                                                                       std::size_t count) const;

private:
    struct Segment {
        std::uint64_t address;
        std::uint64_t offset;  // in the file
        std::uint64_t size;
    };

    /// A part of the dynamic section: where a table begins, and how many bytes it has.
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
    std::vector<Segment> m_segments;  // that are loaded
    Table m_strings;
    Table m_relocations;      // with addends
    Table m_bareRelocations;  // whose addends stand where they are applied
    Table m_packedRelocations;
    std::uint64_t m_symbols = 0;
    std::uint64_t m_hash = 0;
    std::uint64_t m_gnuHash = 0;
};

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A place as the protocol counts: lines and UTF-16 units of a line, both from 0.
struct SqxLsPosition {
    std::size_t line = 0;
    std::size_t character = 0;

    auto operator<=>(const SqxLsPosition&) const = default;
};

/// A place as the compiler counts: lines and bytes of a line, both from 1.
struct SqxLsPlace {
    int line = 1;
    int column = 1;
};

/// A half-open range of bytes of a text.
struct SqxLsSpan {
    std::size_t begin = 0;
    std::size_t end = 0;

    [[nodiscard]] std::size_t Length() const { return end - begin; }
    bool operator==(const SqxLsSpan&) const = default;
};

/// A text, and the conversions between the ways in which its places are counted. Any bytes may be
/// in it: one that belongs to no UTF-8 character counts as one unit, as the replacement character
/// that an editor shows in its place.
///
/// Conversions cost a search in the table of lines and a walk over one line.
class SqxLsText {
public:
    explicit SqxLsText(std::string bytes = {});

    [[nodiscard]] const std::string& Bytes() const { return m_bytes; }
    [[nodiscard]] std::string_view Part(const SqxLsSpan& span) const;

    // What lies after the end of a line or of the text is taken as that end, as the protocol has
    // it.
    [[nodiscard]] std::size_t OffsetOf(const SqxLsPosition& position) const;
    [[nodiscard]] std::size_t OffsetOf(const SqxLsPlace& place) const;
    [[nodiscard]] SqxLsPosition PositionOf(std::size_t offset) const;
    [[nodiscard]] SqxLsPlace PlaceOf(std::size_t offset) const;

    /// The line that holds the offset, without its line break and the blanks around it.
    [[nodiscard]] SqxLsSpan LineAround(std::size_t offset) const;
    /// The letters, digits and underscores around the offset, or those that end at it. May be
    /// empty.
    [[nodiscard]] SqxLsSpan WordAt(std::size_t offset) const;

    /// O(n): the table of lines is made again.
    void Replace(const SqxLsSpan& span, std::string_view text);

private:
    void FindLines();

    std::string m_bytes;
    std::vector<std::size_t> m_lines;          // of the protocol: LF, CR LF and CR end one
    std::vector<std::size_t> m_compilerLines;  // of the compiler: a CR alone ends none
};

[[nodiscard]] bool SqxLsIsWordByte(char c);

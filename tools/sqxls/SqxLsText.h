#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A place as counted by the protocol: lines and UTF-16 units of a line, both from 0.
struct SqxLsPosition {
    std::size_t line = 0;
    std::size_t character = 0;

    auto operator<=>(const SqxLsPosition&) const = default;
};

/// A place as counted by the compiler: lines and bytes of a line, both from 1.
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

/// A text, with conversions between byte offsets, positions and places. A text may contain any
/// bytes: a byte that is not part of a UTF-8 character counts as one unit, like the replacement
/// character that an editor shows for that byte.
///
/// Conversions cost at most a search in the table of lines and a walk over one line.
class SqxLsText {
public:
    explicit SqxLsText(std::string bytes = {});

    [[nodiscard]] const std::string& Bytes() const { return m_bytes; }
    [[nodiscard]] std::string_view Part(const SqxLsSpan& span) const;

    // Arguments after the end of their line or of the text are moved back to that end, as the
    // protocol requires for positions.
    [[nodiscard]] std::size_t OffsetOf(const SqxLsPosition& position) const;
    [[nodiscard]] std::size_t OffsetOf(const SqxLsPlace& place) const;
    [[nodiscard]] SqxLsPosition PositionOf(std::size_t offset) const;
    [[nodiscard]] SqxLsPlace PlaceOf(std::size_t offset) const;

    /// Returns the line that contains the offset, without its line break and the blanks at both
    /// ends.
    [[nodiscard]] SqxLsSpan LineAround(std::size_t offset) const;
    /// Returns the range of letters, digits and underscores that contains the offset, or begins or
    /// ends at it; may be empty.
    [[nodiscard]] SqxLsSpan WordAt(std::size_t offset) const;

    /// Replaces a part of the text. O(n), since the table of lines is rebuilt.
    void Replace(const SqxLsSpan& span, std::string_view text);

private:
    void FindLines();

    std::string m_bytes;
    std::vector<std::size_t> m_lines;          // line starts: LF, CR LF and CR end a line
    std::vector<std::size_t> m_compilerLines;  // as the compiler counts: a lone CR ends no line
};

/// True for a letter, a digit and the underscore.
[[nodiscard]] bool SqxLsIsWordByte(char c);

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Splits the stream of the protocol into messages. Each begins with a header, whose line
/// "Content-Length: N" states the number of bytes of the content that follows.
class SqxLsFraming {
public:
    /// The largest content, in bytes.
    static constexpr std::size_t k_maxLength = std::size_t{64} << 20U;

    struct Content {
        std::string text;
        std::string fault;  // why there is no text: no header, no length, or too long; else empty
    };

    /// Appends the next bytes of the stream.
    void Add(std::string_view bytes) { m_bytes += bytes; }
    /// Returns the next message, or the fault of an invalid one; nothing if more bytes are needed.
    /// A message that is too long is skipped without being stored.
    [[nodiscard]] std::optional<Content> Next();

    /// Returns the message with this content: its header and the content.
    [[nodiscard]] static std::string Framed(std::string_view content);

private:
    /// Once a header is complete, removes it and sets `m_length`. Returns a fault if the header is
    /// invalid or too long, or states a length that is too large; otherwise nothing.
    [[nodiscard]] std::optional<Content> ReadHeader();

    std::string m_bytes;
    std::optional<std::size_t> m_length;  // of the message whose header has been read
    std::size_t m_skipped = 0;            // bytes still to be skipped
};

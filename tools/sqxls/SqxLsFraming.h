#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Takes the stream of the protocol apart: each message is a header, whose line "Content-Length: N"
/// counts the bytes of the content after it.
class SqxLsFraming {
public:
    static constexpr std::size_t k_maxLength = std::size_t{64} << 20U;

    struct Content {
        std::string text;
        std::string fault;  // why there is no text: a header without a length, one that is too long
    };

    /// Takes the next bytes of the stream.
    void Add(std::string_view bytes) { m_bytes += bytes; }
    /// The next message, or nothing until more bytes have come. A message that is too long is
    /// passed over without being kept.
    [[nodiscard]] std::optional<Content> Next();

    /// A message with its header.
    [[nodiscard]] static std::string Framed(std::string_view content);

private:
    [[nodiscard]] std::optional<Content> ReadHeader();

    std::string m_bytes;
    std::optional<std::size_t> m_length;  // of the message whose header has been read
    std::size_t m_skipped = 0;            // bytes that are still to be passed over
};

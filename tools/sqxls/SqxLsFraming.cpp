// Tested by tests/sqxls/SqxLsProgramTest.cpp, and by the fuzz target of the protocol.

#include "sqxls/SqxLsFraming.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace {

constexpr std::size_t k_maxHeader = 8192;

/// Returns the content length that a header states; nothing if it states none.
std::optional<std::size_t> LengthIn(std::string_view header)
{
    constexpr std::string_view k_name = "content-length:";
    while (!header.empty()) {
        const std::size_t end = std::min(header.find('\n'), header.size());
        std::string line(header.substr(0, end));
        header.remove_prefix(std::min(end + 1, header.size()));
        for (char& c : line)
            c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        if (!line.starts_with(k_name))
            continue;
        const std::size_t digits =
            std::min(line.find_first_not_of(" \t", k_name.size()), line.size());
        std::size_t length = 0;
        const auto [rest, failure] =
            std::from_chars(line.data() + digits, line.data() + line.size(), length);
        if (failure == std::errc())
            return length;
    }
    return std::nullopt;
}

}  // namespace

std::optional<SqxLsFraming::Content> SqxLsFraming::ReadHeader()
{
    const std::size_t crlf = m_bytes.find("\r\n\r\n");
    const std::size_t lf = m_bytes.find("\n\n");  // some clients omit the carriage returns
    const std::size_t end = std::min(crlf, lf);
    if (end == std::string::npos) {
        if (m_bytes.size() <= k_maxHeader)
            return std::nullopt;
        m_bytes.clear();
        return Content{{}, "A message has no header"};
    }
    const auto length = LengthIn(std::string_view(m_bytes).substr(0, end));
    m_bytes.erase(0, end + (end == crlf ? 4 : 2));
    if (!length)
        return Content{{}, "The header of a message has no Content-Length"};
    if (*length > k_maxLength) {
        m_skipped = *length;
        return Content{{}, "A message is longer than 64 MB"};
    }
    m_length = length;
    return std::nullopt;
}

std::optional<SqxLsFraming::Content> SqxLsFraming::Next()
{
    const std::size_t skipped = std::min(m_skipped, m_bytes.size());
    m_bytes.erase(0, skipped);
    m_skipped -= skipped;
    if (m_skipped > 0)
        return std::nullopt;
    if (!m_length)
        if (auto fault = ReadHeader())
            return fault;
    if (!m_length || m_bytes.size() < *m_length)
        return std::nullopt;
    Content content{m_bytes.substr(0, *m_length), {}};
    m_bytes.erase(0, *m_length);
    m_length.reset();
    return content;
}

std::string SqxLsFraming::Framed(std::string_view content)
{
    return "Content-Length: " + std::to_string(content.size()) + "\r\n\r\n" + std::string(content);
}

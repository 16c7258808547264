// Tested by tests/sqxls/SqxLsTextTest.cpp.

#include "sqxls/SqxLsUri.h"

#include <cctype>
#include <charconv>
#include <filesystem>

std::string SqxLsPathOf(std::string_view uri)
{
    constexpr std::string_view k_scheme = "file://";
    if (uri.starts_with('/'))  // not a URI, but some clients send the bare path
        return std::filesystem::path(uri).lexically_normal().string();
    if (!uri.starts_with(k_scheme))
        return std::string(uri);
    std::string_view rest = uri.substr(k_scheme.size());
    rest.remove_prefix(std::min(rest.find('/'), rest.size()));  // skips the host name
    std::string path;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        unsigned code = 0;
        const char* const digits = rest.data() + i + 1;
        if (rest[i] == '%' && i + 2 < rest.size() &&
            std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2) {
            path += static_cast<char>(code);
            i += 2;
        } else {
            path += rest[i];
        }
    }
    return std::filesystem::path(path).lexically_normal().string();
}

std::string SqxLsUriOf(std::string_view path)
{
    if (!path.starts_with('/'))
        return std::string(path);
    constexpr std::string_view k_plain = "/-._~";
    constexpr char k_digits[] = "0123456789ABCDEF";
    std::string uri = "file://";
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte < 0x80 && std::isalnum(byte) != 0) || k_plain.find(c) != std::string_view::npos)
            uri += c;
        else
            ((uri += '%') += k_digits[byte >> 4U]) += k_digits[byte & 15U];
    }
    return uri;
}

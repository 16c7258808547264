#pragma once

#include <istream>
#include <string>

/// The rest of a stream, of any length. Iterators of streams take ten instructions for a character.
[[nodiscard]] inline std::string SlcAllOf(std::istream& in)
{
    std::string text;
    char part[8192];
    do {
        in.read(part, sizeof part);
        text.append(part, static_cast<std::size_t>(in.gcount()));
    } while (in);
    return text;
}

// Tested by tests/sqxview.

#include "sqxview/SqxViewShorten.h"

void SqxViewShorten(std::string& text, std::size_t most)
{
    if (text.size() <= most)
        return;
    constexpr std::size_t k_longest = 4;  // bytes of a character
    const auto isInCharacter = [&](std::size_t at) {
        return (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
    };
    std::size_t end = most;
    while (end > 0 && most - end < k_longest && isInCharacter(end))
        --end;
    text.resize(most - end < k_longest ? end : most);  // any cut will do if it is not UTF-8
    text += "\n... and more\n";
}

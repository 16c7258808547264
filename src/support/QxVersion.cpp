#include "support/QxVersion.h"

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int k_major = 1;
constexpr int k_minor = 0;
constexpr int k_release = 6;
constexpr const char* k_date = "Jul 30 2003";
constexpr const char* k_label = "BETA 2";
constexpr std::size_t k_longest = 64;

}  // namespace

char* QxGetVersionString()
{
    char* text = static_cast<char*>(std::malloc(k_longest));
    if (text)
        std::snprintf(text, k_longest, "%d.%d.%d (%s) \"%s\"", k_major, k_minor, k_release, k_date,
                      k_label);
    return text;
}

const char* QxGetCopyrightString()
{
    return SLC_COPYRIGHT;
}

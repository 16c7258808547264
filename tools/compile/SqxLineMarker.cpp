// Tested by tests/make/run.sh.

#include "compile/SqxLineMarker.h"

std::optional<SqxLineMarker> SqxReadLineMarker(std::string_view line)
{
    const std::size_t first = line.find('"');
    const std::size_t last = line.rfind('"');
    if (!line.starts_with('#') || first >= last || line[first + 1] == '<')
        return std::nullopt;
    SqxLineMarker marker;
    for (std::size_t i = first + 1; i < last; ++i) {
        if (line[i] == '\\' && i + 1 < last)
            ++i;
        marker.file += line[i];
    }
    const std::string_view flags = line.substr(last + 1);
    marker.enters = flags.starts_with(" 1");
    marker.returns = flags.starts_with(" 2");
    return marker;
}

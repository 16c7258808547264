// A report names places as `file:line:`. Each named line is collected with the lines around it, and
// lines that follow each other form one excerpt.
//
// Tested by tests/sqxview.

#include "sqxview/SqxViewReport.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <set>
#include <sstream>

namespace {

constexpr int k_around = 2;         // lines before and after each place
constexpr std::size_t k_most = 50;  // places per report

struct Place {
    std::string file;
    int line;
};

/// Returns the place in `file:line: text`; nothing if the text has another form. The name of the
/// file may contain colons.
std::optional<Place> PlaceOf(const std::string& text)
{
    for (std::size_t colon = text.find(':'); colon != std::string::npos;
         colon = text.find(':', colon + 1)) {
        int line = 0;
        const char* end = text.data() + text.size();
        const auto [rest, failure] = std::from_chars(text.data() + colon + 1, end, line);
        if (colon > 0 && failure == std::errc() && rest != end && *rest == ':' && line > 0)
            return Place{text.substr(0, colon), line};
    }
    return std::nullopt;
}

/// Returns each file that the report names, with the numbers of its named lines. Files are in the
/// order in which the report first names them.
std::vector<std::pair<std::string, std::set<int>>> PlacesOf(const std::string& report)
{
    std::vector<std::pair<std::string, std::set<int>>> files;
    std::istringstream lines(report);
    std::size_t count = 0;
    for (std::string line; count < k_most && std::getline(lines, line);) {
        const std::optional<Place> place = PlaceOf(line);
        if (!place)
            continue;
        ++count;
        const auto found = std::find_if(files.begin(), files.end(), [&](const auto& file) {
            return file.first == place->file;
        });
        if (found == files.end())
            files.push_back({place->file, {place->line}});
        else
            found->second.insert(place->line);
    }
    return files;
}

[[nodiscard]] bool IsNear(const std::set<int>& marked, int line)
{
    const auto next = marked.lower_bound(line - k_around);
    return next != marked.end() && *next <= line + k_around;
}

}  // namespace

std::vector<SqxViewExcerpt>
SqxViewExcerptsOf(const std::string& report,
                  const std::function<bool(const std::string& file, std::string& text)>& read)
{
    std::vector<SqxViewExcerpt> excerpts;
    for (const auto& [file, marked] : PlacesOf(report)) {
        std::string source;
        if (!read(file, source))
            continue;
        std::istringstream lines(source);
        int number = 0;
        bool isOpen = false;
        for (std::string line; std::getline(lines, line);) {
            ++number;
            const bool isShown = IsNear(marked, number);
            if (isShown && !isOpen)
                excerpts.push_back({file, {}});
            if (isShown)
                excerpts.back().lines.push_back({number, line, marked.contains(number)});
            isOpen = isShown;
        }
    }
    return excerpts;
}

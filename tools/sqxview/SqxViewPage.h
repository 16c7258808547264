#pragma once

#include <span>
#include <string_view>

/// A file of the page, as it is embedded in the program.
struct SqxViewPageFile {
    std::string_view path;  // in the address, such as "/page.css"; "/" is the page itself
    std::string_view type;  // for the header "Content-Type"
    std::string_view text;
};

/// Returns the HTML, CSS and JavaScript files of the folder `page`. The build writes their texts
/// into the source of this function, so they are valid as long as the program runs.
[[nodiscard]] std::span<const SqxViewPageFile> SqxViewPageFiles();

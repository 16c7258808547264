#pragma once

#include <string_view>

/// A file of the page, as it stands in the program.
struct SqxViewPageFile {
    std::string_view path;  // that a browser asks for
    std::string_view type;
    std::string_view text;
};

/// The file for a path; null if there is none.
[[nodiscard]] const SqxViewPageFile* SqxViewFindPageFile(std::string_view path);

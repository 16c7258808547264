#pragma once

#include <filesystem>
#include <string_view>

/// Writes a file that appears under its name only when it is complete, in place of an older one. If
/// the path names something other than a regular file, such as a pipe, it is written to directly.
/// Returns false after a failure, with the reason in `errno`; then no new file is left.
[[nodiscard]] bool SqxWriteWholeFile(const std::filesystem::path& path, std::string_view bytes);

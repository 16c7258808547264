#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// A source, and the subfolder of the output folder in which `--tree` puts its shader. For a source
/// in a folder that was named, this is its folder relative to the named one; for a file that was
/// named, its folder relative to the working directory, or "." if it is not below that. "." is the
/// output folder itself.
struct SqxSource {
    std::filesystem::path path;
    std::filesystem::path folder;
};

/// Returns the sources that `inputs` name, each once, ordered by absolute path: files, and all
/// `.sl` files in folders and their subfolders, except names that start with a dot. Throws
/// `SqxMakeError` for a missing file, a file that is not a source, or a folder without sources.
[[nodiscard]] std::vector<SqxSource> SqxListSources(const std::vector<std::string>& inputs);

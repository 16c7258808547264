#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// A source, and the subfolder of the output folder in which `--tree` puts its shader. If a folder
/// was named, this is the source's folder relative to the named one. If the file itself was named,
/// this is its folder relative to the working directory, or "." if the file is not below the
/// working directory. "." is the output folder itself.
struct SqxSource {
    std::filesystem::path path;
    std::filesystem::path folder;
};

/// Returns the sources that `inputs` name, each once, ordered by absolute path: files, and all
/// `.sl` files in folders and their subfolders, except names that start with a dot. Throws
/// `SqxMakeError` for an input that is missing or cannot be read, a file that is not a source, a
/// path with a line break, or a folder without sources.
[[nodiscard]] std::vector<SqxSource> SqxListSources(const std::vector<std::string>& inputs);

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
/// `.sl` files in folders and their subfolders, without the files and subfolders whose names start
/// with a dot. Throws `SqxMakeError` for an input that does not exist, a file whose name does not
/// end with `.sl`, a path with a line break, or a folder that cannot be read or has no sources.
[[nodiscard]] std::vector<SqxSource> SqxListSources(const std::vector<std::string>& inputs);

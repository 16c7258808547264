#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// A source, and the folder of the output in which a mirrored tree has its shader: the one in which
/// it is below the folder that was named, or for a file that was named the folder as written. "."
/// for the top.
struct SqxSource {
    std::filesystem::path path;
    std::filesystem::path folder;
};

/// The sources that `inputs` name, each once, in the order of their paths: files as they are, and
/// all `.sl` files in folders and below them, but for what is hidden by a dot. Throws
/// `SqxMakeError` for what is missing, is no source, or is a folder without shaders.
[[nodiscard]] std::vector<SqxSource> SqxListSources(const std::vector<std::string>& inputs);

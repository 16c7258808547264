#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// The sources that `inputs` name, each once, in the order of their paths: files as they are, and
/// all `.sl` files in folders and below them, but for what is hidden by a dot. Throws
/// `SqxMakeError` for what is missing, is no source, or is a folder without shaders.
[[nodiscard]] std::vector<std::filesystem::path>
SqxListSources(const std::vector<std::string>& inputs);

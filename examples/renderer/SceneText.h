#pragma once

#include <memory>
#include <string>

#include "World.h"

/// Reads the text of a scene, which `README.md` explains, and all files that it names: compiled
/// shaders from `folder`, pictures and meshes from there or from beside the scene. Throws
/// `std::runtime_error`, whose text begins with file and line.
[[nodiscard]] std::unique_ptr<World> ReadScene(const std::string& path, const std::string& folder);

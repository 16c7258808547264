#pragma once

#include <memory>
#include <string>

#include "World.h"

/// Reads a scene, whose format `README.md` explains, and all files that it names: compiled shaders
/// in `folder`, pictures and meshes in the folder of the scene or else in `folder`. Throws
/// `std::runtime_error`; if a line is at fault, the text of the error starts with file and line.
[[nodiscard]] std::unique_ptr<World> ReadScene(const std::string& path, const std::string& folder);

#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "sqxmake/SqxMakeOptions.h"
#include "sqxmake/SqxMakeState.h"
#include "sqxmake/SqxSourceList.h"

/// Returns the text of a ninja file that compiles each source by one step of `sqxmake`. If options
/// or environment variables change, the command or its response file changes too, so that ninja
/// compiles the sources again. Ninja also does so if the file `program`, an absolute path, changes.
/// The text depends only on the arguments and the environment.
[[nodiscard]] std::string SqxNinjaFile(const SqxMakeOptions& options,
                                       const std::vector<SqxSource>& sources,
                                       const SqxMakeState& state,
                                       const std::filesystem::path& program);

#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "sqxmake/SqxMakeOptions.h"
#include "sqxmake/SqxMakeState.h"
#include "sqxmake/SqxSourceList.h"

/// Returns the text of a ninja file that compiles each source by one step of `sqxmake`. If compiler
/// options or environment variables that change shaders differ from those of the last build, the
/// command or its response file differs too, so that ninja compiles the sources again. Ninja also
/// does so if the file `program`, the absolute path of `sqxmake`, changes. The text depends only on
/// the arguments, the environment and the working directory.
[[nodiscard]] std::string SqxNinjaFile(const SqxMakeOptions& options,
                                       const std::vector<SqxSource>& sources,
                                       const SqxMakeState& state,
                                       const std::filesystem::path& program);

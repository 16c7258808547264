#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "sqxmake/SqxMakeOptions.h"
#include "sqxmake/SqxMakeState.h"
#include "sqxmake/SqxSourceList.h"

/// Returns the text of a ninja file that compiles each source by one step of `sqxmake`. Options and
/// environment variables are part of the text of the command, so that a change of them compiles the
/// sources again, and so does a change of the file `program`, an absolute path. The text depends
/// only on the arguments and the environment.
[[nodiscard]] std::string SqxNinjaFile(const SqxMakeOptions& options,
                                       const std::vector<SqxSource>& sources,
                                       const SqxMakeState& state,
                                       const std::filesystem::path& program);

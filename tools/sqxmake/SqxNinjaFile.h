#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "sqxmake/SqxMakeOptions.h"
#include "sqxmake/SqxMakeState.h"
#include "sqxmake/SqxSourceList.h"

/// The text of a ninja file that compiles each source by one step of `sqxmake`. Other inputs of the
/// steps, options and variables of the environment, are part of the command's text, so that a
/// change of it counts as a change, and so does one of `program`, by its absolute path. Same
/// sources, same text: the order is theirs.
[[nodiscard]] std::string SqxNinjaFile(const SqxMakeOptions& options,
                                       const std::vector<SqxSource>& sources,
                                       const SqxMakeState& state,
                                       const std::filesystem::path& program);

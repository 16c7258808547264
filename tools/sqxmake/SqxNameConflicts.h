#pragma once

#include <filesystem>
#include <map>
#include <vector>

#include "sqxmake/SqxMakeOptions.h"
#include "sqxmake/SqxSourceList.h"

/// Maps an output to the sources that would produce it, if there are several. Sources in which
/// `SqxShaderName` finds no name are ignored. Paths of outputs are relative to the output folder.
using SqxNameConflicts = std::map<std::filesystem::path, std::vector<std::filesystem::path>>;

/// Returns the conflicts between sources; with `--tree`, only those within the same subfolder.
[[nodiscard]] SqxNameConflicts SqxFindNameConflicts(const std::vector<SqxSource>& sources,
                                                    const SqxMakeOptions& options);
/// Prints one report for each output, and advice if the build ends because of conflicts.
void SqxReportNameConflicts(const SqxNameConflicts& conflicts, const SqxMakeOptions& options);

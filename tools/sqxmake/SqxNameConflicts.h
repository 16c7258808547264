#pragma once

#include <filesystem>
#include <map>
#include <vector>

#include "sqxmake/SqxMakeOptions.h"
#include "sqxmake/SqxSourceList.h"

/// The outputs that several sources would make, each with those sources, as far as `SqxShaderName`
/// knows their shaders. The paths of outputs are relative to the output folder.
using SqxNameConflicts = std::map<std::filesystem::path, std::vector<std::filesystem::path>>;

[[nodiscard]] SqxNameConflicts SqxFindNameConflicts(const std::vector<SqxSource>& sources,
                                                    const SqxMakeOptions& options);
/// One report for each output.
void SqxReportNameConflicts(const SqxNameConflicts& conflicts, const SqxMakeOptions& options);

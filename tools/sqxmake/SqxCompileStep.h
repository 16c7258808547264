#pragma once

#include <string_view>

#include "sqxmake/SqxMakeOptions.h"

/// The variable of the environment by which `sqxmake` marks the steps that it started. A refused
/// source is then no failure; with the value `k_sqxMakeStops` it stops the steps that follow.
inline constexpr const char* k_sqxMakeMember = "SQXMAKE_MEMBER";
inline constexpr std::string_view k_sqxMakeStops = "stop";

/// Compiles one source, whether it changed or not, for a build system that decides that.
///
/// Afterwards the stamp names the source and its output, and `STAMP.d` names in the syntax of
/// makefiles all files that the preprocessor read and all shadeop libraries that are called. An
/// output that came out as it was before keeps its time. Of a refused source nothing is left, not
/// even the output of an earlier run. Gives the exit status; throws `SqxMakeError` for what is no
/// fault of the source.
[[nodiscard]] int SqxCompileStep(const SqxMakeOptions& options);

/// Compiles one source for another program, see `SqxSourceCompile::RunApart`. Gives the exit
/// status.
[[nodiscard]] int SqxCompileForAnother(const SqxMakeOptions& options);

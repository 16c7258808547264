#pragma once

#include <string_view>

#include "sqxmake/SqxMakeOptions.h"

/// The environment variable that `sqxmake` sets for the steps that it starts. A step then succeeds
/// even if its source has errors; if the value is `k_sqxMakeStops`, later steps then do nothing.
inline constexpr const char* k_sqxMakeMember = "SQXMAKE_MEMBER";
inline constexpr std::string_view k_sqxMakeStops = "stop";

/// Compiles one source unconditionally, for a build system that decides what to compile.
///
/// Afterwards the stamp contains the paths of the source and its output, and `STAMP.d` lists, in
/// the syntax of makefiles, all files that the preprocessor read and all shadeop libraries that the
/// source calls. An output whose contents did not change keeps its time. If the source has errors,
/// no output is left, not even that of an earlier run. Returns the exit status. Throws
/// `SqxMakeError` for errors that are not in the source.
[[nodiscard]] int SqxCompileStep(const SqxMakeOptions& options);

/// Compiles one source for another program, see `SqxSourceCompile::RunApart`. Returns the exit
/// status.
[[nodiscard]] int SqxCompileForAnother(const SqxMakeOptions& options);

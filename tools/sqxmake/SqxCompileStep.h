#pragma once

#include <string_view>

#include "sqxmake/SqxMakeOptions.h"

/// The environment variable that `sqxmake` sets for the steps of a build. It makes a step succeed
/// even if its source has errors. With the value `k_sqxMakeStops`, steps after such a source do
/// nothing.
inline constexpr const char* k_sqxMakeMember = "SQXMAKE_MEMBER";
inline constexpr std::string_view k_sqxMakeStops = "stop";

/// Compiles one source even if it has not changed, for a build system that decides what to compile.
///
/// Afterwards the stamp contains the paths of the source and its output, and `STAMP.d` lists, in
/// the syntax of makefiles, the files that the preprocessor read and the shadeop libraries that the
/// source calls; in a build of `sqxmake`, only those that ninja can name. An output whose contents
/// did not change keeps its time. If the source has errors, no output is left, not even that of an
/// earlier run. Returns the exit status. Throws `SqxMakeError` for errors that are not in the
/// source.
[[nodiscard]] int SqxCompileStep(const SqxMakeOptions& options);

/// Compiles one source for another program, see `SqxSourceCompile::RunApart`. Returns the exit
/// status.
[[nodiscard]] int SqxCompileForAnother(const SqxMakeOptions& options);

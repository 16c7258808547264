#pragma once

#include <string_view>

#include "sqxmake/SqxMakeOptions.h"

/// The environment variable that `sqxmake` sets for the steps of a build. It makes a step succeed
/// even if its source has errors. With the value `k_sqxMakeStops`, steps that start after such a
/// source has failed compile nothing.
inline constexpr const char* k_sqxMakeMember = "SQXMAKE_MEMBER";
inline constexpr std::string_view k_sqxMakeStops = "stop";

/// Compiles one source even if it has not changed, for a build system that decides what to compile.
///
/// After a success the stamp contains the path of the source, and that of its output relative to
/// the output folder. `STAMP.d` lists, in the syntax of makefiles, the files that the preprocessor
/// read and the shadeop libraries that the source calls; in a build of `sqxmake`, only those that
/// ninja can name. An output whose contents did not change keeps its time. If the source has errors
/// or another source owns the output, no stamp and no output of this source are left, not even
/// those of an earlier run.
///
/// Returns the exit status: 0, or, outside a build of `sqxmake`, 1 if there is no output. Throws
/// `SqxMakeError`, `SqxCompileError` or `std::filesystem::filesystem_error` for errors that are not
/// in the source.
[[nodiscard]] int SqxCompileStep(const SqxMakeOptions& options);

/// Compiles one source for another program, see `SqxSourceCompile::RunApart`. Returns the exit
/// status, 0 if there is an output. Throws `SqxCompileError` for an invalid option, or if the
/// results cannot be written.
[[nodiscard]] int SqxCompileForAnother(const SqxMakeOptions& options);

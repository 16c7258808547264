#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "compiler/QxCompiler.h"
#include "sqxls/SqxLsJson.h"

/// The user's settings in the editor; docs/editors.md lists them.
struct SqxLsSettings {
    std::vector<std::string> options;  // of the compiler, in the spelling of its command line
    std::string stateFolder;           // of sqxmake; if empty, '.sqxmake' beside or above a source
    std::string preview = "sqxview";   // program that shows previews
    bool showsDetails = true;          // inlay hints with the detail of locals
    bool showsArguments = true;        // inlay hints with the names of formals
};

/// Reads settings. Members that are missing, empty or have another type keep their defaults.
/// Relative folders refer to `folder`.
[[nodiscard]] SqxLsSettings SqxLsReadSettings(const SqxJson& json, const std::string& folder);

/// Returns the options for compiling a source, without optimization and with advice. The other
/// options come from three places, in this order: the last run of `sqxmake`, if the source is one
/// of its sources; the nearest `compile_flags.txt` in the folder of the source or above; the
/// settings. A later option overrides an earlier one, but folders for included files add up; the
/// earlier ones are searched first. Reads a few small files.
[[nodiscard]] QxCompileOptions SqxLsOptionsFor(const std::string& path,
                                               const SqxLsSettings& settings);

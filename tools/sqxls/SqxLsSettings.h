#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "compiler/QxCompiler.h"
#include "sqxls/SqxLsJson.h"

/// The settings of the user of an editor; docs/editors.md lists them.
struct SqxLsSettings {
    std::vector<std::string> options;  // of the compiler, in the spelling of its command line
    std::string stateFolder;           // of sqxmake; empty: '.sqxmake' beside or above a source
    std::string preview = "sqxview";   // program that shows previews
    bool showsDetails = true;          // as inlay hints
    bool showsArguments = true;
};

/// Reads settings. Members that are missing or have another type keep their defaults. Relative
/// paths refer to `folder`.
[[nodiscard]] SqxLsSettings SqxLsReadSettings(const SqxJson& json, const std::string& folder);

/// Returns the options for compiling a source; later ones override earlier ones. They are those of
/// the `sqxmake` that builds the source, those of the nearest `compile_flags.txt` in its folder or
/// above, one per line, and those of the settings. Reads a few small files.
[[nodiscard]] QxCompileOptions SqxLsOptionsFor(const std::string& path,
                                               const SqxLsSettings& settings);

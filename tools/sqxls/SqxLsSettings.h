#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "compiler/QxCompiler.h"
#include "sqxls/SqxLsJson.h"

/// What the user of an editor sets; docs/editors.md names the members.
struct SqxLsSettings {
    std::vector<std::string> options;  // of the compiler, in the spelling of its command line
    std::string stateFolder;           // of sqxmake; empty: '.sqxmake' beside or above a source
    std::string preview = "sqxview";   // program
    bool showsDetails = true;          // as inlay hints
    bool showsArguments = true;
};

/// Members that are missing, or not of their type, keep what they are by default. Relative paths
/// are taken from `folder`.
[[nodiscard]] SqxLsSettings SqxLsReadSettings(const SqxJson& json, const std::string& folder);

/// The options with which a source is compiled, later ones overruling earlier ones: those of the
/// `sqxmake` that builds the source, those of the nearest `compile_flags.txt` beside or above it,
/// one a line, and those of the settings. Reads a few small files.
[[nodiscard]] QxCompileOptions SqxLsOptionsFor(const std::string& path,
                                               const SqxLsSettings& settings);

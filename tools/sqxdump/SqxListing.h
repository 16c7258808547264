#pragma once

#include <string>
#include <vector>

#include "sqxdump/SqxShaderFacts.h"

/// A shader to be listed: its name and the facts from its file.
struct SqxListed {
    std::string file;   // as given; "-" for standard input
    std::string title;  // the shader's name, which is that of its file; empty if there is none
    SqxShaderFacts facts;
};

/// Returns type and name, a table of the parameters, and the facts of the shader. If `wanted` is
/// not empty, lists only these parameters and omits the facts. Empty if the type is unknown.
[[nodiscard]] std::string SqxListingText(const SqxListed& listed,
                                         const std::vector<std::string>& wanted);

/// Returns a JSON object with all facts except `defaultsFault`, in one line, see docs/listing.md.
/// If `wanted` is not empty, its list of parameters contains only these. Throws `SqxUsageError` in
/// a build without nlohmann-json.
[[nodiscard]] std::string SqxListingJson(const SqxListed& listed,
                                         const std::vector<std::string>& wanted);

/// Returns the parameters with these names, in the order of the shader; all if `wanted` is empty.
[[nodiscard]] std::vector<const SqxShaderFacts::Parameter*>
SqxWantedParameters(const SqxShaderFacts& facts, const std::vector<std::string>& wanted);

/// Returns "input" or "output"; empty if it is not known.
[[nodiscard]] const char* SqxClassName(const SqxShaderFacts::Parameter& parameter);

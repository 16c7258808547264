#pragma once

#include <string>
#include <vector>

#include "sqxdump/SqxShaderFacts.h"

/// A shader as it is listed: its name and the facts from its file.
struct SqxListed {
    std::string file;   // as given; "-" for standard input
    std::string title;  // the shader's name, which is that of its file; empty if there is none
    SqxShaderFacts facts;
};

/// Type and name, a table of the parameters, and then the facts of the shader. With names in
/// `wanted` only the lines of those parameters.
[[nodiscard]] std::string SqxListingText(const SqxListed& listed,
                                         const std::vector<std::string>& wanted);

/// The same as a JSON object in one line, see docs/listing.md. With names in `wanted` the object
/// has no other parameters.
[[nodiscard]] std::string SqxListingJson(const SqxListed& listed,
                                         const std::vector<std::string>& wanted);

/// The parameters whose names are wanted, in the shader's order; all if there are no such names.
[[nodiscard]] std::vector<const SqxShaderFacts::Parameter*>
SqxWantedParameters(const SqxShaderFacts& facts, const std::vector<std::string>& wanted);

/// "input" or "output"; empty if it is not known.
[[nodiscard]] const char* SqxClassName(const SqxShaderFacts::Parameter& parameter);

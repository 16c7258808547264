// The rows are by primitive, since overloads may differ: faceforward(v, I) reads `Ng` and
// faceforward(v, I, n) does not.
//
// `du` and `dv` of the derivatives are arguments of the instruction, but not of the call in the
// source; the corners of a texture's footprint are computed from the variables in its row.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcImplicitReads, ...), row by row.

#include "symbols/SlcImplicitReads.h"

namespace {

// clang-format off
//   primitive                    lights  variables
constexpr SlcImplicitReads k_reads[] = {
    {"CALL_PRIM_AMBIENT",         true,   {"P", "L"}},
    {"CALL_PRIM_DIFFUSE",         true,   {"P", "L", "Cl"}},
    {"CALL_PRIM_SPECULAR",        true,   {"P", "L", "Cl"}},
    {"CALL_PRIM_SPECULARSTD",     true,   {"P", "L", "Cl"}},
    {"CALL_PRIM_PHONG",           true,   {"P", "L", "Cl"}},
    {"CALL_PRIM_FACEFORWARD",     false,  {"Ng"}},
    {"CALL_PRIM_DU_*",            false,  {"du"}},
    {"CALL_PRIM_DV_*",            false,  {"dv"}},
    {"CALL_PRIM_CALCULATENORMAL", false,  {"du", "dv"}},
    {"CALL_TEXTURE_*",            false,  {"s", "t", "du", "dv"}},
    {"CALL_ENVIRONMENT_*",        false,  {"du", "dv"}},
    {"CALL_SHADOW_*_LIGHT",       false,  {"du", "dv", "L"}},
    {"CALL_SHADOW_*",             false,  {"du", "dv"}},
    {"CALL_AREASHADOW_*_LIGHT",   false,  {"du", "dv", "L"}},
    {"CALL_AREASHADOW_*",         false,  {"du", "dv"}},
};
// clang-format on

constexpr bool Matches(std::string_view pattern, std::string_view name)
{
    const std::size_t star = pattern.find('*');
    if (star == std::string_view::npos)
        return pattern == name;
    const std::string_view end = pattern.substr(star + 1);
    return name.size() >= star + end.size() && name.starts_with(pattern.substr(0, star)) &&
           name.ends_with(end);
}

}  // namespace

const SlcImplicitReads* SlcImplicitReads::Of(std::string_view primitive)
{
    for (const SlcImplicitReads& row : k_reads)
        if (Matches(row.primitive, primitive))
            return &row;
    return nullptr;
}

std::span<const SlcImplicitReads> SlcImplicitReads::All()
{
    return k_reads;
}

// Texts about predefined variables, which the compiler's tables do not contain.
//
// Tested by tests/reference/run.sh.

#include <algorithm>

#include "reference/SqxBuiltInMeanings.h"

namespace {

struct VariableMeaning {
    std::string_view variable;
    std::string_view text;
};

// clang-format off
//   name       meaning
constexpr VariableMeaning k_variables[] = {
    {"Cs",      "color of the surface, linear"},
    {"Os",      "opacity of the surface, 1 for opaque"},
    {"P",       "position of the point, in the current space"},
    {"dPdu",    "derivative of the position by u"},
    {"dPdv",    "derivative of the position by v"},
    {"N",       "normal for shading, of any length"},
    {"Ng",      "normal of the geometry, of any length; `N` may have been changed"},
    {"u",       "parameter of the surface, 0 to 1"},
    {"v",       "the other parameter"},
    {"du",      "change of u from one point to the next"},
    {"dv",      "change of v from one point to the next"},
    {"s",       "texture coordinate, 0 to 1 across the surface unless the object says otherwise"},
    {"t",       "the other texture coordinate"},
    {"L",       "direction of the light, of any length: in a light from it to the lit point, in `illuminance` from the point to the light"},
    {"Cl",      "color of the light, linear, without an upper bound"},
    {"Ol",      "opacity of the light; no built-in reads it"},
    {"E",       "position of the eye"},
    {"I",       "from the eye to the point, of any length"},
    {"ncomps",  "number of components of a color: 3"},
    {"time",    "time of the picture"},
    {"Ci",      "resulting color, already multiplied by the opacity"},
    {"Oi",      "resulting opacity"},
    {"Ps",      "position of the point that is lit; in a surface it is `P`"},
    {"alpha",   "covered share of the pixel, 0 to 1"},
    {"PI",      "the ratio of a circle's circumference to its diameter"},
};
// clang-format on

}  // namespace

std::string_view SqxPredefinedMeaning(std::string_view variable)
{
    const auto* const found =
        std::find_if(std::begin(k_variables), std::end(k_variables),
                     [variable](const VariableMeaning& row) { return row.variable == variable; });
    return found == std::end(k_variables) ? std::string_view() : found->text;
}

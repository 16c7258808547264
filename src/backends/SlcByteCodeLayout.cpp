#include "backends/SlcByteCodeLayout.h"

#include <cctype>
#include <vector>

#include "backends/SlcByteCode.h"

namespace {

struct LayoutRow {
    std::string_view pattern;   // a primitive, or the start of one in front of "*"
    std::string_view operands;  // a number repeats the letter before it; empty: never written
};

// clang-format off
// The first pattern that matches holds.
constexpr LayoutRow k_layouts[] = {
    // Marks
    {"GOTO",                      "j"},
    {"IF_TRUE_GOTO",              "rj"},
    {"IF_FALSE_GOTO",             "rj"},
    {"BEGIN_PARALLEL",            "0"},
    {"END_PARALLEL",              "0"},
    {"IF_TRUE",                   "r"},
    {"IF_FALSE",                  "r"},
    {"END_IF",                    "0"},
    {"SET_BOOL",                  "w"},
    {"BEGIN_ILLUMINANCE",         "j"},
    {"END_ILLUMINANCE",           "j"},
    {"EVAL_LIGHTS_FOR_P",         "0"},
    {"RESET_EVAL_LIGHTS_FOR_P",   "0"},
    {"ARRAY_REF",                 "wrr"},
    {"CHECK_VALID_ARRAY_INDEX",   "rriri"},
    {"CALL_DSO",                  "dnw*"},
    {"CONVERT_ARRAY_DSO_*",       "wr"},
    // Operators
    {"ASSIGN_TO_ZERO_*",          "w"},
    {"ASSIGN_*",                  "wr"},
    {"INIT_MATRIX",               "wr16"},
    {"INIT_*",                    "wr3"},
    {"INVERT_INNER_BOOL_FLAG",    "wrr"},
    {"INVERT_*",                  "wr"},
    {"SET_UNIFORM_BOOL_FLAG",     "wr"},
    {"OR_BOOL_FLAG",              "wrr"},
    {"ADD_*",                     "wrr"},
    {"SUB_*",                     "wrr"},
    {"MULT_*",                    "wrr"},
    {"DIV_*",                     "wrr"},
    {"DOT_PROD_*",                "wrr"},
    {"CROSS_PROD_*",              "wrr"},
    {"BOOL_*",                    "wrr"},
    // Mathematics
    {"CALL_PRIM_ATAN2",           "wrr"},
    {"CALL_PRIM_POW",             "wrr"},
    {"CALL_PRIM_LOG2",            "wrr"},
    {"CALL_PRIM_MOD",             "wrr"},
    {"CALL_PRIM_MAX2_FLOAT",      "wrr"},
    {"CALL_PRIM_MIN2_FLOAT",      "wrr"},
    {"CALL_PRIM_CLAMP_*",         "wr3"},
    {"CALL_PRIM_MIN_*",           "nw*"},
    {"CALL_PRIM_MAX_*",           "nw*"},
    {"CALL_PRIM_STEP",            "wrr"},
    {"CALL_PRIM_SMOOTHSTEP",      "wr3"},
    {"CALL_PRIM_MIX_*",           "wr3"},
    {"CALL_PRIM_SPLINE_*",        "nw*"},
    {"CALL_PRIM_FILTERSTEP",      "wr5"},
    {"COMPUTE_FILTERSTEP_POINTS", "rw"},
    {"CALL_PRIM_DU_*",            "wrr"},
    {"CALL_PRIM_DV_*",            "wrr"},
    {"CALL_PRIM_DERIV_*",         "wrr"},
    {"CALL_PRIM_RANDOM_*",        "w"},
    {"CALL_PRIM_NOISE_FLOAT_2D",  "wrr"},
    {"CALL_PRIM_NOISE_FLOAT_4D",  "wrr"},
    {"CALL_PRIM_NOISE_POINT_2D",  "wrr"},
    {"CALL_PRIM_NOISE_POINT_4D",  "wrr"},
    {"CALL_PRIM_NOISE_*",         "wr"},
    {"CALL_PRIM_CELLNOISE_FLOAT_2D", "wrr"},
    {"CALL_PRIM_CELLNOISE_FLOAT_4D", "wrr"},
    {"CALL_PRIM_CELLNOISE_POINT_2D", "wrr"},
    {"CALL_PRIM_CELLNOISE_POINT_4D", "wrr"},
    {"CALL_PRIM_CELLNOISE_*",     "wr"},
    {"CALL_PRIM_PNOISE_FLOAT_2D", "wr4"},
    {"CALL_PRIM_PNOISE_FLOAT_4D", "wr4"},
    {"CALL_PRIM_PNOISE_POINT_2D", "wr4"},
    {"CALL_PRIM_PNOISE_POINT_4D", "wr4"},
    {"CALL_PRIM_PNOISE_*",        "wrr"},
    // Geometry and matrices
    {"CALL_PRIM_SETXCOMP",        "mr"},
    {"CALL_PRIM_SETYCOMP",        "mr"},
    {"CALL_PRIM_SETZCOMP",        "mr"},
    {"CALL_PRIM_COMP_MATRIX",     "wr3"},
    {"CALL_PRIM_COMP",            "wrr"},
    {"CALL_PRIM_SETCOMP_MATRIX",  "mr3"},
    {"CALL_PRIM_SETCOMP",         "mrr"},
    {"CALL_PRIM_DISTANCE",        "wrr"},
    {"CALL_PRIM_PTLINED",         "wr3"},
    {"CALL_PRIM_ROTATE_POINT",    "wr4"},
    {"CALL_PRIM_FACEFORWARD",     "wrr"},
    {"CALL_PRIM_FACEFORWARD2",    "wr3"},
    {"CALL_PRIM_REFLECT",         "wrr"},
    {"CALL_PRIM_REFRACT",         "wr3"},
    {"CALL_PRIM_FRESNEL5",        "rrrmm"},
    {"CALL_PRIM_FRESNEL7",        "rrrm4"},
    {"CALL_PRIM_CALCULATENORMAL", "wr3"},
    {"CALL_PRIM_TRANSLATE",       "wrr"},
    {"CALL_PRIM_ROTATE",          "wr3"},
    {"CALL_PRIM_SCALE",           "wrr"},
    {"CONCAT_SPACE_MATRIX",       "wrs"},
    {"CALL_PRIM_TRANSFORM_TO_CURRENT",    "wrs"},
    {"CALL_PRIM_VTRANSFORM_TO_CURRENT",   "wrs"},
    {"CALL_PRIM_NTRANSFORM_TO_CURRENT",   "wrs"},
    {"CALL_PRIM_TRANSFORM_FROM_CURRENT",  "wrs"},
    {"CALL_PRIM_VTRANSFORM_FROM_CURRENT", "wrs"},
    {"CALL_PRIM_NTRANSFORM_FROM_CURRENT", "wrs"},
    {"CALL_PRIM_TRANSFORM2*",     "wrr"},
    {"CALL_PRIM_VTRANSFORM2*",    "wrr"},
    {"CALL_PRIM_NTRANSFORM2*",    "wrr"},
    {"CALL_PRIM_TRANSFORM*",      "wr3"},
    {"CALL_PRIM_VTRANSFORM*",     "wr3"},
    {"CALL_PRIM_NTRANSFORM*",     "wr3"},
    {"CALL_PRIM_CTRANSFORM_*",    "wrr"},
    {"CALL_PRIM_CTRANSFORM2",     "wrr"},
    {"CALL_PRIM_CTRANSFORM",      "wr3"},
    // Strings
    {"CALL_PRIM_PRINTF",          "n*"},
    {"CALL_PRIM_CONCAT",          "nw*"},
    {"CALL_PRIM_FORMAT",          "nw*"},
    {"CALL_PRIM_MATCH",           "wrr"},
    // Light
    {"CALL_PRIM_AMBIENT",         "w"},
    {"CALL_PRIM_SPECULARBRDF",    "wr4"},
    {"CALL_PRIM_SPECULAR*",       "wr3"},
    {"CALL_PRIM_PHONG",           "wr3"},
    {"CALL_PRIM_TRACE",           "wrrm"},
    {"CALL_PRIM_RAYHITTEST",      "wrr"},
    {"CALL_PRIM_TRANSMISSION",    "wrr"},
    {"CALL_PRIM_OCCLUSION",       "wr8m"},
    {"CALL_PRIM_INDIRECTDIFFUSE", "wr9mm"},
    {"CALL_PRIM_ISSHADOWRAY",     "w"},
    {"CALL_PRIM_ISINDIRECTRAY",   "w"},
    {"CALL_PRIM_RAYLEVEL",        "w"},
    {"EVAL_LIGHTS",               "r"},
    {"ILLUMINATE_NO_CONE",        "wrrw"},
    {"ILLUMINATE",                "wr4w"},
    {"SOLAR",                     "wrrw"},
    {"ILLUMINANCE",               "wr3"},
    // Textures
    {"COMPUTE_ST_POINTS",         "rrw8"},
    {"COMPUTE_POINTS",            "rw4"},
    {"CALL_TEXTURE_*",            "wr19"},
    {"CALL_ENVIRONMENT_*",        "wr15"},
    {"CALL_SHADOW_*",             "wr14"},
    {"CALL_AREASHADOW_*",         "wr19"},
    // Messages
    {"CALL_PRIM_TEXTUREINFO",     "wrrmr3"},
    {"CALL_PRIM_ATTRIBUTE",       "wrmr3"},
    {"CALL_PRIM_OPTION",          "wrmr3"},
    {"CALL_PRIM_RENDERERINFO",    "wrmr3"},
    {"CALL_PRIM_SURFACE",         "wrmr3"},
    {"CALL_PRIM_DISPLACEMENT",    "wrmr3"},
    {"CALL_PRIM_LIGHTSOURCE",     "wrmr3"},
    {"CALL_PRIM_ATMOSPHERE",      "wrmr3"},
    {"CALL_PRIM_INCIDENT",        "wrmr3"},
    {"CALL_PRIM_OPPOSITE",        "wrmr3"},
    // Known to the renderer, but never written
    {"FREE_STRING",               ""},
    {"CONVERT_COLOR_HSV_TO_RGB",  ""},
    {"FIND_SPACE",                ""},
    {"CALL_PRIM_FULLTRACE",       ""},
    // The other built-ins, all of one argument
    {"CALL_PRIM_*",               "wr"},
};
// clang-format on

bool Matches(std::string_view pattern, std::string_view name)
{
    if (pattern.back() != '*')
        return pattern == name;
    pattern.remove_suffix(1);
    return name.starts_with(pattern);
}

std::string_view RowFor(std::string_view primitive)
{
    for (const LayoutRow& row : k_layouts)
        if (Matches(row.pattern, primitive))
            return row.operands;
    return {};
}

/// Writes repeated letters out; the text "0" is that of an instruction without operands.
std::string Expand(std::string_view operands)
{
    std::string letters;
    for (std::size_t i = 0; i < operands.size();) {
        if (std::isdigit(static_cast<unsigned char>(operands[i])) == 0) {
            letters += operands[i++];
            continue;
        }
        std::size_t count = 0;
        while (i < operands.size() && std::isdigit(static_cast<unsigned char>(operands[i])) != 0)
            count = count * 10 + static_cast<std::size_t>(operands[i++] - '0');
        if (count > 0)
            letters.append(count - 1, letters.back());
    }
    return letters;
}

bool DropSuffix(std::string_view& name, std::string_view suffix)
{
    if (!name.ends_with(suffix))
        return false;
    name.remove_suffix(suffix.size());
    return true;
}

/// The condition stands behind the result, if there is one; instructions that have no form for
/// all points have it last.
void InsertCondition(SlcByteCodeLayout& layout)
{
    if (!layout.simd)
        layout.operands += 'c';
    else
        layout.operands.insert(layout.operands.starts_with('w') ? 1 : 0, 1, 'c');
}

SlcByteCodeLayout MakeLayout(std::string_view name)
{
    SlcByteCodeLayout layout;
    layout.name = name;
    layout.primitive = name;
    layout.conditional = DropSuffix(layout.primitive, "_IF_TRUE");
    layout.simd = DropSuffix(layout.primitive, "_SIMD");
    const std::string_view operands = RowFor(layout.primitive);
    if (operands.empty())
        return {};
    layout.operands = Expand(operands);
    if (layout.conditional)
        InsertCondition(layout);
    return layout;
}

}  // namespace

const SlcByteCodeLayout* SlcByteCodeLayout::Find(int number)
{
    static const std::vector<SlcByteCodeLayout> layouts = [] {
        std::vector<SlcByteCodeLayout> made;
        for (int i = 0; i <= SlcByteCode::k_highestNumber; ++i)
            made.push_back(MakeLayout(SlcByteCode::GetName(i)));
        return made;
    }();
    if (number < 0 || number > SlcByteCode::k_highestNumber)
        return nullptr;
    const SlcByteCodeLayout& layout = layouts[static_cast<std::size_t>(number)];
    return layout.name.empty() ? nullptr : &layout;
}

// The layouts are made when this file is compiled: a reader finds them ready.

#include "sqx/SqxLayout.h"

#include <array>

#include "sqx/SqxNumbers.h"

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

/// Tells most patterns apart in one step, by the character in front of their last.
constexpr bool MayMatch(std::string_view pattern, std::string_view name)
{
    return pattern.size() < name.size() + 2 && pattern.end()[-2] == name[pattern.size() - 2];
}

constexpr bool Matches(std::string_view pattern, std::string_view name)
{
    const bool isPrefix = pattern.back() == '*';
    if (isPrefix)
        pattern.remove_suffix(1);
    if (pattern.size() > name.size() || (!isPrefix && pattern.size() < name.size()))
        return false;
    for (std::size_t i = pattern.size(); i-- > 0;)
        if (pattern[i] != name[i])
            return false;
    return true;
}

constexpr const LayoutRow& RowFor(std::string_view primitive)
{
    for (const LayoutRow& row : k_layouts)
        if (MayMatch(row.pattern, primitive) && Matches(row.pattern, primitive))
            return row;
    throw primitive;  // an instruction without a row
}

constexpr bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

constexpr std::size_t k_mostLetters = 23;

/// The letters of a layout; at the end of the room for them their count.
struct Letters {
    constexpr void Insert(std::size_t place, char letter)
    {
        for (std::size_t i = count++; i > place; --i)
            text[i] = text[i - 1];
        text[place] = letter;
    }
    constexpr void Add(char letter) { text[count++] = letter; }

    char text[k_mostLetters] = {};
    unsigned char count = 0;
};

/// Writes repeated letters out; the text "0" is that of an instruction without operands.
constexpr Letters Expand(std::string_view operands)
{
    Letters letters;
    for (std::size_t i = 0; i < operands.size();) {
        if (!IsDigit(operands[i])) {
            letters.Add(operands[i++]);
            continue;
        }
        int count = 0;
        while (i < operands.size() && IsDigit(operands[i]))
            count = count * 10 + (operands[i++] - '0');
        for (; count > 1; --count)
            letters.Add(letters.text[letters.count - 1]);
    }
    return letters;
}

constexpr bool DropSuffix(std::string_view& name, std::string_view suffix)
{
    if (!name.ends_with(suffix))
        return false;
    name.remove_suffix(suffix.size());
    return true;
}

/// The condition stands behind the result, if there is one; instructions that have no form for
/// all points have it last.
constexpr void InsertCondition(Letters& letters, bool simd)
{
    if (!simd)
        letters.Add('c');
    else
        letters.Insert(letters.text[0] == 'w' ? 1 : 0, 'c');
}

struct Form {
    SqxLayout layout;
    Letters letters;
};

/// The forms of a primitive follow each other in the table of numbers, so that the row found for
/// one mostly serves the next: a compiler bounds the steps of such an evaluation.
class FormMaker {
public:
    constexpr Form Make(std::string_view name)
    {
        Form form;
        form.layout.name = name;
        form.layout.conditional = DropSuffix(name, "_IF_TRUE");
        form.layout.simd = DropSuffix(name, "_SIMD");
        form.layout.primitive = name;
        if (!m_row || name != m_primitive)
            m_row = &RowFor(name);
        m_primitive = name;
        if (m_row->operands.empty())
            return {};
        form.letters = Expand(m_row->operands);
        if (form.layout.conditional)
            InsertCondition(form.letters, form.layout.simd);
        return form;
    }

private:
    std::string_view m_primitive;
    const LayoutRow* m_row = nullptr;
};

using Forms = std::array<Form, k_sqxHighestNumber + 1>;

constexpr Forms k_forms = [] {
    Forms forms;
    FormMaker maker;
    for (const SqxNumberRow* table : {k_sqxNumbers, k_sqxMarks})
        for (const SqxNumberRow* row = table; row->name; ++row)
            forms[static_cast<std::size_t>(row->number)] = maker.Make(row->name);
    return forms;
}();

/// The layouts, whose letters stand in the forms.
constexpr std::array<SqxLayout, k_forms.size()> k_layoutsByNumber = [] {
    std::array<SqxLayout, k_forms.size()> layouts;
    for (std::size_t i = 0; i < layouts.size(); ++i) {
        layouts[i] = k_forms[i].layout;
        layouts[i].operands = {k_forms[i].letters.text, k_forms[i].letters.count};
    }
    return layouts;
}();

}  // namespace

const SqxLayout* SqxLayout::Find(int number)
{
    if (number < 0 || number > k_sqxHighestNumber)
        return nullptr;
    const SqxLayout& layout = k_layoutsByNumber[static_cast<std::size_t>(number)];
    return layout.name.empty() ? nullptr : &layout;
}

// One table row per word. The transforms, which exist for four types, and calls of shadeops, which
// have any number of arguments, have separate functions.

#include "icode/SlcICodeWords.h"

#include <algorithm>
#include <array>
#include <string>

#include "icode/SlcICodes.h"

namespace {

using Operands = std::deque<SlcOperand>;

std::string Unquoted(const SlcOperand& text)
{
    return text->GetString().substr(1, text->GetString().size() - 2);
}

SlcPtr<SlcICode> MakeIndexCheck(const Operands& arguments)
{
    const std::string file = Unquoted(arguments[4]);
    return MakeShared<SlcCheckValidArrayIndexICode>(Unquoted(arguments[0]), arguments[1],
                                                    arguments[2]->GetInt(), arguments[3]->GetInt(),
                                                    &file);
}

template <std::size_t N>
std::array<SlcOperand, N> ArrayOf(const Operands& operands)
{
    std::array<SlcOperand, N> result;
    std::copy_n(operands.begin(), N, result.begin());
    return result;
}

/// Makes a transform from a word such as `from_space_point` or `to_space_color`; returns null for
/// any other word.
SlcPtr<SlcICode> MakeTransform(std::string_view word, const Operands& results,
                               const Operands& arguments, const SlcGridForm& form)
{
    for (SlcTypeNode* type : {SlcTypeNode::APoint(), SlcTypeNode::AVector(), SlcTypeNode::ANormal(),
                              SlcTypeNode::AColor()}) {
        if (word == "from_space_" + type->ToString())
            return MakeShared<SlcTransformFromSpaceICode>(results.at(0), arguments.at(0), type,
                                                          arguments.at(1), form);
        if (word == "to_space_" + type->ToString())
            return MakeShared<SlcTransformToSpaceICode>(results.at(0), arguments.at(0), type,
                                                        arguments.at(1), form);
    }
    return nullptr;
}

using Code = SlcPtr<SlcICode>;
using Ops = const Operands&;
using Grid = const SlcGridForm&;

/// An instruction that is written as a call but does not call a primitive.
struct CallWord {
    std::string_view word;
    std::size_t results;
    std::size_t arguments;
    Code (*make)(Ops results, Ops arguments, Grid form);
};

const CallWord k_callWords[] = {
    {"zero", 1, 0, [](Ops r, Ops, Grid) -> Code { return MakeShared<SlcAssignToZeroICode>(r[0]); }},
    {"point", 1, 3,
     [](Ops r, Ops a, Grid) -> Code { return MakeShared<SlcPointICode>(r[0], a[0], a[1], a[2]); }},
    {"vector", 1, 3,
     [](Ops r, Ops a, Grid) -> Code { return MakeShared<SlcVectorICode>(r[0], a[0], a[1], a[2]); }},
    {"normal", 1, 3,
     [](Ops r, Ops a, Grid) -> Code { return MakeShared<SlcNormalICode>(r[0], a[0], a[1], a[2]); }},
    {"color", 1, 3,
     [](Ops r, Ops a, Grid) -> Code { return MakeShared<SlcColorICode>(r[0], a[0], a[1], a[2]); }},
    {"matrix", 1, 16,
     [](Ops r, Ops a, Grid) -> Code { return MakeShared<SlcMatrixICode>(r[0], a); }},
    {"concat_space", 1, 2,
     [](Ops r, Ops a, Grid) -> Code {
         return MakeShared<SlcConcatSpaceMatrixICode>(
             r[0], a[0], static_cast<SlcStringLiteralNode*>(a[1]->GetLexical()));
     }},
    {"check_index", 0, 5, [](Ops, Ops a, Grid) -> Code { return MakeIndexCheck(a); }},
    {"to_shadeop", 1, 1,
     [](Ops r, Ops a, Grid) -> Code {
         return MakeShared<SlcConvertArrayDSOICode>(r[0], a[0], true);
     }},
    {"from_shadeop", 1, 1,
     [](Ops r, Ops a, Grid) -> Code {
         return MakeShared<SlcConvertArrayDSOICode>(r[0], a[0], false);
     }},
    {"patch", 8, 2,
     [](Ops r, Ops a, Grid form) -> Code {
         return MakeShared<SlcTextureSTPointsICode>(a[0], a[1], ArrayOf<8>(r), form.condition);
     }},
    {"patch", 4, 1,
     [](Ops r, Ops a, Grid form) -> Code {
         return MakeShared<SlcTexturePointsICode>(a[0], ArrayOf<4>(r), form.condition);
     }},
    {"interval", 1, 1,
     [](Ops r, Ops a, Grid form) -> Code {
         return MakeShared<SlcFilterstepPointsICode>(r[0], a[0], form.condition);
     }},
    {"evaluate_lights", 0, 0,
     [](Ops, Ops, Grid) -> Code { return MakeShared<SlcEvalLightForPICode>(); }},
    {"evaluate_lights", 0, 1,
     [](Ops, Ops a, Grid) -> Code { return MakeShared<SlcEvalLightICode>(a[0]); }},
    {"forget_lights", 0, 0,
     [](Ops, Ops, Grid) -> Code { return MakeShared<SlcResetEvalLightForPICode>(); }},
    {"in_cone", 1, 3,
     [](Ops r, Ops a, Grid form) -> Code {
         return MakeShared<SlcCheckIlluminanceICode>(r[0], a[0], a[1], a[2], form);
     }},
    {"illuminate", 2, 2,
     [](Ops r, Ops a, Grid form) -> Code {
         return MakeShared<SlcIlluminateICode>(r[0], a[0], nullptr, nullptr, a[1], r[1], form);
     }},
    {"illuminate", 2, 4,
     [](Ops r, Ops a, Grid form) -> Code {
         return MakeShared<SlcIlluminateICode>(r[0], a[0], a[1], a[2], a[3], r[1], form);
     }},
    {"solar", 2, 2,
     [](Ops r, Ops a, Grid form) -> Code {
         return MakeShared<SlcSolarICode>(r[0], a[0], a[1], r[1], form);
     }},
};

/// `result = shadeop("library key", "method", arguments)`
SlcPtr<SlcICode> MakeShadeopCall(const Operands& results, const Operands& arguments)
{
    return MakeShared<SlcCallDSOICode>(results.empty() ? SlcOperand() : results[0],
                                       Operands(arguments.begin() + 2, arguments.end()),
                                       Unquoted(arguments[0]), Unquoted(arguments[1]));
}

}  // namespace

SlcPtr<SlcICode> SlcMakeICodeOfWord(std::string_view word, const Operands& results,
                                    const Operands& arguments, const SlcGridForm& form)
{
    for (const CallWord& row : k_callWords)
        if (row.word == word && row.results == results.size() && row.arguments == arguments.size())
            return row.make(results, arguments, form);
    if (word == "shadeop" && results.size() <= 1 && arguments.size() >= 2)
        return MakeShadeopCall(results, arguments);
    if (results.size() == 1 && arguments.size() == 2)
        return MakeTransform(word, results, arguments, form);
    return nullptr;
}

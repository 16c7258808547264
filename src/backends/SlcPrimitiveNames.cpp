// Tested by tests/backends/ByteCodeTableTest.cpp and CStatementsTest.cpp.

#include "backends/SlcPrimitiveNames.h"

namespace {

struct TypeWord {
    bool (SlcTypeNode::*test)() const;
    std::string_view word;
};

// clang-format off
//   type                        word
constexpr TypeWord k_typeWords[] = {
    {&SlcTypeNode::IsBoolType,   "BOOL"},
    {&SlcTypeNode::IsFloatType,  "FLOAT"},
    {&SlcTypeNode::IsStringType, "STRING"},
    {&SlcTypeNode::IsPointType,  "POINT"},
    {&SlcTypeNode::IsColorType,  "COLOR"},
    {&SlcTypeNode::IsMatrixType, "MATRIX"},
};
// clang-format on

}  // namespace

std::string_view SlcTypeWord(const SlcTypeNode* type)
{
    for (const TypeWord& row : k_typeWords)
        if ((type->*row.test)())
            return row.word;
    return {};
}

std::string SlcAssignName(const SlcTypeNode* dest, const SlcTypeNode* source)
{
    const std::string_view destWord = SlcTypeWord(dest);
    const std::string_view sourceWord = SlcTypeWord(source);
    if (destWord.empty() || sourceWord.empty())
        return "";
    return std::string("ASSIGN_").append(destWord).append("_").append(sourceWord);
}

std::string SlcTransformName(const SlcTransformSpaceICode& code, SlcTransformDirection direction)
{
    const bool isColor = code.m_type->IsColorType();
    std::string name = "CALL_PRIM_";
    if (isColor)
        name += 'C';
    else if (code.m_type->IsVectorType())
        name += 'V';
    else if (code.m_type->IsNormalType())
        name += 'N';
    name += direction == SlcTransformDirection::FromSpace ? "TRANSFORM_TO_" : "TRANSFORM_FROM_";
    name += isColor ? "RGB" : "CURRENT";
    return name.append(code.m_form.Suffix());
}

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

SqxPrimitive SlcTransformPrimitive(const SlcTransformSpaceICode& code,
                                   SlcTransformDirection direction)
{
    using enum SqxPrimitive;
    const bool isFrom = direction == SlcTransformDirection::FromSpace;
    if (code.m_type->IsColorType())
        return isFrom ? CALL_PRIM_CTRANSFORM_TO_RGB : CALL_PRIM_CTRANSFORM_FROM_RGB;
    if (code.m_type->IsVectorType())
        return isFrom ? CALL_PRIM_VTRANSFORM_TO_CURRENT : CALL_PRIM_VTRANSFORM_FROM_CURRENT;
    if (code.m_type->IsNormalType())
        return isFrom ? CALL_PRIM_NTRANSFORM_TO_CURRENT : CALL_PRIM_NTRANSFORM_FROM_CURRENT;
    return isFrom ? CALL_PRIM_TRANSFORM_TO_CURRENT : CALL_PRIM_TRANSFORM_FROM_CURRENT;
}

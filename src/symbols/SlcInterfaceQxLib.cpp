// Translates types and details to the words and numbers of compiled files. In both tables of types
// the order of the rows matters, since vectors and normals also pass the test for points.
//
// Tested by tests/backends, which read the files back.

#include "symbols/SlcInterfaceQxLib.h"

#include "sqx/SqxType.h"
#include "support/SlcDiagnostics.h"

namespace {

struct TypeCode {
    bool (SlcTypeNode::*test)() const;
    SqxType code;
};

// The first row whose test is true applies, so a type that stands for several members of the point
// family counts as a vector.
constexpr TypeCode k_typeCodes[] = {
    {&SlcTypeNode::IsFloatType, SqxType::Float},   {&SlcTypeNode::IsStringType, SqxType::String},
    {&SlcTypeNode::IsVectorType, SqxType::Vector}, {&SlcTypeNode::IsNormalType, SqxType::Normal},
    {&SlcTypeNode::IsPointType, SqxType::Point},   {&SlcTypeNode::IsColorType, SqxType::Color},
    {&SlcTypeNode::IsMatrixType, SqxType::Matrix}, {&SlcTypeNode::IsIntType, SqxType::Int},
    {&SlcTypeNode::IsBoolType, SqxType::Bool},
};

struct DeclaredTypeWord {
    bool (SlcTypeNode::*test)() const;
    const char* word;
};

constexpr DeclaredTypeWord k_declaredTypeWords[] = {
    {&SlcTypeNode::IsFloatType, "float"},   {&SlcTypeNode::IsStringType, "string"},
    {&SlcTypeNode::IsNormalType, "normal"}, {&SlcTypeNode::IsVectorType, "vector"},
    {&SlcTypeNode::IsPointType, "point"},   {&SlcTypeNode::IsColorType, "color"},
    {&SlcTypeNode::IsMatrixType, "matrix"},
};

const char* WordOf(const SlcTypeNode* type)
{
    for (const DeclaredTypeWord& row : k_declaredTypeWords)
        if ((type->*row.test)())
            return row.word;
    FatalError("Invalid type node in SlcConstructDetailTypeStr");
}

}  // namespace

int SlcInterfaceQxLib::SlcTypeNodeToQxType(const SlcTypeNode* type)
{
    for (const TypeCode& row : k_typeCodes)
        if ((type->*row.test)())
            return static_cast<int>(row.code);
    PrintReport(type->ToString() + "\n");
    return 0;
}

int SlcInterfaceQxLib::SlcDetailNodeToQxClass(const SlcDetailNode* detail)
{
    return detail->IsUniform() ? 2 : 3;
}

std::string SlcInterfaceQxLib::SlcConstructDetailTypeStr(const SlcDetailNode* detail,
                                                         const SlcTypeNode* type)
{
    std::string text = detail->IsUniform() ? "uniform " : "varying ";
    if (!type->IsArrayType())
        return text + WordOf(type);
    const auto* array = static_cast<const SlcArrayTypeNode*>(type);
    return text + WordOf(array->GetElementType()) + '[' + std::to_string(array->GetLength()) + ']';
}

// Tables that map the types of values and the kinds of shaders to C++ texts. A reference to an
// element is a pointer to the element's type.
//
// Tested by tests/backends/CFileTest.cpp.

#include "backends/SlcEquCType.h"

#include <typeinfo>

#include "backends/SlcGeneratedText.h"
#include "frontend/SlcShaderTypeNode.h"
#include "support/SlcDiagnostics.h"

namespace {

struct TypeText {
    bool (SlcTypeNode::*test)() const;
    const char* text;
};

// clang-format off
constexpr TypeText k_typeTexts[] = {
    {&SlcTypeNode::IsFloatType,  SlcGeneratedText::sm_slcFloatType},
    {&SlcTypeNode::IsColorType,  SlcGeneratedText::sm_slcColorType},
    {&SlcTypeNode::IsPointType,  SlcGeneratedText::sm_slcPointType},
    {&SlcTypeNode::IsStringType, SlcGeneratedText::sm_slcStringType},
    {&SlcTypeNode::IsBoolType,   SlcGeneratedText::sm_slcBoolType},
    {&SlcTypeNode::IsIntType,    SlcGeneratedText::sm_slcIntType},
    {&SlcTypeNode::IsMatrixType, SlcGeneratedText::sm_slcMatrixType},
};
// clang-format on

struct ShaderTypeText {
    bool (SlcShaderTypeNode::*test)() const;
    const char* text;
};

// clang-format off
constexpr ShaderTypeText k_shaderTypeTexts[] = {
    {&SlcShaderTypeNode::IsLight,        "QxShaderInterface::e_typeLight"},
    {&SlcShaderTypeNode::IsSurface,      "QxShaderInterface::e_typeSurface"},
    {&SlcShaderTypeNode::IsVolume,       "QxShaderInterface::e_typeVolume"},
    {&SlcShaderTypeNode::IsDisplacement, "QxShaderInterface::e_typeDisplacement"},
    {&SlcShaderTypeNode::IsImager,       "QxShaderInterface::e_typeImager"},
};
// clang-format on

}  // namespace

std::string SlcEquCType::GetString(const SlcTypeNode* type) const
{
    if (type->IsArrayRefType())
        return GetString(static_cast<const SlcArrayRefTypeNode*>(type)->GetElementType()) + '*';
    for (const TypeText& row : k_typeTexts)
        if ((type->*row.test)())
            return row.text;
    FatalError(std::string("SlcEquCType::No C Type:") + typeid(*type).name());
}

std::string SlcEquCShaderType::GetString(const SlcShaderTypeNode* type) const
{
    for (const ShaderTypeText& row : k_shaderTypeTexts)
        if ((type->*row.test)())
            return row.text;
    FatalError("Unknown kind of shader (in SlcEquCShaderType::GetString)");
}

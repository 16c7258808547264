// Types are compared by tests, not by address, since some rules treat the point family as one type
// and others as three:
//
//                       IsSameType          IsSameExactType     IsPromotableAs
//     point, vector     yes                 no                  yes
//     normal, vector    yes                 no                  yes
//     float, color      no                  no                  yes: it becomes each component
//     float[], float[3] yes                 yes                 yes
//     error, anything   yes                 yes                 yes: a report has been made
//
// Tested by tests/frontend/SlcTypeNodeTest.cpp.

#include "frontend/SlcTypeNode.h"

#include <deque>

#include "frontend/SlcLexicalNode.h"
#include "support/SlcCompilation.h"

namespace {

// Function-local, so that a singleton exists even if another static object's constructor uses it.
template <class Type>
SlcTypeNode* TypeSingleton()
{
    static Type type;
    return &type;
}

struct ArrayTypes {
    std::deque<SlcArrayTypeNode> arrays;
    std::deque<SlcArrayRefTypeNode> references;
};

}  // namespace

SlcTypeNode* SlcTypeNode::AFloat()
{
    return TypeSingleton<SlcFloatTypeNode>();
}
SlcTypeNode* SlcTypeNode::AString()
{
    return TypeSingleton<SlcStringTypeNode>();
}
SlcTypeNode* SlcTypeNode::AColor()
{
    return TypeSingleton<SlcColorTypeNode>();
}
SlcTypeNode* SlcTypeNode::APoint()
{
    return TypeSingleton<SlcPointTypeNode>();
}
SlcTypeNode* SlcTypeNode::AVector()
{
    return TypeSingleton<SlcVectorTypeNode>();
}
SlcTypeNode* SlcTypeNode::ANormal()
{
    return TypeSingleton<SlcNormalTypeNode>();
}
SlcTypeNode* SlcTypeNode::AMatrix()
{
    return TypeSingleton<SlcMatrixTypeNode>();
}
SlcTypeNode* SlcTypeNode::AAnyPoint()
{
    return TypeSingleton<SlcAnyPointTypeNode>();
}
SlcTypeNode* SlcTypeNode::AAnyVector()
{
    return TypeSingleton<SlcAnyVectorTypeNode>();
}
SlcTypeNode* SlcTypeNode::AInteger()
{
    return TypeSingleton<SlcIntTypeNode>();
}
SlcTypeNode* SlcTypeNode::ABoolean()
{
    return TypeSingleton<SlcBoolTypeNode>();
}
SlcTypeNode* SlcTypeNode::AAnyType()
{
    return TypeSingleton<SlcAnyTypeNode>();
}
SlcTypeNode* SlcTypeNode::AVoid()
{
    return TypeSingleton<SlcVoidTypeNode>();
}
SlcTypeNode* SlcTypeNode::AError()
{
    return TypeSingleton<SlcErrorTypeNode>();
}

SlcTypeNode* SlcTypeNode::CreateArrayType(SlcTypeNode* element)
{
    return CreateArrayType(element, 0);
}

SlcTypeNode* SlcTypeNode::CreateArrayType(SlcTypeNode* element, const SlcFloatConstNode* length)
{
    return CreateArrayType(element, static_cast<int>(length->GetValue()));
}

SlcTypeNode* SlcTypeNode::CreateArrayType(SlcTypeNode* element, int length)
{
    return &SlcPartOfCompilation<ArrayTypes>().arrays.emplace_back(element, length);
}

SlcTypeNode* SlcTypeNode::CreateArrayRefType(SlcTypeNode* element)
{
    return &SlcPartOfCompilation<ArrayTypes>().references.emplace_back(element);
}

bool SlcTypeNode::IsSameType(const SlcTypeNode*) const
{
    return false;
}

bool SlcTypeNode::IsSameExactType(const SlcTypeNode* other) const
{
    return IsSameType(other);
}

bool SlcTypeNode::IsPromotableAs(const SlcTypeNode* other) const
{
    return IsSameType(other);
}

bool SlcFloatTypeNode::IsSameType(const SlcTypeNode* other) const
{
    return other->IsFloatType();
}

bool SlcFloatTypeNode::IsPromotableAs(const SlcTypeNode* other) const
{
    return IsSameType(other) || other->IsPointType() || other->IsColorType() ||
           other->IsMatrixType();
}

bool SlcStringTypeNode::IsSameType(const SlcTypeNode* other) const
{
    return other->IsStringType();
}

bool SlcColorTypeNode::IsSameType(const SlcTypeNode* other) const
{
    return other->IsColorType();
}

bool SlcPointTypeNode::IsSameType(const SlcTypeNode* other) const
{
    return other->IsPointType();
}

bool SlcPointTypeNode::IsSameExactType(const SlcTypeNode* other) const
{
    return other->IsPointType() && !other->IsVectorType() && !other->IsNormalType();
}

bool SlcVectorTypeNode::IsSameExactType(const SlcTypeNode* other) const
{
    return other->IsPointType() && other->IsVectorType();
}

bool SlcNormalTypeNode::IsSameExactType(const SlcTypeNode* other) const
{
    return other->IsPointType() && other->IsNormalType();
}

bool SlcNormalTypeNode::IsPromotableAs(const SlcTypeNode* other) const
{
    return IsSameType(other) || other->IsVectorType();
}

bool SlcAnyPointTypeNode::IsSameExactType(const SlcTypeNode* other) const
{
    return other->IsPointType();
}

bool SlcAnyVectorTypeNode::IsSameExactType(const SlcTypeNode* other) const
{
    return other->IsPointType() && (other->IsVectorType() || other->IsNormalType());
}

bool SlcMatrixTypeNode::IsSameType(const SlcTypeNode* other) const
{
    return other->IsMatrixType();
}

bool SlcBoolTypeNode::IsSameType(const SlcTypeNode* other) const
{
    return other->IsBoolType();
}

bool SlcAnyTypeNode::IsSameType(const SlcTypeNode* other) const
{
    return !other->IsVoidType();
}

bool SlcVoidTypeNode::IsSameType(const SlcTypeNode* other) const
{
    return other->IsVoidType();
}

bool SlcErrorTypeNode::IsSameType(const SlcTypeNode*) const
{
    return true;
}

bool SlcErrorTypeNode::IsSameExactType(const SlcTypeNode*) const
{
    return true;
}

void SlcArrayTypeNode::WalkIn(SlcCodeWalker* walker)
{
    m_element->ApplyWalker(walker);
}

bool SlcArrayTypeNode::IsSameType(const SlcTypeNode* other) const
{
    const auto* array = dynamic_cast<const SlcArrayTypeNode*>(other);
    return array && m_element->IsSameType(array->m_element) &&
           (m_length == array->m_length || m_length == 0 || array->m_length == 0);
}

std::string SlcArrayTypeNode::ToString() const
{
    const std::string length = m_length == 0 ? std::string() : std::to_string(m_length);
    return m_element->ToString() + "[" + length + "]";
}

bool SlcArrayRefTypeNode::IsSameType(const SlcTypeNode* other) const
{
    return m_element->IsSameType(other);
}

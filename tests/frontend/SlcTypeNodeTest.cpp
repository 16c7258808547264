#include "frontend/SlcTypeNode.h"

#include <gtest/gtest.h>

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcLexicalNode.h"

namespace {

using Type = SlcTypeNode;

struct RelationCase {
    const Type* a;
    const Type* b;
    bool same;
    bool exact;
    bool promotable;
};

}  // namespace

TEST(SlcTypeNode, DistinguishesSameExactAndPromotableTypes)
{
    const Type* const any3 = Type::CreateArrayType(Type::AFloat(), 3);
    const Type* const any = Type::CreateArrayType(Type::AFloat());
    const Type* const other4 = Type::CreateArrayType(Type::AFloat(), 4);
    const Type* const points = Type::CreateArrayType(Type::APoint());
    const Type* const vectors = Type::CreateArrayType(Type::AVector(), 3);
    const Type* const element = Type::CreateArrayRefType(Type::AFloat());
    //   a                   b                  same   exact  promotable
    const RelationCase cases[] = {
        {Type::AFloat(), Type::AFloat(), true, true, true},
        {Type::AFloat(), Type::APoint(), false, false, true},
        {Type::AFloat(), Type::AVector(), false, false, true},
        {Type::AFloat(), Type::ANormal(), false, false, true},
        {Type::AFloat(), Type::AColor(), false, false, true},
        {Type::AFloat(), Type::AMatrix(), false, false, true},
        {Type::AFloat(), Type::AString(), false, false, false},
        {Type::APoint(), Type::AFloat(), false, false, false},
        {Type::AColor(), Type::APoint(), false, false, false},
        {Type::APoint(), Type::AVector(), true, false, true},
        {Type::AVector(), Type::APoint(), true, false, true},
        {Type::ANormal(), Type::AVector(), true, false, true},
        {Type::APoint(), Type::AAnyPoint(), true, false, true},
        {Type::AVector(), Type::AAnyPoint(), true, true, true},
        {Type::ANormal(), Type::AAnyVector(), true, true, true},
        {Type::AAnyPoint(), Type::ANormal(), true, true, true},
        {Type::AAnyPoint(), Type::APoint(), true, true, true},
        {Type::AAnyVector(), Type::APoint(), true, false, true},
        {Type::AAnyVector(), Type::ANormal(), true, true, true},
        {Type::AString(), Type::AString(), true, true, true},
        {Type::ABoolean(), Type::ABoolean(), true, true, true},
        {Type::AInteger(), Type::AInteger(), false, false, false},
        {Type::AVoid(), Type::AVoid(), true, true, true},
        {Type::AAnyType(), Type::AVoid(), false, false, false},
        {Type::AAnyType(), Type::AString(), true, true, true},
        {Type::AAnyType(), any, true, true, true},
        {Type::AError(), Type::AVoid(), true, true, true},
        {Type::AFloat(), Type::AError(), false, false, false},
        {any3, any, true, true, true},
        {any, any3, true, true, true},
        {any3, Type::CreateArrayType(Type::AFloat(), 3), true, true, true},
        {any3, other4, false, false, false},
        {any3, Type::AFloat(), false, false, false},
        {any, points, false, false, false},
        {points, vectors, true, true, true},
        {element, Type::AFloat(), true, true, true},
        {Type::AFloat(), element, true, true, true},
    };
    for (const RelationCase& c : cases) {
        const std::string row = c.a->ToString() + " and " + c.b->ToString();
        EXPECT_EQ(c.a->IsSameType(c.b), c.same) << row;
        EXPECT_EQ(c.a->IsSameExactType(c.b), c.exact) << row;
        EXPECT_EQ(c.a->IsPromotableAs(c.b), c.promotable) << row;
    }
}

TEST(SlcTypeNode, HasThePropertiesOfTheElementOfAReference)
{
    const Type* const element = Type::CreateArrayRefType(Type::AVector());
    EXPECT_TRUE(element->IsArrayRefType());
    EXPECT_TRUE(element->IsPointType() && element->IsVectorType());
    EXPECT_FALSE(element->IsTruePointType() || element->IsArrayType());
    EXPECT_EQ(element->ToString(), "vector");
}

TEST(SlcTypeNode, NamesArraysByElementAndLength)
{
    EXPECT_EQ(Type::CreateArrayType(Type::AColor())->ToString(), "color[]");
    EXPECT_EQ(Type::CreateArrayType(Type::AColor(), 2)->ToString(), "color[2]");
    EXPECT_EQ(Type::CreateArrayType(Type::AColor(), SlcLexicalNode::CreateFloat(2.9))->ToString(),
              "color[2]");
}

TEST(SlcDetailNode, CombinesToTheStrongest)
{
    SlcDetailNode* const uniform = SlcDetailNode::AUniform();
    SlcDetailNode* const varying = SlcDetailNode::AVarying();
    SlcDetailNode* const unknown = SlcDetailNode::AUnknown();
    SlcDetailNode* const temporary = SlcDetailNode::ATempUniform();
    EXPECT_TRUE(temporary->IsUniform() && temporary->IsTempUniform());
    EXPECT_TRUE(SlcDetailNode::Combine(uniform, temporary)->IsUniform());
    EXPECT_TRUE(SlcDetailNode::Combine(uniform, unknown)->IsUnknownDetail());
    EXPECT_TRUE(SlcDetailNode::Combine(unknown, varying)->IsVarying());
}

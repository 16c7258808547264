// Derives the facts about a default value from its detail and the variables, operators, casts,
// texture accesses and calls in it.
//
//     point p = point "shader" (1, 2, 3)              in "shader"
//     point p = 2 * point "shader" (1, 2, 3)          in no named space: the product is computed
//                                                     in the current one
//     point p = transform("object", point 0)          in "current", names "object"
//     varying float f = u + g()                       depends on its context
//
// Tested by tests/lowering/SlcInterFormTest.cpp.

#include "lowering/SlcDefaultValueFacts.h"

#include "lowering/SlcNamedSpaces.h"
#include "sqx/SqxCard.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

constexpr const char* k_objectSpace = "\"object\"";
constexpr const char* k_currentSpace = "\"current\"";
constexpr const char* k_rgbSpace = "\"rgb\"";
constexpr const char* k_noSpace = "\"\"";

}  // namespace

void SlcDefaultValueFacts::Start()
{
    m_usesGrid = false;
    m_dependsOnContext = false;
    m_namesObjectSpace = false;
    m_space = Space::None;
    m_spaceName.clear();
}

void SlcDefaultValueFacts::AddFunction(SlcFuncDefNode* function)
{
    Start();
    function->GetBody()->ApplyWalker(this);
    if (m_usesGrid)
        m_gridFunctions.insert(function->GetSymbolEntry());
    if (m_namesObjectSpace)
        m_objectSpaceFunctions.insert(function->GetSymbolEntry());
}

/// A value may vary without naming a varying variable, for example a random number.
SlcDefaultValueFacts::Facts SlcDefaultValueFacts::Of(SlcExprNode* initializer,
                                                     const SlcTypeNode* type)
{
    Start();
    initializer->ApplyWalker(this);
    const auto types = SlcPossibleTypes::Of(initializer);
    return {m_dependsOnContext || (types && types->GetDetail()->IsVarying()), m_namesObjectSpace,
            SpaceOf(type)};
}

SlcStringLiteralNode* SlcDefaultValueFacts::SpaceOf(const SlcTypeNode* type) const
{
    while (type->IsArrayType())
        type = static_cast<const SlcArrayTypeNode*>(type)->GetElementType();
    const bool hasSpace = SlcLivesInSpace(type) || type->IsColorType();
    if (!hasSpace || m_space == Space::Several)
        return SlcLexicalNode::CreateString(k_noSpace);
    if (m_space == Space::None)
        return SlcLexicalNode::CreateString(SlcLivesInSpace(type) ? k_currentSpace : k_rgbSpace);
    return SlcLexicalNode::CreateString(m_spaceName);
}

void SlcDefaultValueFacts::Case(SlcIdentExprNode* node)
{
    RecordAccess(node->GetSymbolEntry());
}

void SlcDefaultValueFacts::Case(SlcArrayRefExprNode* node)
{
    node->WalkIn(this);
    RecordAccess(node->GetSymbolEntry());
}

void SlcDefaultValueFacts::Case(SlcIdentLValueNode* node)
{
    RecordAccess(node->GetSymbolEntry());
}

void SlcDefaultValueFacts::RecordAccess(const SlcPtr<SlcVarSymbolEntry>& named)
{
    const SlcPtr<SlcVarSymbolEntry> variable = SlcOutermost(named);
    if (variable.Null())
        return;
    m_usesGrid = m_usesGrid || variable->IsHidden();
    m_dependsOnContext = m_dependsOnContext || variable->IsHidden() ||
                         variable->DependsOnContext() || !variable->GetDetail()->IsUniform();
}

void SlcDefaultValueFacts::Case(SlcCastExprNode* node)
{
    node->WalkIn(this);
    const SlcTypeNode* type = node->GetType();
    const SlcStringLiteralNode* space = node->GetSpace();
    if (SlcLivesInSpace(type)) {
        if (space)
            NameSpace(space);
        UseSpace(space ? space->GetText() : k_currentSpace);
    } else if (type->IsColorType()) {
        UseSpace(space ? space->GetText() : k_rgbSpace);
    } else if (m_space == Space::One && m_spaceName != k_currentSpace &&
               m_spaceName != k_rgbSpace) {
        m_space = Space::Several;
    }
}

void SlcDefaultValueFacts::UseSpace(const std::string& space)
{
    if (m_space == Space::One && m_spaceName != space)
        m_space = Space::Several;
    if (m_space != Space::None)
        return;
    m_space = Space::One;
    m_spaceName = space;
}

void SlcDefaultValueFacts::Case(SlcBinOpExprNode* node)
{
    node->WalkIn(this);
    const SlcTypeNode* left = SlcPossibleTypes::Of(node->GetLeft())->GetUniqueType();
    const SlcTypeNode* right = SlcPossibleTypes::Of(node->GetRight())->GetUniqueType();
    // Two triples in the same space yield a triple in that space, but a float is promoted in the
    // current space, or in rgb.
    if (!left->IsFloatType() && !right->IsFloatType())
        return;
    if (SlcLivesInSpace(left) || SlcLivesInSpace(right))
        LeaveNamedSpace(k_currentSpace);
    if (left->IsColorType() || right->IsColorType())
        LeaveNamedSpace(k_rgbSpace);
}

void SlcDefaultValueFacts::LeaveNamedSpace(const char* plainSpace)
{
    if (m_space == Space::One && m_spaceName != plainSpace)
        m_space = Space::Several;
}

void SlcDefaultValueFacts::Case(SlcTextureExprNode* node)
{
    node->WalkIn(this);
    m_usesGrid = true;
}

void SlcDefaultValueFacts::Case(SlcProcCallExprNode* node)
{
    node->WalkIn(this);
    const SlcPtr<SlcFuncSymbolEntry>& entry = node->GetSymbolEntry();
    if (entry && entry->GetOrigin() == SlcFuncOrigin::BuiltIn)
        CallBuiltIn(node);
    else if (entry && entry->GetOrigin() == SlcFuncOrigin::User)
        CallFunction(entry);
}

void SlcDefaultValueFacts::CallBuiltIn(SlcProcCallExprNode* node)
{
    if (SqxCardOf(*node->GetSymbolEntry()->GetPrimitive()).HasReads()) {
        m_usesGrid = true;
        m_dependsOnContext = true;
    }
    for (const SlcStringLiteralNode* space : SlcSpacesNamedBy(node))
        NameSpace(space);
}

void SlcDefaultValueFacts::CallFunction(const SlcPtr<SlcFuncSymbolEntry>& entry)
{
    if (m_gridFunctions.count(entry) != 0) {
        m_usesGrid = true;
        m_dependsOnContext = true;
    }
    if (m_objectSpaceFunctions.count(entry) != 0)
        m_namesObjectSpace = true;
}

void SlcDefaultValueFacts::NameSpace(const SlcStringLiteralNode* space)
{
    m_namesObjectSpace = m_namesObjectSpace || space->GetText() == k_objectSpace;
}

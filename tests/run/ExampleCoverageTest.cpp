// Checks that the examples together use all of the language: each overload of a built-in, each
// statement, operator and type of shader.

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <type_traits>
#include <typeindex>

#include "frontend/SlcCodeWalker.h"
#include "frontend/SlcNodes.h"
#include "helpers/CheckedShader.h"
#include "run/ExampleFiles.h"
#include "symbols/SlcFuncDescription.h"
#include "symbols/SlcFuncSymbolEntry.h"

namespace {

std::string Key(const std::string& name, const SlcTypeNode* returned,
                const std::vector<SlcTypeNode*>& arguments, bool hasTail, SqxPrimitive primitive)
{
    std::string key = returned->ToString() + ' ' + name + '(';
    for (const SlcTypeNode* argument : arguments)
        key += argument->ToString() + (argument->IsArrayType() ? "[]," : ",");
    return key.append(hasTail ? "...) " : ") ").append(SqxPrimitiveName(primitive));
}

/// Returns the text of the card of each overload of a built-in. The key is made of all that
/// distinguishes overloads: name, types and primitive.
std::map<std::string, std::string> Overloads()
{
    std::map<std::string, std::string> overloads;
    for (const SlcFuncDescription& function : SlcFuncDescription::All()) {
        const std::string key = Key(function.name, function.returnType, function.argTypes,
                                    function.tail != nullptr, function.card.primitive);
        EXPECT_TRUE(overloads.emplace(key, function.card.text).second) << function.card.text;
    }
    return overloads;
}

/// Collects the node classes in checked shaders, and the overloads of built-ins that they call.
class Uses : public SlcCodeWalker {
public:
    [[nodiscard]] bool Calls(const std::string& row) const { return m_calls.count(row) != 0; }
    [[nodiscard]] bool Contains(std::type_index nodeClass) const
    {
        return m_classes.count(nodeClass) != 0;
    }

private:
    using SlcCodeWalker::Case;
    void Case(SlcProcCallExprNode* node) override
    {
        const SlcFuncSymbolEntry& entry = *node->GetSymbolEntry();
        if (entry.GetOrigin() == SlcFuncOrigin::BuiltIn)
            m_calls.insert(Key(node->GetIdent()->GetName(), entry.GetReturnType(),
                               entry.GetArgTypes(), entry.IsVarNbArgs(), *entry.GetPrimitive()));
        Default(node);
    }
    void Case(SlcTextureExprNode* node) override
    {
        AddClassOf(*node->GetKind());
        Default(node);
    }
    void Case(SlcShaderDefNode* node) override
    {
        AddClassOf(*node->GetShaderType());
        Default(node);
    }
    void Default(SlcSyntaxNode* node) override
    {
        AddClassOf(*node);
        node->WalkIn(this);
    }

    void AddClassOf(const SlcSyntaxNode& node) { m_classes.insert(typeid(node)); }

    std::set<std::string> m_calls;
    std::set<std::type_index> m_classes;
};

/// True for the concrete classes of statements, expressions, assignment targets, relations, texture
/// functions and types of shaders.
template <class Node>
constexpr bool IsWord =
    !std::is_abstract_v<Node> &&
    (std::is_base_of_v<SlcStmtNode, Node> || std::is_base_of_v<SlcExprNode, Node> ||
     std::is_base_of_v<SlcLValueNode, Node> || std::is_base_of_v<SlcRelationNode, Node> ||
     std::is_base_of_v<SlcTextureTypeNode, Node> || std::is_base_of_v<SlcShaderTypeNode, Node>);

void ExpectUsed(const Uses& uses, const std::type_info& nodeClass, const char* name)
{
    EXPECT_TRUE(uses.Contains(nodeClass)) << "no example has a " << name;
}

}  // namespace

TEST(Examples, UseTheWholeLanguage)
{
    Uses uses;
    const ExampleFiles examples;
    for (const Example& example : examples.All()) {
        const CheckedShader shader(examples.Preprocessed(example));
        ASSERT_TRUE(shader.IsAccepted()) << example.name << '\n' << shader.Output();
        shader.Root()->ApplyWalker(&uses);
    }
    for (const auto& [key, row] : Overloads())
        EXPECT_TRUE(uses.Calls(key)) << "no example calls " << row;
#define SLC_NODE_CLASS(name, parent)                                                               \
    if constexpr (IsWord<name>)                                                                    \
        ExpectUsed(uses, typeid(name), #name);
#include "frontend/SlcNodeClasses.def"
#undef SLC_NODE_CLASS
}

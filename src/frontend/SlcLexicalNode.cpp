// Constants other than flags, and names, live in pools until the end of the compilation, since
// operands and symbol table entries point to them. An identifier of the source is created once per
// spelling. Names that the compiler creates are always distinct nodes, even if they are spelled
// alike, so none of them is the node of an identifier in the source.

#include "frontend/SlcLexicalNode.h"

#include <deque>
#include <unordered_map>

#include "support/SlcCompilation.h"

namespace {

/// The pool of one class. A deque never moves its elements, so plain pointers into it stay valid
/// until the end of the compilation.
template <class Node>
struct Pool {
    std::deque<Node> nodes;
};

template <class Node, class... Arguments>
Node* CreateInPool(Arguments... arguments)
{
    return &SlcPartOfCompilation<Pool<Node>>().nodes.emplace_back(arguments...);
}

struct IdentsOfSource {
    std::unordered_map<std::string_view, SlcIdentNode*> idents;  // keys are stored in the nodes
};

}  // namespace

SlcBoolConstNode SlcLexicalNode::sm_trueConst(true);
SlcBoolConstNode SlcLexicalNode::sm_falseConst(false);

SlcBoolConstNode* SlcLexicalNode::CreateBool(bool value)
{
    return value ? &sm_trueConst : &sm_falseConst;
}

SlcIntConstNode* SlcLexicalNode::CreateInt(int value, bool added)
{
    return CreateInPool<SlcIntConstNode>(value, added);
}

SlcFloatConstNode* SlcLexicalNode::CreateFloat(double value)
{
    return CreateInPool<SlcFloatConstNode>(value);
}

SlcStringLiteralNode* SlcLexicalNode::CreateString(std::string_view text)
{
    return CreateInPool<SlcStringLiteralNode>(text);
}

SlcIdentNode* SlcLexicalNode::CreateIdent(std::string_view name)
{
    return CreateInPool<SlcIdentNode>(name);
}

SlcIdentNode* SlcLexicalNode::IdentOfSource(std::string_view name)
{
    auto& idents = SlcPartOfCompilation<IdentsOfSource>().idents;
    const auto known = idents.find(name);
    if (known != idents.end())
        return known->second;
    SlcIdentNode* ident = CreateIdent(name);
    idents.emplace(ident->GetName(), ident);
    return ident;
}

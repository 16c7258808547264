// Constants and names live in pools to the end of the compilation: operands, messages and
// annotations point at them from everywhere. Names of the source are made once for each spelling;
// those that the compiler makes are distinct even if they are spelt alike, and so never meet a
// source name.

#include "frontend/SlcLexicalNode.h"

#include <deque>
#include <unordered_map>

#include "support/SlcCompilation.h"

namespace {

/// The pool of one class: a deque never moves its elements, so plain pointers into it stay good
/// to the end of the compilation.
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
    std::unordered_map<std::string_view, SlcIdentNode*> idents;  // keys lie in the nodes
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

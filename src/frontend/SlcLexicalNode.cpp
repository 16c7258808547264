#include "frontend/SlcLexicalNode.h"

#include <deque>

namespace {

/// The pool of one class: a deque never moves its elements, so plain pointers into it stay good
/// to the end of the process.
template <class Node, class... Arguments>
Node* CreateInPool(Arguments... arguments)
{
    static std::deque<Node> pool;
    return &pool.emplace_back(arguments...);
}

}  // namespace

SlcBoolConstNode SlcLexicalNode::sm_trueConst(true);
SlcBoolConstNode SlcLexicalNode::sm_falseConst(false);

SlcBoolConstNode* SlcLexicalNode::CreateBool(bool value)
{
    return value ? &sm_trueConst : &sm_falseConst;
}

SlcIntConstNode* SlcLexicalNode::CreateInt(int value, bool hidden)
{
    return CreateInPool<SlcIntConstNode>(value, hidden);
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

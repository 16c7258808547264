// Each `Case` forwards the node to the `Case` of the parent class. The functions are generated from
// the list of classes in SlcNodeClasses.def.

#include "frontend/SlcCodeWalker.h"

#include "frontend/SlcNodes.h"

void SlcCodeWalker::Case(SlcSyntaxNode* node)
{
    Default(node);
}

#define SLC_NODE_CLASS(name, parent)                                                               \
    void SlcCodeWalker::Case(name* node)                                                           \
    {                                                                                              \
        Case(static_cast<parent*>(node));                                                          \
    }
#include "frontend/SlcNodeClasses.def"
#undef SLC_NODE_CLASS

template <class Node>
void SlcCallCase(SlcCodeWalker& walker, Node* node)
{
    walker.Case(node);
}

#define SLC_NODE_CLASS(name, parent) template void SlcCallCase(SlcCodeWalker& walker, name* node);
#include "frontend/SlcNodeClasses.def"
#undef SLC_NODE_CLASS

#pragma once

class SlcSyntaxNode;
#define SLC_NODE_CLASS(name, parent) class name;
#include "frontend/SlcNodeClasses.def"
#undef SLC_NODE_CLASS

/// The visitor of the syntax tree; every pass over the tree derives from it.
///
/// A node passes itself to the `Case` of its class. Each `Case` here forwards it to the `Case` of
/// its parent class, up to that of `SlcSyntaxNode`, which calls `Default`. A pass thus overrides
/// exactly the classes that it cares about, at any height, and `Default` for the rest. A pass that
/// wants the usual descent has `Default` call `WalkIn` of the node with itself.
class SlcCodeWalker {
public:
    virtual ~SlcCodeWalker() = default;

    /// One for each class. Not called by hand: `SlcSyntaxNode::ApplyWalker` finds the one of the
    /// class. An override hides the others, so that a walker begins with `using
    /// SlcCodeWalker::Case;`.
    virtual void Case(SlcSyntaxNode* node);
#define SLC_NODE_CLASS(name, parent) virtual void Case(name* node);
#include "frontend/SlcNodeClasses.def"
#undef SLC_NODE_CLASS
    /// Whatever no overridden `Case` has taken.
    virtual void Default(SlcSyntaxNode* node) = 0;
};

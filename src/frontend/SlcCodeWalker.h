#pragma once

class SlcSyntaxNode;
#define SLC_NODE_CLASS(name, parent) class name;
#include "frontend/SlcNodeClasses.def"
#undef SLC_NODE_CLASS

/// The visitor of the syntax tree; every pass over the tree derives from it.
///
/// A node passes itself to the `Case` of its class or, if SlcNodeClasses.def does not list that
/// class, of its base class. Each `Case` here forwards the node to the `Case` of the parent class
/// in that list, up to that of `SlcSyntaxNode`, which calls `Default`. So a pass overrides `Case`
/// for the classes that it handles, at any level, and `Default` for the rest. For the usual
/// recursive walk, `Default` calls the node's `WalkIn` with the walker.
class SlcCodeWalker {
public:
    virtual ~SlcCodeWalker() = default;

    /// Handles the nodes of one class; there is a `Case` for each class in the list. Called through
    /// `SlcSyntaxNode::ApplyWalker`, not directly. An override hides all other overloads, so a
    /// walker declares `using SlcCodeWalker::Case;`.
    virtual void Case(SlcSyntaxNode* node);
#define SLC_NODE_CLASS(name, parent) virtual void Case(name* node);
#include "frontend/SlcNodeClasses.def"
#undef SLC_NODE_CLASS
    /// Handles every node that no overridden `Case` handles.
    virtual void Default(SlcSyntaxNode* node) = 0;
};

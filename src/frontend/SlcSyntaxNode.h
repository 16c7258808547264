#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "frontend/SlcAnnotation.h"
#include "support/SlcPtr.h"

class SlcAssignExprNode;
class SlcBinOpExprNode;
class SlcCodeWalker;
class SlcExprNode;
class SlcLValueNode;
class SlcRelationNode;
class SlcStmtNode;

/// A place in the user's source. `file` points to a name in the scanner's list, which exists until
/// the end of the compilation, or to an empty name; null before the first line marker.
struct SlcPosition {
    int line = 0;
    int column = 0;
    const std::string* file = nullptr;
};

/// A range of the preprocessed text: the offsets of its first character and of the one after its
/// last.
struct SlcTextRange {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;

    [[nodiscard]] bool IsEmpty() const { return begin == end; }
};

/// Base of all nodes of the syntax tree: a position, a range, a height, one annotation slot, and
/// the operations that pass nodes to a walker. A node has one owner, its parent; but lexical, type,
/// detail and storage nodes are static or belong to the pools of their classes, and are never owned
/// by a tree.
///
///     Ci = s * Cs;      SlcAssignStmtNode
///                         SlcEqAssignExprNode
///                           SlcIdentLValueNode       Ci
///                           SlcMultExprNode
///                             SlcIdentExprNode       s
///                             SlcIdentExprNode       Cs
class SlcSyntaxNode {
public:
    /// The maximum height of an expression, condition or statement, lower if the process may use
    /// less stack. When the parser makes a higher one, it reports and replaces it, but it does not
    /// check a block again to which it adds a statement. It also reserves stack for a walk of this
    /// depth. So a pass may recurse without a depth check, as long as all its functions together
    /// need at most `k_stackPerLevel` bytes for a level.
    static constexpr int k_maxHeight = 10000;
    static constexpr std::size_t k_stackPerLevel = 8192;

    /// Make a node without and with a position. A class with children takes ownership of the
    /// children that are passed to its constructor.
    SlcSyntaxNode();
    explicit SlcSyntaxNode(const SlcPosition& position);
    SlcSyntaxNode(const SlcSyntaxNode&) = delete;
    SlcSyntaxNode& operator=(const SlcSyntaxNode&) = delete;
    virtual ~SlcSyntaxNode();

    [[nodiscard]] virtual int GetNoLine() const { return m_line; }
    [[nodiscard]] virtual int GetNoColumn() const { return m_column; }
    /// Never null; points to an empty name if no file is known.
    [[nodiscard]] virtual const std::string* GetFileParsed() const { return m_file; }
    virtual void SetNoLine(int line) { m_line = line; }
    virtual void SetNoColumn(int column) { m_column = column; }
    virtual void SetFileParsed(const std::string* file) { m_file = file; }

    /// The range of the node's source text, without enclosing parentheses. A node for a list has
    /// only the range of the first item, except a block among statements: its range includes the
    /// braces. Empty for nodes that the source only implies, for shared and pooled nodes, and for
    /// some small nodes, such as `SlcTypeSpecNode` and `SlcChannelNode`.
    [[nodiscard]] const SlcTextRange& Range() const { return m_range; }
    void SetRange(const SlcTextRange& range) { m_range = range; }

    /// Calls the walker's `Case` for the node's own class; for the few classes without a `Case`,
    /// such as `SlcErrorTypeNode`, the one for a base class.
    virtual void ApplyWalker(SlcCodeWalker* walker) = 0;
    /// Calls `ApplyWalker` on each child; skips optional children that are missing. The order is
    /// that of the source, except that `SlcArrayRefExprNode` passes its index first.
    virtual void WalkIn(SlcCodeWalker* walker);

    /// Returns file, line and column.
    [[nodiscard]] SlcPosition Position() const;

    // Conversions to the classes that are queried most often; null for any other class. A dynamic
    // cast would be slower, since it compares the names of classes up the hierarchy.
    [[nodiscard]] virtual SlcExprNode* AsExpr() { return nullptr; }
    [[nodiscard]] virtual SlcBinOpExprNode* AsBinOpExpr() { return nullptr; }
    [[nodiscard]] virtual SlcAssignExprNode* AsAssignExpr() { return nullptr; }
    [[nodiscard]] virtual SlcRelationNode* AsRelation() { return nullptr; }
    [[nodiscard]] virtual SlcStmtNode* AsStmt() { return nullptr; }
    [[nodiscard]] virtual SlcLValueNode* AsLValue() { return nullptr; }

    /// Null at first. Setting an annotation replaces the previous one.
    [[nodiscard]] const SlcPtr<SlcAnnotation>& GetAnnotation() const { return m_annotation; }
    void SetAnnotation(SlcPtr<SlcAnnotation> annotation);

    /// The number of levels of owned nodes below this node: the depth of a recursive walk, without
    /// shared and pooled nodes.
    [[nodiscard]] int Height() const { return m_height; }

protected:
    /// Updates the height. Every composite node calls this for each child that it owns; null is
    /// allowed.
    void Adopt(const SlcSyntaxNode* child);
    /// Does the same, and takes the position of a child that is not null; for a node without its
    /// own position.
    void AdoptFirst(const SlcSyntaxNode* child);

    static void Walk(SlcSyntaxNode* child, SlcCodeWalker* walker)
    {
        if (child)
            child->ApplyWalker(walker);
    }

private:
    int m_line = 0;
    int m_column = 0;
    const std::string* m_file;  // in the scanner's list of names, or the shared empty name
    SlcTextRange m_range;
    int m_height = 0;
    SlcPtr<SlcAnnotation> m_annotation;
};

/// Calls the walker's `Case` for a node class. SlcCodeWalker.cpp instantiates it for each class in
/// SlcNodeClasses.def, so that neither this header nor its includers depend on that list.
template <class Node>
void SlcCallCase(SlcCodeWalker& walker, Node* node);

/// Implements `ApplyWalker` for the node class `Self`, which derives from `Base` through this
/// template.
template <class Self, class Base>
class SlcVisitable : public Base {
public:
    using Base::Base;
    void ApplyWalker(SlcCodeWalker* walker) override
    {
        SlcCallCase(*walker, static_cast<Self*>(this));
    }
};

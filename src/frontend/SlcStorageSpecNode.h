#pragma once

#include "frontend/SlcSyntaxNode.h"

/// Base of storage classes: where a variable's value comes from and whether code may write it.
/// There is one shared object per class; the `Is` operations distinguish them.
class SlcStorageSpecNode : public SlcSyntaxNode {
public:
    [[nodiscard]] virtual bool IsInput() const { return false; }
    [[nodiscard]] virtual bool IsOutput() const { return false; }
    [[nodiscard]] virtual bool IsExtern() const { return false; }
    [[nodiscard]] virtual bool IsLocal() const { return false; }
    [[nodiscard]] virtual bool IsReadOnly() const { return false; }
    [[nodiscard]] virtual bool IsReadWrite() const { return false; }

    /// Return the nodes of the six storage classes, which live as long as the process.
    [[nodiscard]] static SlcStorageSpecNode* AInput();
    [[nodiscard]] static SlcStorageSpecNode* AOutput();
    [[nodiscard]] static SlcStorageSpecNode* AExtern();
    [[nodiscard]] static SlcStorageSpecNode* ALocal();
    [[nodiscard]] static SlcStorageSpecNode* AReadOnly();
    [[nodiscard]] static SlcStorageSpecNode* AReadWrite();
};

/// A formal without `output`, or `PI`: a statement that writes it is an error. Also the internal
/// variable that holds the type of a function's result.
class SlcInputSpecNode : public SlcVisitable<SlcInputSpecNode, SlcStorageSpecNode> {
public:
    [[nodiscard]] bool IsInput() const override { return true; }
};

/// `output`: a formal whose value is returned to the caller, for a shader to the renderer.
class SlcOutputSpecNode : public SlcVisitable<SlcOutputSpecNode, SlcStorageSpecNode> {
public:
    [[nodiscard]] bool IsOutput() const override { return true; }
};

/// `extern`: a name that a body declares to mean a variable of an enclosing scope, which may be a
/// predefined one.
class SlcExternSpecNode : public SlcVisitable<SlcExternSpecNode, SlcStorageSpecNode> {
public:
    [[nodiscard]] bool IsExtern() const override { return true; }
};

/// A variable of a body, a temporary, or a constant. Also a faulty name, after its report.
class SlcLocalSpecNode : public SlcVisitable<SlcLocalSpecNode, SlcStorageSpecNode> {
public:
    [[nodiscard]] bool IsLocal() const override { return true; }
};

/// A predefined variable that this kind of shader should only read: an assignment to it leads to a
/// warning.
class SlcReadOnlySpecNode : public SlcVisitable<SlcReadOnlySpecNode, SlcStorageSpecNode> {
public:
    [[nodiscard]] bool IsReadOnly() const override { return true; }
};

/// A predefined variable that this kind of shader may write.
class SlcReadWriteSpecNode : public SlcVisitable<SlcReadWriteSpecNode, SlcStorageSpecNode> {
public:
    [[nodiscard]] bool IsReadWrite() const override { return true; }
};

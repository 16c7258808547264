#pragma once

// Definitions and declarations. They are checked by SlcCheckSemantics and SlcAddVarsSymbolTable;
// the declarations of a shader become SlcShaderFacts.

#include <memory>
#include <vector>

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcExprNodes.h"
#include "frontend/SlcLexicalNode.h"
#include "frontend/SlcShaderTypeNode.h"
#include "frontend/SlcStorageSpecNode.h"
#include "frontend/SlcTypeNode.h"

class SlcFuncSymbolEntry;
class SlcVarSymbolEntry;

/// A shader or a function.
class SlcDefinitionNode : public SlcVisitable<SlcDefinitionNode, SlcSyntaxNode> {
public:
    using SlcVisitable::SlcVisitable;
    [[nodiscard]] virtual bool IsShader() const { return false; }
    [[nodiscard]] virtual bool IsFunction() const { return false; }
};

/// The root of a tree: the definitions of one source with its included files, in order.
class SlcDefinitionsNode : public SlcVisitable<SlcDefinitionsNode, SlcSyntaxNode> {
public:
    SlcDefinitionsNode();
    ~SlcDefinitionsNode() override;
    void AddNewDefinition(std::unique_ptr<SlcDefinitionNode> definition);
    [[nodiscard]] const std::vector<std::unique_ptr<SlcDefinitionNode>>& GetDefinitions() const;
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::vector<std::unique_ptr<SlcDefinitionNode>> m_definitions;
};

/// One name of a declaration, with its array size and initializer: `w[3] = {1, 2, 3}`.
class SlcDefExprNode : public SlcVisitable<SlcDefExprNode, SlcSyntaxNode> {
public:
    static constexpr int k_scalar = -1;          // array size of a name without brackets
    static constexpr int k_unspecifiedSize = 0;  // array size if the brackets are empty or hold 0

    /// `initializer` may be null.
    SlcDefExprNode(const SlcPosition& position, SlcIdentNode* ident,
                   std::unique_ptr<SlcExprNode> initializer, int arraySize);
    ~SlcDefExprNode() override;
    [[nodiscard]] SlcIdentNode* GetIdent() const { return m_ident; }
    /// Null if the source has no initializer.
    [[nodiscard]] SlcExprNode* GetInitializer() const { return m_initializer.get(); }
    /// True if brackets follow the name. In `float[3.0] w`, they belong to the type.
    [[nodiscard]] bool IsArray() const { return m_arraySize != k_scalar; }
    /// Returns the length, or one of the two constants above.
    [[nodiscard]] int GetArraySize() const { return m_arraySize; }
    /// Null before the semantic pass, which sets it even if the definition is faulty. It stays null
    /// in the definitions that the pass skips: a second shader, and all if there is no shader.
    [[nodiscard]] const SlcPtr<SlcVarSymbolEntry>& GetSymbolEntry() const { return m_entry; }
    void SetSymbolEntry(SlcPtr<SlcVarSymbolEntry> entry);
    void WalkIn(SlcCodeWalker* walker) override;

private:
    SlcIdentNode* m_ident;
    std::unique_ptr<SlcExprNode> m_initializer;
    int m_arraySize;
    SlcPtr<SlcVarSymbolEntry> m_entry;  // set by the semantic pass
};

/// The names of one declaration: `x = 1, y` in `float x = 1, y`.
class SlcDefExprsNode : public SlcVisitable<SlcDefExprsNode, SlcSyntaxNode> {
public:
    void AddDefExpr(std::unique_ptr<SlcDefExprNode> definition);
    [[nodiscard]] const std::vector<std::unique_ptr<SlcDefExprNode>>& GetDefExprs() const;
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::vector<std::unique_ptr<SlcDefExprNode>> m_definitions;
};

/// Storage, detail and type of a declaration: `output varying color`. Where the source omits the
/// storage or the detail, the node refers to the default. It owns none of the three.
class SlcTypeSpecNode : public SlcVisitable<SlcTypeSpecNode, SlcSyntaxNode> {
public:
    SlcTypeSpecNode(const SlcPosition& position, SlcStorageSpecNode* storage, SlcDetailNode* detail,
                    SlcTypeNode* type);
    [[nodiscard]] SlcStorageSpecNode* GetStorage() const { return m_storage; }
    [[nodiscard]] SlcDetailNode* GetDetail() const { return m_detail; }
    [[nodiscard]] SlcTypeNode* GetType() const { return m_type; }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    SlcStorageSpecNode* m_storage;
    SlcDetailNode* m_detail;
    SlcTypeNode* m_type;
};

/// A declaration: one type with its names, such as `float x = 1, y`.
class SlcVarDefsNode : public SlcVisitable<SlcVarDefsNode, SlcSyntaxNode> {
public:
    SlcVarDefsNode(std::unique_ptr<SlcTypeSpecNode> typeSpec,
                   std::unique_ptr<SlcDefExprsNode> definitions);
    [[nodiscard]] SlcTypeSpecNode* GetTypeSpec() const { return m_typeSpec.get(); }
    [[nodiscard]] SlcDefExprsNode* GetDefExprs() const { return m_definitions.get(); }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::unique_ptr<SlcTypeSpecNode> m_typeSpec;
    std::unique_ptr<SlcDefExprsNode> m_definitions;
};

/// The formals of a shader or function: declarations in the order of the source. A declaration may
/// hold several formals.
class SlcFormalsNode : public SlcVisitable<SlcFormalsNode, SlcSyntaxNode> {
public:
    void AddVarDef(std::unique_ptr<SlcVarDefsNode> declaration);
    /// Inserts a declaration before all others. Part of the interface, but unused: the grammar adds
    /// declarations in order.
    void AddVarDefBegin(std::unique_ptr<SlcVarDefsNode> declaration);
    [[nodiscard]] const std::vector<std::unique_ptr<SlcVarDefsNode>>& GetVarDefs() const;
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::vector<std::unique_ptr<SlcVarDefsNode>> m_declarations;
};

class SlcStmtsNode;

/// `surface name(formals) { body }`, and the same for the other kinds of shader. The formals are
/// the parameters of the shader. A source may define only one shader; the semantic pass reports a
/// second one.
class SlcShaderDefNode : public SlcVisitable<SlcShaderDefNode, SlcDefinitionNode> {
public:
    SlcShaderDefNode(const SlcPosition& position, std::unique_ptr<SlcShaderTypeNode> shaderType,
                     SlcIdentNode* ident, std::unique_ptr<SlcFormalsNode> formals,
                     std::unique_ptr<SlcStmtsNode> body);
    ~SlcShaderDefNode() override;
    [[nodiscard]] bool IsShader() const override { return true; }
    [[nodiscard]] SlcShaderTypeNode* GetShaderType() const { return m_shaderType.get(); }
    [[nodiscard]] SlcIdentNode* GetIdent() const { return m_ident; }
    [[nodiscard]] SlcFormalsNode* GetFormals() const { return m_formals.get(); }
    [[nodiscard]] SlcStmtsNode* GetBody() const { return m_body.get(); }
    void WalkIn(SlcCodeWalker* walker) override;

private:
    std::unique_ptr<SlcShaderTypeNode> m_shaderType;
    SlcIdentNode* m_ident;
    std::unique_ptr<SlcFormalsNode> m_formals;
    std::unique_ptr<SlcStmtsNode> m_body;
};

/// `float name(formals) { body }`, at file level or, in a `SlcFuncDefStmtNode`, in a body. The
/// lowering expands the function at each call and generates no code for the function itself.
class SlcFuncDefNode : public SlcVisitable<SlcFuncDefNode, SlcDefinitionNode> {
public:
    /// `returnType` must not be null; the parser passes float if the source names no type.
    SlcFuncDefNode(const SlcPosition& position, SlcTypeNode* returnType, SlcIdentNode* ident,
                   std::unique_ptr<SlcFormalsNode> formals, std::unique_ptr<SlcStmtsNode> body);
    ~SlcFuncDefNode() override;
    [[nodiscard]] bool IsFunction() const override { return true; }
    /// Void for a procedure.
    [[nodiscard]] SlcTypeNode* GetReturnType() const { return m_returnType; }
    [[nodiscard]] SlcIdentNode* GetIdent() const { return m_ident; }
    [[nodiscard]] SlcFormalsNode* GetFormals() const { return m_formals.get(); }
    [[nodiscard]] SlcStmtsNode* GetBody() const { return m_body.get(); }
    /// Null before the semantic pass and after `SlcDeleteTree`.
    [[nodiscard]] const SlcPtr<SlcFuncSymbolEntry>& GetSymbolEntry() const { return m_entry; }
    void SetSymbolEntry(SlcPtr<SlcFuncSymbolEntry> entry);
    void WalkIn(SlcCodeWalker* walker) override;

private:
    SlcTypeNode* m_returnType;
    SlcIdentNode* m_ident;
    std::unique_ptr<SlcFormalsNode> m_formals;
    std::unique_ptr<SlcStmtsNode> m_body;
    SlcPtr<SlcFuncSymbolEntry> m_entry;  // set by the semantic pass, reset by SlcDeleteTree
};

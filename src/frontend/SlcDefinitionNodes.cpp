// A declaration keeps the structure of the source: one type for several names, each with its length
// and value. The checks set the symbol table entries. A node shares ownership of its entry, but an
// entry refers to nodes only by plain pointers, so nodes are not part of reference cycles.
//
//     uniform float a = 1, b[2];        SlcTypeSpecNode, and two SlcDefExprNode
//
// Tested by tests/frontend/TreeShapeTest.cpp.

#include "frontend/SlcDefinitionNodes.h"

#include <utility>

#include "frontend/SlcStmtNodes.h"

SlcDefinitionsNode::SlcDefinitionsNode() = default;
SlcDefinitionsNode::~SlcDefinitionsNode() = default;

void SlcDefinitionsNode::AddNewDefinition(std::unique_ptr<SlcDefinitionNode> definition)
{
    Adopt(definition.get());
    m_definitions.push_back(std::move(definition));
}

const std::vector<std::unique_ptr<SlcDefinitionNode>>& SlcDefinitionsNode::GetDefinitions() const
{
    return m_definitions;
}

void SlcDefinitionsNode::WalkIn(SlcCodeWalker* walker)
{
    for (const auto& definition : m_definitions)
        Walk(definition.get(), walker);
}

SlcDefExprNode::SlcDefExprNode(const SlcPosition& position, SlcIdentNode* ident,
                               std::unique_ptr<SlcExprNode> initializer, int arraySize)
    : SlcVisitable(position),
      m_ident(ident),
      m_initializer(std::move(initializer)),
      m_arraySize(arraySize)
{
    Adopt(m_initializer.get());
}

SlcDefExprNode::~SlcDefExprNode() = default;

void SlcDefExprNode::SetSymbolEntry(SlcPtr<SlcVarSymbolEntry> entry)
{
    m_entry = std::move(entry);
}

void SlcDefExprNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_ident, walker);
    Walk(m_initializer.get(), walker);
}

void SlcDefExprsNode::AddDefExpr(std::unique_ptr<SlcDefExprNode> definition)
{
    if (m_definitions.empty())
        AdoptFirst(definition.get());
    else
        Adopt(definition.get());
    m_definitions.push_back(std::move(definition));
}

const std::vector<std::unique_ptr<SlcDefExprNode>>& SlcDefExprsNode::GetDefExprs() const
{
    return m_definitions;
}

void SlcDefExprsNode::WalkIn(SlcCodeWalker* walker)
{
    for (const auto& definition : m_definitions)
        Walk(definition.get(), walker);
}

SlcTypeSpecNode::SlcTypeSpecNode(const SlcPosition& position, SlcStorageSpecNode* storage,
                                 SlcDetailNode* detail, SlcTypeNode* type)
    : SlcVisitable(position),
      m_storage(storage),
      m_detail(detail),
      m_type(type)
{
}

void SlcTypeSpecNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_storage, walker);
    Walk(m_detail, walker);
    Walk(m_type, walker);
}

SlcVarDefsNode::SlcVarDefsNode(std::unique_ptr<SlcTypeSpecNode> typeSpec,
                               std::unique_ptr<SlcDefExprsNode> definitions)
    : m_typeSpec(std::move(typeSpec)),
      m_definitions(std::move(definitions))
{
    AdoptFirst(m_typeSpec.get());
    Adopt(m_definitions.get());
}

void SlcVarDefsNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_typeSpec.get(), walker);
    Walk(m_definitions.get(), walker);
}

void SlcFormalsNode::AddVarDef(std::unique_ptr<SlcVarDefsNode> declaration)
{
    Adopt(declaration.get());
    m_declarations.push_back(std::move(declaration));
}

void SlcFormalsNode::AddVarDefBegin(std::unique_ptr<SlcVarDefsNode> declaration)
{
    Adopt(declaration.get());
    m_declarations.insert(m_declarations.begin(), std::move(declaration));
}

const std::vector<std::unique_ptr<SlcVarDefsNode>>& SlcFormalsNode::GetVarDefs() const
{
    return m_declarations;
}

void SlcFormalsNode::WalkIn(SlcCodeWalker* walker)
{
    for (const auto& declaration : m_declarations)
        Walk(declaration.get(), walker);
}

SlcShaderDefNode::SlcShaderDefNode(const SlcPosition& position,
                                   std::unique_ptr<SlcShaderTypeNode> shaderType,
                                   SlcIdentNode* ident, std::unique_ptr<SlcFormalsNode> formals,
                                   std::unique_ptr<SlcStmtsNode> body)
    : SlcVisitable(position),
      m_shaderType(std::move(shaderType)),
      m_ident(ident),
      m_formals(std::move(formals)),
      m_body(std::move(body))
{
    Adopt(m_shaderType.get());
    Adopt(m_formals.get());
    Adopt(m_body.get());
}

SlcShaderDefNode::~SlcShaderDefNode() = default;

void SlcShaderDefNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_shaderType.get(), walker);
    Walk(m_ident, walker);
    Walk(m_formals.get(), walker);
    Walk(m_body.get(), walker);
}

SlcFuncDefNode::SlcFuncDefNode(const SlcPosition& position, SlcTypeNode* returnType,
                               SlcIdentNode* ident, std::unique_ptr<SlcFormalsNode> formals,
                               std::unique_ptr<SlcStmtsNode> body)
    : SlcVisitable(position),
      m_returnType(returnType),
      m_ident(ident),
      m_formals(std::move(formals)),
      m_body(std::move(body))
{
    Adopt(m_formals.get());
    Adopt(m_body.get());
}

SlcFuncDefNode::~SlcFuncDefNode() = default;

void SlcFuncDefNode::SetSymbolEntry(SlcPtr<SlcFuncSymbolEntry> entry)
{
    m_entry = std::move(entry);
}

void SlcFuncDefNode::WalkIn(SlcCodeWalker* walker)
{
    Walk(m_returnType, walker);
    Walk(m_ident, walker);
    Walk(m_formals.get(), walker);
    Walk(m_body.get(), walker);
}

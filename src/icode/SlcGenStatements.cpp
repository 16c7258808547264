// Definitions and the statements without control flow.

#include <cassert>

#include "icode/SlcGenInterCode.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcPossibleTypes.h"

void SlcGenInterCode::Case(SlcDefinitionsNode* node)
{
    DefaultOutputValues();
    node->WalkIn(this);
}

void SlcGenInterCode::Case(SlcShaderDefNode* node)
{
    // The default values of the parameters have lists of their own.
    node->GetBody()->ApplyWalker(this);
}

// Functions have code only where they are called.
void SlcGenInterCode::Case(SlcFuncDefNode*) {}
void SlcGenInterCode::Case(SlcFuncDefStmtNode*) {}

void SlcGenInterCode::Case(SlcStmtsNode* node)
{
    ++m_blockCounter;
    const std::size_t copiesBefore = m_elementCopies.size();
    for (const auto& statement : node->GetStatements()) {
        statement->ApplyWalker(this);
        m_elementCopies.resize(copiesBefore);
        if (!m_bodies.empty() && m_bodies.back().ended)
            return;
        if (m_values.empty() && m_elementCopies.empty())
            ForgetWrites();
    }
    ++m_blockCounter;
}

void SlcGenInterCode::Case(SlcAssignStmtNode* node)
{
    [[maybe_unused]] const std::size_t waiting = m_values.size();
    GenLineNumberInfo(node);
    m_valueUnused = true;
    node->WalkIn(this);
    static_cast<void>(PopReference());
    assert(m_values.size() == waiting);
    ReleaseTempVars();
}

void SlcGenInterCode::Case(SlcProcCallStmtNode* node)
{
    [[maybe_unused]] const std::size_t waiting = m_values.size();
    GenLineNumberInfo(node);
    node->WalkIn(this);
    if (!TypeOf(node->GetCall())->IsVoidType())
        static_cast<void>(PopReference());
    assert(m_values.size() == waiting);
    ReleaseTempVars();
}

void SlcGenInterCode::Case(SlcVarDefsStmtNode* node)
{
    GenLineNumberInfo(node);
    node->WalkIn(this);
    ReleaseTempVars();
}

void SlcGenInterCode::Case(SlcVarDefsNode* node)
{
    node->WalkIn(this);
}

void SlcGenInterCode::Case(SlcDefExprsNode* node)
{
    node->WalkIn(this);
}

/// A body that ends at its `return` does not count its end, so that a number may come again.
std::string SlcGenInterCode::LocalName(const std::string& sourceName)
{
    std::string name = sourceName + '_' + std::to_string(m_blockCounter);
    while (!m_localNames.insert(name).second)
        name = sourceName + '_' + std::to_string(++m_blockCounter);
    return name;
}

void SlcGenInterCode::Case(SlcDefExprNode* node)
{
    const SlcPtr<SlcVarSymbolEntry>& entry = node->GetSymbolEntry();
    if (entry.Null())
        m_errors->FatalError(node, "Variable " + node->GetIdent()->GetName() +
                                       " not found while generating intermediate code");
    const SlcStorageSpecNode* storage = entry->GetStorage();
    if (storage->IsExtern() || storage->IsReadOnly() || storage->IsReadWrite())
        return;

    // Made anew each time, so that each expansion of a function has variables of its own.
    const std::string name = LocalName(entry->GetName());
    const auto variable =
        MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(name), entry->GetType(),
                               DetailHere(entry->GetDetail()), entry->GetStorage());
    entry->GetIntCodeVar() = variable;
    m_list->AddLocalVar(variable);
    if (!node->GetInitializer())
        return;

    const std::size_t valuesBefore = m_values.size();
    node->GetInitializer()->ApplyWalker(this);
    if (entry->GetType()->IsArrayType()) {
        GenArrayInit(variable, variable->GetDetail(), valuesBefore);
        return;
    }
    GenPlainAssignment(variable, Pop());
}

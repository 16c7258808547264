// Lowers definitions and statements without control flow.
//
// After a statement its values have been popped, and its temporaries may be reused. A local becomes
// a new variable each time its definition is lowered, so that two expansions of a function do not
// share the variable.
//
// Tested by tests/lowering/SlcGenInterCodeTest.cpp.

#include <cassert>

#include "lowering/SlcGenInterCode.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcPossibleTypes.h"

void SlcGenInterCode::Case(SlcDefinitionsNode* node)
{
    DefaultOutputValues();
    node->WalkIn(this);
}

void SlcGenInterCode::Case(SlcShaderDefNode* node)
{
    // The default values of the parameters have separate lists.
    node->GetBody()->ApplyWalker(this);
}

// Functions are expanded only where they are called.
void SlcGenInterCode::Case(SlcFuncDefNode*) {}
void SlcGenInterCode::Case(SlcFuncDefStmtNode*) {}

void SlcGenInterCode::Case(SlcStmtsNode* node)
{
    m_list.NextBlock();
    const std::size_t copiesBefore = m_elements.CountCopies();
    for (const auto& statement : node->GetStatements()) {
        statement->ApplyWalker(this);
        // After a statement no code writes to the copies of array elements that it made.
        m_elements.ForgetCopies(copiesBefore);
        if (m_leaving.HasBodyEnded())
            return;
        // If a body is expanded within an expression, pending values and copies of elements still
        // need the record of writes.
        if (m_values.IsEmpty() && copiesBefore == 0)
            m_values.ForgetWrites();
    }
    m_list.NextBlock();
}

void SlcGenInterCode::Case(SlcAssignStmtNode* node)
{
    [[maybe_unused]] const std::size_t waiting = m_values.Size();
    GenLineNumberInfo(node);
    m_valueUnused = true;
    node->WalkIn(this);
    static_cast<void>(m_values.PopReference());
    assert(m_values.Size() == waiting);
    m_list.ReleaseTempVars();
}

void SlcGenInterCode::Case(SlcProcCallStmtNode* node)
{
    [[maybe_unused]] const std::size_t waiting = m_values.Size();
    GenLineNumberInfo(node);
    node->WalkIn(this);
    if (!SlcLoweringContext::TypeOf(node->GetCall())->IsVoidType())
        static_cast<void>(m_values.PopReference());
    assert(m_values.Size() == waiting);
    m_list.ReleaseTempVars();
}

void SlcGenInterCode::Case(SlcVarDefsStmtNode* node)
{
    GenLineNumberInfo(node);
    node->WalkIn(this);
    m_list.ReleaseTempVars();
}

void SlcGenInterCode::Case(SlcVarDefsNode* node)
{
    node->WalkIn(this);
}

void SlcGenInterCode::Case(SlcDefExprsNode* node)
{
    node->WalkIn(this);
}

void SlcGenInterCode::Case(SlcDefExprNode* node)
{
    const SlcPtr<SlcVarSymbolEntry>& entry = node->GetSymbolEntry();
    if (entry.Null())
        m_errors->FatalError(node, "Variable " + node->GetIdent()->GetName() +
                                       " not found while generating intermediate code");
    const SlcStorageSpecNode* storage = entry->GetStorage();
    // This declaration only names a variable that already has an operand.
    if (storage->IsExtern() || storage->IsReadOnly() || storage->IsReadWrite())
        return;

    // A new variable each time, so that each expansion of a function has separate variables.
    const std::string name = m_list.LocalName(entry->GetName());
    const auto variable =
        MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(name), entry->GetType(),
                               m_list.DetailHere(entry->GetDetail()), entry->GetStorage());
    entry->GetIntCodeVar() = variable;
    m_list.List()->AddLocalVar(variable);
    if (!node->GetInitializer())
        return;

    const std::size_t valuesBefore = m_values.Size();
    node->GetInitializer()->ApplyWalker(this);
    if (entry->GetType()->IsArrayType()) {
        m_elements.GenArrayInit(variable, valuesBefore);
        return;
    }
    m_conditions.GenPlainAssignment(variable, m_values.Pop());
}

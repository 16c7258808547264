// The walker makes two kinds of lists. The main list runs on grids. Each default value has a
// separate list. If the value needs shading data, its list also runs on grids; otherwise the list
// runs once per instance, where nothing varies and each `if`, loop and conditional expression is
// lowered to jumps.
//
// The markers at both ends of the main list represent the renderer in data-flow analysis: the
// renderer defines variables at the start and uses outputs at the end.
//
// Tested by tests/lowering/SlcGenInterCodeTest.cpp.

#include "lowering/SlcGenInterCode.h"

#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcShaderSymbolTable.h"

SlcGenInterCode::SlcGenInterCode(SlcPtr<SlcSemanticError> errors, SlcOptionsControl& options)
    : m_context(std::move(errors), options)
{
}

SlcGenInterCode::~SlcGenInterCode() = default;

SlcPtr<SlcListICode> SlcGenInterCode::GenCode(SlcSyntaxNode* tree, SlcShaderTypeNode* shaderType,
                                              bool CiAssigned, bool OiAssigned)
{
    m_context.Start(SlcListBuilder::Runs::OnGrid);
    m_flagCopyNeeded = false;
    SetShaderType(shaderType);
    m_CiAssigned = CiAssigned;
    m_OiAssigned = OiAssigned;
    m_list.AddICode(MakeShared<SlcBeginShaderICode>());
    tree->ApplyWalker(this);
    m_list.AddICode(MakeShared<SlcEndShaderICode>());
    m_lights.InsertLightEvaluations();
    return m_list.List();
}

SlcPtr<SlcListICode> SlcGenInterCode::GenInitFormalCode(SlcDefExprNode* definition,
                                                        std::deque<SlcOperand>& values,
                                                        SlcTypeNode* type)
{
    m_context.Start(definition->GetSymbolEntry()->DependsOnContext()
                        ? SlcListBuilder::Runs::OnGrid
                        : SlcListBuilder::Runs::OncePerInstance);
    m_flagCopyNeeded = false;
    definition->GetInitializer()->ApplyWalker(this);
    if (m_values.IsEmpty())
        m_errors->FatalError(definition, "No lexical node is found for an init expr.");

    const SlcTypeNode* valueType = m_values.Last()->GetType();
    if (!type->IsArrayType()) {
        values.push_back(InitialValue(m_values.Pop(), type));
    } else if (valueType->IsSameType(type)) {
        values.push_back(m_values.Pop());
    } else if (valueType->IsArrayType()) {
        const SlcOperand source = m_values.PopReference();
        values.push_back(m_list.GenTempVar(type, source->GetDetail()));
        m_elements.GenArrayCopy(values.back(), source);
    } else {
        std::deque<SlcOperand> elements;
        while (!m_values.IsEmpty())
            elements.push_front(m_values.Pop());
        values.push_back(m_elements.GenArrayValue(elements, type));
    }
    m_list.ReleaseTempVars();
    m_values.ForgetWrites();
    return m_list.List();
}

// The run time copies the value from a variable or constant of type `type`, and does not accept a
// reference to an array element.
SlcOperand SlcGenInterCode::InitialValue(const SlcOperand& value, SlcTypeNode* type)
{
    if (!value->GetType()->IsArrayRefType())
        return m_context.Converted(value, type);
    const SlcOperand copy = m_list.GenTempVar(type, value->GetDetail());
    m_conditions.GenPlainAssignment(copy, value);
    return copy;
}

void SlcGenInterCode::DefaultOutputValues()
{
    using Hiddens = SlcShaderSymbolTable;
    const SlcOperand zero = SlcLexType::Float(0);
    const SlcOperand one = SlcLexType::Float(1);
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    const auto color = [](const SlcPtr<SlcVarSymbolEntry>& entry, const SlcOperand& value) {
        return MakeShared<SlcColorICode>(entry->GetIntCodeVar(), value, value, value);
    };
    if (m_context.m_shaderType->IsSurface()) {
        m_conditions.AddInBlock(varying, color(Hiddens::EntryNamed("Ci"), zero));
        m_conditions.AddInBlock(varying, color(Hiddens::EntryNamed("Oi"), one));
    } else if (m_context.m_shaderType->IsLight()) {
        m_conditions.AddBeginBlock(varying);
        m_list.AddICode(color(Hiddens::EntryNamed("Cl"), zero));
        m_list.AddICode(MakeShared<SlcVectorICode>(Hiddens::EntryNamed("L")->GetIntCodeVar(), zero,
                                                   zero, zero));
        m_conditions.AddEndBlock(varying);
        m_conditions.AddInBlock(varying, color(Hiddens::EntryNamed("Ol"), one));
    }
}

void SlcGenInterCode::GenLineNumberInfo(SlcSyntaxNode*) {}

SlcOperand SlcGenInterCode::Evaluate(SlcSyntaxNode* expr)
{
    expr->ApplyWalker(this);
    return m_values.Pop();
}

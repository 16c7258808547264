// Steps that several kinds of lowering share. A conversion adds at most one assignment, in a block,
// and returns an operand, so that callers can combine conversions in the source's evaluation order.
//
//     Converted(x, color)    x itself, or { T = x }         a promotion; floats stay floats until
//                                                           an instruction needs another type
//     Widened(x)             x itself, or { T = x }         one value for each point
//
// Tested by the tables of tests/lowering, which compare exact lists of instructions.

#include "lowering/SlcLoweringContext.h"

#include <typeinfo>

#include "frontend/SlcNodes.h"
#include "icode/SlcAssignICode.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcPossibleTypes.h"
#include "symbols/SlcSymbolEntry.h"

SlcLoweringContext::SlcLoweringContext(SlcPtr<SlcSemanticError> errors, SlcOptionsControl& options)
    : m_errors(std::move(errors)),
      m_options(options),
      m_list(options),
      m_conditions(m_list, options),
      m_leaving(m_list, m_conditions),
      m_values(m_list, m_conditions),
      m_elements(m_list, m_conditions, m_values, options),
      m_lights(m_list)
{
}

SlcLoweringContext::~SlcLoweringContext() = default;

void SlcLoweringContext::Start(SlcListBuilder::Runs runs)
{
    m_list.Start(runs);
    m_conditions.Start();
    m_values.Start();
    m_elements.ForgetCopies(0);
}

SlcTypeNode* SlcLoweringContext::TypeOf(const SlcExprNode* expr)
{
    return SlcPossibleTypes::Of(expr)->GetUniqueType();
}

SlcDetailNode* SlcLoweringContext::DetailOf(const SlcExprNode* expr) const
{
    return m_list.DetailHere(SlcPossibleTypes::Of(expr)->GetDetail());
}

SlcOperand SlcLoweringContext::OperandOf(const SlcPtr<SlcVarSymbolEntry>& entry)
{
    if (entry->GetIntCodeVar().Null())
        m_errors->FatalError("No C name for variable " + entry->GetName());
    return entry->GetIntCodeVar();
}

SlcOperand SlcLoweringContext::Converted(const SlcOperand& value, SlcTypeNode* type)
{
    if (value->GetType()->IsSameType(type))
        return value;
    const SlcOperand temporary = m_list.GenTempVar(type, value->GetDetail());
    m_conditions.AddInBlock(value->GetDetail(), MakeShared<SlcAssignICode>(temporary, value));
    return temporary;
}

void SlcLoweringContext::MatchColors(SlcOperand& left, SlcOperand& right)
{
    if (left->GetType()->IsColorType() && right->GetType()->IsPointType())
        right = Converted(right, SlcTypeNode::AColor());
    else if (left->GetType()->IsPointType() && right->GetType()->IsColorType())
        left = Converted(left, SlcTypeNode::AColor());
}

SlcOperand SlcLoweringContext::WidenHere(const SlcOperand& value)
{
    SlcOperand temporary =
        m_list.GenTempVar(SlcElements::ValueType(value), SlcDetailNode::AVarying());
    m_list.AddICode(MakeShared<SlcAssignICode>(temporary, value));
    return temporary;
}

SlcOperand SlcLoweringContext::Widened(const SlcOperand& value)
{
    if (!value->IsUniform())
        return value;
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    m_conditions.AddBeginBlock(varying);
    SlcOperand temporary = WidenHere(value);
    m_conditions.AddEndBlock(varying);
    return temporary;
}

void SlcLoweringContext::NoteAssigned(const SlcOperand& written)
{
    m_lights.ResetEvalLightIfPAssigned(written, m_shaderType);
}

void SlcLoweringContext::RejectForm(const SlcSyntaxNode* node)
{
    if (const auto* call = dynamic_cast<const SlcProcCallExprNode*>(node))
        m_errors->FatalError(node, "No code generated yet for this built-in function: " +
                                       call->GetIdent()->GetName());
    m_errors->FatalError(node, std::string("No code generated yet for this form: ") +
                                   typeid(*node).name());
}

// Lowers calls, and expands user functions in place.
//
//     float half(float x) { return x / 2; }       y = half(3 * s)
// becomes
//     T = 3 * s; U = T / 2; y = U
//
// A formal is not a separate variable: it is bound to the operand of the argument. That is why
// semantic analysis rejects assignments to formals that are not outputs. For other formals, these
// arguments are copied: constants, values of another type, and variables that a later argument of
// the same call writes.
//
// The expanded code can grow exponentially, if each function calls the one before it twice. The
// number of operations, the nesting depth of calls and the available stack limit the expansion: the
// first call beyond a limit is reported, and no call after it is expanded.
//
// Tested by tests/lowering/SlcGenInterCodeCallsTest.cpp and SlcGenInterCodeBodiesTest.cpp.

#include <algorithm>

#include "lowering/SlcGenInterCode.h"
#include "semantics/SlcFuncInfo.h"
#include "support/QxStack.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

/// Returns the names of a function's formals, in order.
std::vector<SlcIdentNode*> FormalNames(const SlcFuncDefNode* function)
{
    std::vector<SlcIdentNode*> names;
    for (const auto& group : function->GetFormals()->GetVarDefs())
        for (const auto& formal : group->GetDefExprs()->GetDefExprs())
            names.push_back(formal->GetIdent());
    return names;
}

/// True if the rest of the stack suffices for a recursive walk of the body, with a reserve of some
/// levels of recursion.
bool HasStackFor(const SlcSyntaxNode* body)
{
    constexpr std::size_t reserve = 32;
    return QxStack::Left() / SlcSyntaxNode::k_stackPerLevel >
           static_cast<std::size_t>(body->Height()) + reserve;
}

}  // namespace

void SlcGenInterCode::Case(SlcProcCallExprNode* node)
{
    node->GetArguments()->ApplyWalker(this);
    switch (node->GetSymbolEntry()->GetOrigin()) {
    case SlcFuncOrigin::BuiltIn:
        m_builtIns.Lower(node);
        return;
    case SlcFuncOrigin::User:
        GenUserCall(node);
        return;
    case SlcFuncOrigin::Shadeop:
        m_shadeops.Lower(node);
        return;
    }
    Default(node);
}

void SlcGenInterCode::GenUserCall(SlcProcCallExprNode* call)
{
    const auto info = CheckCast<SlcFuncInfo>(call->GetSymbolEntry()->GetFuncInfo());
    SlcStmtsNode* body = info->GetDefinition()->GetBody();
    if (!MayExpand(call, *info)) {
        for (std::size_t i = 0; i < call->GetArguments()->GetArgs().size(); ++i)
            static_cast<void>(m_values.PopReference());
        if (!SlcLoweringContext::TypeOf(call)->IsVoidType())
            m_values.Push(SlcLexType::Float(0));
        return;
    }
    m_list.NextBlock();
    const std::vector<SlcOperand> outputs = BindFormals(call, *info);

    m_list.EnterBody();
    ++m_expansionLevel;
    GenFuncBody(call, body);
    --m_expansionLevel;
    m_list.LeaveBody(SlcLoweringContext::TypeOf(call)->IsVoidType() ? nullptr : m_values.Last());

    for (const SlcOperand& output : outputs)
        m_elements.WriteBackElement(output);
    // Some parents of the call do not convert its value: `return 1` in a function of type color
    // must yield a color.
    if (SlcLoweringContext::TypeOf(call)->IsVoidType())
        return;
    SlcTypeNode* type = SlcCallArguments::TypeOfCall(call);
    if (!m_values.Last()->GetType()->IsSameType(type))
        m_values.Push(m_arguments.ConvertedForCall(call, m_values.Pop(), type, "the result"));
}

bool SlcGenInterCode::MayExpand(SlcProcCallExprNode* call, const SlcFuncInfo& info)
{
    if (m_expansionRefused)
        return false;
    // Nested expansions are already counted in the outer one.
    if (m_expansionLevel == 0)
        m_expandedOperations += info.GetBodyFacts().expandedOperations + 1;
    if (m_expandedOperations <= static_cast<std::size_t>(m_options.m_mostOperations) &&
        m_expansionLevel < m_options.m_mostLevels && HasStackFor(info.GetDefinition()->GetBody()))
        return true;
    m_expansionRefused = true;
    m_errors->Error(call,
                    "Expansion of function '" + call->GetIdent()->GetName() + "' is too large");
    return false;
}

/// The last argument is on top of the stack, so it is bound first.
std::vector<SlcOperand> SlcGenInterCode::BindFormals(SlcProcCallExprNode* call,
                                                     const SlcFuncInfo& info)
{
    const std::vector<SlcIdentNode*> names = FormalNames(info.GetDefinition());
    std::vector<SlcOperand> outputs;
    for (std::size_t i = names.size(); i-- > 0;) {
        const SlcPtr<SlcVarSymbolEntry> formal = info.GetScope()->FindVarEntry(names[i], false);
        if (formal.Null())
            m_errors->FatalError(call, "Not found '" + names[i]->GetName() + "' formal of '" +
                                           call->GetIdent()->GetName() +
                                           "' function during i-code generation");
        BindFormal(call, *formal, i);
        if (formal->GetStorage()->IsOutput())
            outputs.push_back(formal->GetIntCodeVar());
    }
    return outputs;
}

/// Binds an output formal, or an array, to the argument itself. Another argument is copied if it is
/// a constant or has another type.
void SlcGenInterCode::BindFormal(SlcProcCallExprNode* call, SlcVarSymbolEntry& formal,
                                 std::size_t position)
{
    SlcTypeNode* type = formal.GetType();
    const bool isOutput = formal.GetStorage()->IsOutput();
    const SlcOperand value = isOutput ? m_values.PopReference() : m_values.Pop();
    if (type->IsArrayType() || (!isOutput && value->IsIdent()))
        formal.GetIntCodeVar() = m_arguments.ConvertedForCall(
            call, value, type, SlcCallArguments::ArgumentName(position));
    else
        formal.GetIntCodeVar() = isOutput ? value : CopiedForFormal(formal, value);
}

SlcOperand SlcGenInterCode::CopiedForFormal(const SlcVarSymbolEntry& formal,
                                            const SlcOperand& value)
{
    SlcTypeNode* type = formal.GetType();
    SlcDetailNode* detail =
        formal.GetDetail()->IsVarying() ? SlcDetailNode::AVarying() : SlcDetailNode::AUniform();
    const SlcOperand temporary = m_list.GenTempVar(type, detail);
    m_conditions.AddInBlock(temporary->GetDetail(), MakeShared<SlcAssignICode>(temporary, value));
    return temporary;
}

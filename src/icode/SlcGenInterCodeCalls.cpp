// Calls: arguments, functions expanded in place, and shadeops.

#include <algorithm>

#include "icode/SlcGenInterCode.h"
#include "semantics/SlcFuncInfo.h"
#include "support/QxStack.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncDSOSymbolEntry.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

/// The formals of a function in order, group by group.
std::vector<SlcIdentNode*> FormalNames(const SlcFuncDefNode* function)
{
    std::vector<SlcIdentNode*> names;
    for (const auto& group : function->GetFormals()->GetVarDefs())
        for (const auto& formal : group->GetDefExprs()->GetDefExprs())
            names.push_back(formal->GetIdent());
    return names;
}

/// 0 for an array of unknown length, and for what is no array.
int LengthOf(const SlcTypeNode* type)
{
    const auto* array = dynamic_cast<const SlcArrayTypeNode*>(type);
    return array ? array->GetLength() : 0;
}

std::string ArgumentName(std::size_t position)
{
    return "argument " + std::to_string(position + 1);
}

/// For the walk into the body, and for what the levels around it have left of theirs.
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
        GenBuiltInCall(node);
        return;
    case SlcFuncOrigin::User:
        GenUserCall(node);
        return;
    case SlcFuncOrigin::Shadeop:
        GenShadeopCall(node);
        return;
    }
    Default(node);
}

std::deque<SlcOperand>
SlcGenInterCode::ReadAndCastParameters(SlcProcCallExprNode* call,
                                       const std::vector<SlcCallFormal>& formals)
{
    std::deque<SlcOperand> args;
    for (std::size_t i = formals.size(); i-- > 0;) {
        if (formals[i].isOutput)
            args.push_front(m_values.PopReference());
        else if (formals[i].type->IsAnyType())
            args.push_front(m_values.Pop());
        else
            args.push_front(
                ConvertedForCall(call, m_values.Pop(), formals[i].type, ArgumentName(i)));
    }
    return args;
}

SlcOperand SlcGenInterCode::ConvertedForCall(SlcProcCallExprNode* call, const SlcOperand& value,
                                             SlcTypeNode* type, const std::string& what)
{
    if (!type->IsArrayType())
        return m_context.Converted(value, type);
    const int wanted = LengthOf(type);
    const int length = LengthOf(value->GetType());
    if (wanted != 0 && wanted != length)
        m_errors->Error(call, "Array of length " + std::to_string(length) + " for " + what +
                                  " of '" + call->GetIdent()->GetName() + "' function (length " +
                                  std::to_string(wanted) + " expected)");
    return value;
}

void SlcGenInterCode::FinishOutputArgument(const SlcOperand& argument)
{
    m_elements.WriteBackElement(argument);
    m_context.NoteAssigned(argument);
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
    // Some take a value as it comes: `return 1` of a color must give them a color.
    if (!SlcLoweringContext::TypeOf(call)->IsVoidType() &&
        !m_values.Last()->GetType()->IsSameType(SlcLoweringContext::TypeOf(call)))
        m_values.Push(ConvertedForCall(call, m_values.Pop(), TypeOfCall(call), "the result"));
}

bool SlcGenInterCode::MayExpand(SlcProcCallExprNode* call, const SlcFuncInfo& info)
{
    if (m_expansionRefused)
        return false;
    // What is expanded inside of an expansion has been counted with it.
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

/// The last argument is on top of the stack. Gives those that the body writes.
std::vector<SlcOperand> SlcGenInterCode::BindFormals(SlcProcCallExprNode* call,
                                                     const SlcFuncInfo& info)
{
    const std::vector<SlcIdentNode*> names = FormalNames(info.GetDefinition());
    std::vector<SlcOperand> outputs;
    for (std::size_t i = names.size(); i-- > 0;) {
        SlcPtr<SlcVarSymbolEntry> formal;
        try {
            formal = info.GetScope()->GetVarEntry(names[i], false);
        } catch (const SlcSymbolNotFound&) {
            m_errors->FatalError(call, "Not found '" + names[i]->GetName() + "' formal of '" +
                                           call->GetIdent()->GetName() +
                                           "' function during i-code generation");
        }
        BindFormal(call, *formal, i);
        if (formal->GetStorage()->IsOutput())
            outputs.push_back(formal->GetIntCodeVar());
    }
    return outputs;
}

/// A variable stands for the formal itself; a constant, or a value of another type, is copied.
void SlcGenInterCode::BindFormal(SlcProcCallExprNode* call, SlcVarSymbolEntry& formal,
                                 std::size_t position)
{
    SlcTypeNode* type = formal.GetType();
    const bool isOutput = formal.GetStorage()->IsOutput();
    const SlcOperand value = isOutput ? m_values.PopReference() : m_values.Pop();
    if (type->IsArrayType() || (!isOutput && value->IsIdent()))
        formal.GetIntCodeVar() = ConvertedForCall(call, value, type, ArgumentName(position));
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

void SlcGenInterCode::GenShadeopCall(SlcProcCallExprNode* call)
{
    if (!m_options.m_useShadeops)
        m_errors->FatalError(call, "Use of DSO are disable "
                                   "(in SlcGenInterCode::Case(SlcPtr<SlcProcCallExprNode>)");
    const auto entry = CheckCast<SlcFuncDSOSymbolEntry>(call->GetSymbolEntry());
    std::deque<SlcOperand> args = ReadAndCastParameters(call, SlcFormalsOf(*call));
    SlcDetailNode* detail = DetailOfCall(call, args);
    const bool isVoid = SlcLoweringContext::TypeOf(call)->IsVoidType();
    const SlcOperand result = isVoid ? SlcOperand() : ShadeopResult(call, args, detail);

    const std::vector<ConvertedArray> arrays = ConvertArraysForShadeop(args);
    m_conditions.AddInBlock(detail, MakeShared<SlcCallDSOICode>(result, args, entry->GetKey(),
                                                                entry->GetMethodName()->GetName()));
    for (const ConvertedArray& array : arrays)
        m_list.AddICode(
            MakeShared<SlcConvertArrayDSOICode>(array.original, array.contiguous, false));
    if (!isVoid)
        m_values.Push(result);
    for (std::size_t i = 0; i < args.size(); ++i)
        if (entry->GetArgStorages()[i]->IsOutput())
            FinishOutputArgument(args[i]);
}

/// Never an argument too, nor an element of one: a library may write the result before it has read
/// all arguments, and an array that was converted is written back behind the call.
SlcOperand SlcGenInterCode::ShadeopResult(SlcProcCallExprNode* call,
                                          const std::deque<SlcOperand>& args, SlcDetailNode* detail)
{
    const SlcOperand result = m_list.GetResultVar(call, TypeOfCall(call), detail);
    const bool isElement = result->GetType()->IsArrayRefType();
    const bool overlaps = std::any_of(args.begin(), args.end(), [&](const SlcOperand& arg) {
        const SlcTypeNode* type = arg->GetType();
        return arg == result || (isElement && (type->IsArrayType() || type->IsArrayRefType()));
    });
    return overlaps ? m_list.GenTempVar(TypeOfCall(call), detail) : result;
}

/// A varying array lies element by element, while a shadeop sees that of one point at a time.
/// Puts the converted ones into `args`, from the last to the first.
std::vector<SlcGenInterCode::ConvertedArray>
SlcGenInterCode::ConvertArraysForShadeop(std::deque<SlcOperand>& args)
{
    std::vector<ConvertedArray> arrays;
    for (auto arg = args.rbegin(); arg != args.rend(); ++arg) {
        if (!(*arg)->GetType()->IsArrayType() || (*arg)->IsUniform())
            continue;
        const auto known =
            std::find_if(arrays.begin(), arrays.end(),
                         [&](const ConvertedArray& array) { return array.original == *arg; });
        if (known != arrays.end()) {
            *arg = known->contiguous;
            continue;
        }
        const SlcOperand contiguous = m_list.GenTempVar((*arg)->GetType(), (*arg)->GetDetail());
        m_list.AddICode(MakeShared<SlcConvertArrayDSOICode>(contiguous, *arg, true));
        arrays.push_back({*arg, contiguous});
        *arg = contiguous;
    }
    return arrays;
}

// Calls: arguments, functions expanded in place, and shadeops.

#include <algorithm>

#include "icode/SlcGenInterCode.h"
#include "semantics/SlcFuncInfo.h"
#include "support/QxStack.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncDSOSymbolEntry.h"
#include "symbols/SlcGeneratedNames.h"
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
SlcGenInterCode::ReadAndCastParameters(const std::vector<SlcCallFormal>& formals)
{
    std::deque<SlcOperand> args;
    for (auto formal = formals.rbegin(); formal != formals.rend(); ++formal) {
        if (formal->isOutput)
            args.push_front(PopReference());
        else if (formal->type->IsAnyType())
            args.push_front(Pop());
        else
            args.push_front(Converted(Pop(), formal->type));
    }
    return args;
}

void SlcGenInterCode::FinishOutputArgument(const SlcOperand& argument)
{
    WriteBackElement(argument);
    ResetEvalLightIfPAssigned(argument);
}

void SlcGenInterCode::ResetEvalLightIfPAssigned(const SlcOperand& lhs)
{
    if (m_shaderType && (m_shaderType->IsSurface() || m_shaderType->IsVolume()) &&
        lhs->GetName() == SlcGeneratedNames::k_P) {
        AddICode(MakeShared<SlcResetEvalLightForPICode>());
        m_lightLoop.movesP = true;
    }
}

void SlcGenInterCode::GenUserCall(SlcProcCallExprNode* call)
{
    const auto info = CheckCast<SlcFuncInfo>(call->GetSymbolEntry()->GetFuncInfo());
    SlcStmtsNode* body = info->GetDefinition()->GetBody();
    if (!MayExpand(call, *info)) {
        for (std::size_t i = 0; i < call->GetArguments()->GetArgs().size(); ++i)
            static_cast<void>(PopReference());
        if (!TypeOf(call)->IsVoidType())
            Push(SlcLexType::Float(0));
        return;
    }
    ++m_blockCounter;
    const std::vector<SlcOperand> outputs = BindFormals(call, *info);

    m_temps.EnterBody();
    ++m_expansionLevel;
    GenFuncBody(call, body);
    --m_expansionLevel;
    m_temps.LeaveBody(TypeOf(call)->IsVoidType() ? nullptr : m_values.back().operand);

    for (const SlcOperand& output : outputs)
        WriteBackElement(output);
    // Some take a value as it comes: `return 1` of a color must give them a color.
    if (!TypeOf(call)->IsVoidType() &&
        !m_values.back().operand->GetType()->IsSameType(TypeOf(call)))
        Push(Converted(Pop(), TypeOfCall(call)));
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
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        SlcPtr<SlcVarSymbolEntry> formal;
        try {
            formal = info.GetScope()->GetVarEntry(*name, false);
        } catch (const SlcSymbolNotFound&) {
            m_errors->FatalError(call, "Not found '" + (*name)->GetName() + "' formal of '" +
                                           call->GetIdent()->GetName() +
                                           "' function during i-code generation");
        }
        if (formal->GetStorage()->IsOutput()) {
            outputs.push_back(PopReference());
            formal->GetIntCodeVar() = outputs.back();
        } else {
            formal->GetIntCodeVar() = FormalOperand(*formal, Pop());
        }
    }
    return outputs;
}

/// A variable stands for the formal itself; a constant, or a value of another type, is copied.
SlcOperand SlcGenInterCode::FormalOperand(const SlcVarSymbolEntry& formal, const SlcOperand& value)
{
    SlcTypeNode* type = formal.GetType();
    if (value->IsIdent())
        return Converted(value, type);
    SlcDetailNode* detail =
        formal.GetDetail()->IsVarying() ? SlcDetailNode::AVarying() : SlcDetailNode::AUniform();
    const SlcOperand temporary = GenTempVar(type, detail);
    AddInBlock(temporary->GetDetail(), MakeShared<SlcAssignICode>(temporary, value));
    return temporary;
}

void SlcGenInterCode::GenShadeopCall(SlcProcCallExprNode* call)
{
    if (!m_options.m_useShadeops)
        m_errors->FatalError(call, "Use of DSO are disable "
                                   "(in SlcGenInterCode::Case(SlcPtr<SlcProcCallExprNode>)");
    const auto entry = CheckCast<SlcFuncDSOSymbolEntry>(call->GetSymbolEntry());
    std::deque<SlcOperand> args = ReadAndCastParameters(SlcFormalsOf(*call));
    SlcDetailNode* detail = DetailOfCall(call, args);
    const bool isVoid = TypeOf(call)->IsVoidType();
    const SlcOperand result = isVoid ? SlcOperand() : ShadeopResult(call, args, detail);

    const std::vector<ConvertedArray> arrays = ConvertArraysForShadeop(args);
    AddInBlock(detail, MakeShared<SlcCallDSOICode>(result, args, entry->GetKey(),
                                                   entry->GetMethodName()->GetName()));
    for (const ConvertedArray& array : arrays)
        AddICode(MakeShared<SlcConvertArrayDSOICode>(array.original, array.contiguous, false));
    if (!isVoid)
        Push(result);
    for (std::size_t i = 0; i < args.size(); ++i)
        if (entry->GetArgStorages()[i]->IsOutput())
            FinishOutputArgument(args[i]);
}

/// Never an argument too, nor an element of one: a library may write the result before it has read
/// all arguments, and an array that was converted is written back behind the call.
SlcOperand SlcGenInterCode::ShadeopResult(SlcProcCallExprNode* call,
                                          const std::deque<SlcOperand>& args, SlcDetailNode* detail)
{
    const SlcOperand result = GetResultVar(call, TypeOfCall(call), detail);
    const bool isElement = result->GetType()->IsArrayRefType();
    const bool overlaps = std::any_of(args.begin(), args.end(), [&](const SlcOperand& arg) {
        const SlcTypeNode* type = arg->GetType();
        return arg == result || (isElement && (type->IsArrayType() || type->IsArrayRefType()));
    });
    return overlaps ? GenTempVar(TypeOfCall(call), detail) : result;
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
        const SlcOperand contiguous = GenTempVar((*arg)->GetType(), (*arg)->GetDetail());
        AddICode(MakeShared<SlcConvertArrayDSOICode>(contiguous, *arg, true));
        arrays.push_back({*arg, contiguous});
        *arg = contiguous;
    }
    return arrays;
}

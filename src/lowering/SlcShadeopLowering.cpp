// Calls of shadeops. A library reads one point at a time, and of an array the elements one behind
// the other, while a varying array lies point by point for each element:
//
//     f(w)          T = w, contiguous; { CALL f T }; w = T, spread again
//
// A library may write into any array that it is handed. So what the shader may not write, an input
// or a formal without `output`, goes into the call as a copy, which nothing takes back.
//
// Tested by tests/shadeops.

#include "lowering/SlcShadeopLowering.h"

#include <algorithm>

#include "frontend/SlcNodes.h"
#include "icode/SlcCallICode.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncDSOSymbolEntry.h"

void SlcShadeopLowering::Lower(SlcProcCallExprNode* call)
{
    if (!m_options.m_useShadeops)
        m_errors->FatalError(call, "Use of DSO are disable "
                                   "(in SlcGenInterCode::Case(SlcPtr<SlcProcCallExprNode>)");
    const auto entry = CheckCast<SlcFuncDSOSymbolEntry>(call->GetSymbolEntry());
    std::deque<SlcOperand> args = m_arguments.ReadAndCastParameters(call, SlcFormalsOf(*call));
    SlcDetailNode* detail = DetailOfShadeop(args);
    const bool isVoid = SlcLoweringContext::TypeOf(call)->IsVoidType();
    const SlcOperand result = isVoid ? SlcOperand() : ShadeopResult(call, args, detail);

    const std::vector<ConvertedArray> arrays = ConvertArraysForShadeop(call, args);
    m_conditions.AddInBlock(detail, MakeShared<SlcCallDSOICode>(result, args, entry->GetKey(),
                                                                entry->GetMethodName()->GetName()));
    for (const ConvertedArray& array : arrays)
        if (array.isWritten)
            m_list.AddICode(
                MakeShared<SlcConvertArrayDSOICode>(array.original, array.contiguous, false));
    if (!isVoid)
        m_values.Push(result);
    for (std::size_t i = 0; i < args.size(); ++i)
        if (entry->GetArgStorages()[i]->IsOutput())
            m_arguments.FinishOutputArgument(args[i]);
}

/// Never an argument too, nor an element of one: a library may write the result before it has read
/// all arguments, and an array that was converted is written back behind the call.
SlcOperand SlcShadeopLowering::ShadeopResult(SlcProcCallExprNode* call,
                                             const std::deque<SlcOperand>& args,
                                             SlcDetailNode* detail)
{
    const SlcOperand result = m_list.GetResultVar(call, SlcCallArguments::TypeOfCall(call), detail);
    const bool isElement = result->GetType()->IsArrayRefType();
    const bool overlaps = std::any_of(args.begin(), args.end(), [&](const SlcOperand& arg) {
        const SlcTypeNode* type = arg->GetType();
        return arg == result || (isElement && (type->IsArrayType() || type->IsArrayRefType()));
    });
    return overlaps ? m_list.GenTempVar(SlcCallArguments::TypeOfCall(call), detail) : result;
}

/// The detail that counts is that of the operands: in a function the same expression may be uniform
/// in one call and varying in another.
SlcDetailNode* SlcShadeopLowering::DetailOfShadeop(const std::deque<SlcOperand>& args) const
{
    return m_list.DetailHere(SlcConditions::UniformIfAll(args));
}

/// A varying array lies element by element, while a shadeop sees that of one point at a time.
/// Puts the converted ones into `args`, from the last to the first.
std::vector<SlcShadeopLowering::ConvertedArray>
SlcShadeopLowering::ConvertArraysForShadeop(const SlcProcCallExprNode* call,
                                            std::deque<SlcOperand>& args)
{
    std::vector<ConvertedArray> arrays;
    for (std::size_t i = args.size(); i-- > 0;) {
        SlcOperand& arg = args[i];
        if (!arg->GetType()->IsArrayType())
            continue;
        const bool isWritten = MayBeWritten(*call->GetArguments()->GetArgs()[i]);
        if (arg->IsUniform()) {
            if (!isWritten)
                arg = CopyOfArray(arg);
            continue;
        }
        const auto known =
            std::find_if(arrays.begin(), arrays.end(),
                         [&](const ConvertedArray& array) { return array.original == arg; });
        if (known != arrays.end()) {
            known->isWritten |= isWritten;
            arg = known->contiguous;
            continue;
        }
        const SlcOperand contiguous = m_list.GenTempVar(arg->GetType(), arg->GetDetail());
        m_list.AddICode(MakeShared<SlcConvertArrayDSOICode>(contiguous, arg, true));
        arrays.push_back({arg, contiguous, isWritten});
        arg = contiguous;
    }
    return arrays;
}

/// An array that is no variable is a temporary of the call.
bool SlcShadeopLowering::MayBeWritten(const SlcExprNode& argument)
{
    if (!argument.IsReferenceExpr())
        return true;
    const SlcPtr<SlcVarSymbolEntry> variable =
        SlcOutermost(static_cast<const SlcReferenceExprNode&>(argument).GetSymbolEntry());
    return !variable->GetStorage()->IsInput();
}

SlcOperand SlcShadeopLowering::CopyOfArray(const SlcOperand& array)
{
    SlcOperand copy = m_list.GenTempVar(array->GetType(), array->GetDetail());
    m_context.m_elements.GenArrayCopy(copy, array);
    return copy;
}

// Lowers calls of shadeops. A library reads one point at a time and expects the elements of its
// array to be contiguous, whereas a varying array is stored element by element, each for all
// points:
//
//     f(w)          T = w, contiguous; { CALL f T }; w = T, spread again
//
// A library may write to any array that it receives. So an array that the shader may not write, an
// input or a formal without `output`, is passed as a copy that is not copied back.
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

/// The result is never also an argument or an element of one: a library may write the result before
/// it has read all arguments, and a converted array is copied back after the call.
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

/// Uses the details of the operands, since within a function the same expression may be uniform in
/// one call and varying in another.
SlcDetailNode* SlcShadeopLowering::DetailOfShadeop(const std::deque<SlcOperand>& args) const
{
    return m_list.DetailHere(SlcConditions::UniformIfAll(args));
}

/// Converts from the last argument to the first.
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

/// An array that is not a variable is a temporary of the call, so it may be written.
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

// Code shared by calls of built-ins, functions and shadeops. Arguments are on the stack, so they
// are popped from the last to the first.
//
// A call of a built-in is uniform only if semantic analysis says so and all its arguments are
// uniform: a value that is uniform in this expansion of a function may still be stored in a varying
// temporary.
//
// Tested by tests/lowering/SlcGenInterCodeCallsTest.cpp.

#include "lowering/SlcCallArguments.h"

#include <algorithm>

#include "frontend/SlcNodes.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncSymbolEntry.h"

namespace {

/// Returns the length of an array type; 0 if the length is unknown, and for all other types.
int LengthOf(const SlcTypeNode* type)
{
    const auto* array = dynamic_cast<const SlcArrayTypeNode*>(type);
    return array ? array->GetLength() : 0;
}

}  // namespace

SlcTypeNode* SlcCallArguments::TypeOfCall(const SlcProcCallExprNode* call)
{
    SlcTypeNode* wanted = SlcLoweringContext::TypeOf(call);
    SlcTypeNode* returned = call->GetSymbolEntry()->GetReturnType();
    // A float that will be promoted later still has type float here.
    if (!wanted->IsSameType(returned))
        return returned;
    // If the array that receives the value has no fixed length, the function determines the length.
    const auto* array = dynamic_cast<const SlcArrayTypeNode*>(wanted);
    return array && LengthOf(wanted) == 0
               ? SlcTypeNode::CreateArrayType(array->GetElementType(), LengthOf(returned))
               : wanted;
}

SlcDetailNode* SlcCallArguments::DetailOfCall(const SlcProcCallExprNode* call,
                                              const std::deque<SlcOperand>& args) const
{
    // A value that is uniform in this call of a function may still be stored in a varying
    // temporary.
    return std::all_of(args.begin(), args.end(), [](const auto& arg) { return arg->IsUniform(); })
               ? m_context.DetailOf(call)
               : SlcDetailNode::Combine(m_context.DetailOf(call), SlcDetailNode::AVarying());
}

std::string SlcCallArguments::ArgumentName(std::size_t position)
{
    return "argument " + std::to_string(position + 1);
}

std::deque<SlcOperand>
SlcCallArguments::ReadAndCastParameters(SlcProcCallExprNode* call,
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

SlcOperand SlcCallArguments::ConvertedForCall(SlcProcCallExprNode* call, const SlcOperand& value,
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

void SlcCallArguments::FinishOutputArgument(const SlcOperand& argument)
{
    m_elements.WriteBackElement(argument);
    m_context.NoteAssigned(argument);
}

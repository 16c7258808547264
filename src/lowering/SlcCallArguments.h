#pragma once

#include <deque>
#include <string>
#include <vector>

#include "lowering/SlcLoweringContext.h"
#include "symbols/SlcCallFormals.h"

/// The arguments and the value of a call, as what is called wants them.
class SlcCallArguments {
public:
    explicit SlcCallArguments(SlcLoweringContext& context) : m_context(context) {}

    /// Pops the arguments, each as its formal wants it; gives them in source order. An output is
    /// given as the variable itself, or as the copy that stands for an element; an input as its
    /// value when it was evaluated, promoted to the type of the formal. `formals` has one for each
    /// argument.
    [[nodiscard]] std::deque<SlcOperand>
    ReadAndCastParameters(SlcProcCallExprNode* call, const std::vector<SlcCallFormal>& formals);
    /// `value` where a call wants `type`. Of arrays it is a report if they differ in length, which
    /// only an expansion tells for a formal of any length; `what` names the value in it.
    [[nodiscard]] SlcOperand ConvertedForCall(SlcProcCallExprNode* call, const SlcOperand& value,
                                              SlcTypeNode* type, const std::string& what);
    /// As reports name it; `position` counts from 0.
    [[nodiscard]] static std::string ArgumentName(std::size_t position);
    /// Behind the call, for each argument that it has written: the copy of an element goes back
    /// into its array, and lights that ran for a `P` that was written are stale.
    void FinishOutputArgument(const SlcOperand& argument);

    /// Of the value that the function gives, before the context promotes it.
    [[nodiscard]] static SlcTypeNode* TypeOfCall(const SlcProcCallExprNode* call);
    /// Of its value and of the block that the call stands in: uniform only if the checks say so and
    /// all `args` are.
    [[nodiscard]] SlcDetailNode* DetailOfCall(const SlcProcCallExprNode* call,
                                              const std::deque<SlcOperand>& args) const;

private:
    SlcLoweringContext& m_context;
    SlcPtr<SlcSemanticError>& m_errors = m_context.m_errors;
    SlcValueStack& m_values = m_context.m_values;
    SlcElements& m_elements = m_context.m_elements;
};

#pragma once

#include <deque>
#include <string>
#include <vector>

#include "lowering/SlcLoweringContext.h"
#include "symbols/SlcCallFormals.h"

/// Converts the arguments and the value of a call to the types of the function's declaration, and
/// determines the type and the detail of the value.
class SlcCallArguments {
public:
    /// The context must outlive this object.
    explicit SlcCallArguments(SlcLoweringContext& context) : m_context(context) {}

    /// Pops one argument for each of `formals`, and returns the arguments in source order. An
    /// output argument is the variable itself, a reference to an array element, or, if the index
    /// varies, a copy of the element. An input argument is its value at the time it was evaluated,
    /// converted by `ConvertedForCall` unless the formal accepts any type.
    [[nodiscard]] std::deque<SlcOperand>
    ReadAndCastParameters(SlcProcCallExprNode* call, const std::vector<SlcCallFormal>& formals);
    /// Returns `value` converted to `type`. If `type` is an array, returns `value` unchanged, but
    /// reports it if `type` has a fixed length and `value` another: some lengths are known only
    /// when a function is expanded. `what` names the value in the report.
    [[nodiscard]] SlcOperand ConvertedForCall(SlcProcCallExprNode* call, const SlcOperand& value,
                                              SlcTypeNode* type, const std::string& what);
    /// Returns the name of an argument for reports; `position` counts from 0.
    [[nodiscard]] static std::string ArgumentName(std::size_t position);
    /// Call it after the call, for each output argument: writes the copy of an element back into
    /// its array, and marks evaluated lights as stale if `P` was written.
    void FinishOutputArgument(const SlcOperand& argument);

    /// Returns the type of the value that the function returns, before any promotion.
    [[nodiscard]] static SlcTypeNode* TypeOfCall(const SlcProcCallExprNode* call);
    /// Returns the detail of the call's value and of its block: uniform only if semantic analysis
    /// says so and all `args` are uniform.
    [[nodiscard]] SlcDetailNode* DetailOfCall(const SlcProcCallExprNode* call,
                                              const std::deque<SlcOperand>& args) const;

private:
    SlcLoweringContext& m_context;
    SlcPtr<SlcSemanticError>& m_errors = m_context.m_errors;
    SlcValueStack& m_values = m_context.m_values;
    SlcElements& m_elements = m_context.m_elements;
};

#pragma once

#include <deque>
#include <vector>

#include "lowering/SlcCallArguments.h"

/// Lowers a call of a shadeop, which sees the array of one point at a time.
class SlcShadeopLowering {
public:
    /// Both outlive it.
    SlcShadeopLowering(SlcLoweringContext& context, SlcCallArguments& arguments)
        : m_context(context),
          m_arguments(arguments)
    {
    }

    /// Pops the arguments, and pushes the value unless the call is void. Fatal if the options leave
    /// shadeops out, which the checks have reported by then.
    void Lower(SlcProcCallExprNode* call);

private:
    /// A varying array in the form that a shadeop takes: the copy goes into the call, and back into
    /// the array behind it if the shader may write that.
    struct ConvertedArray {
        SlcOperand original;
        SlcOperand contiguous;
        bool isWritten;  // the copy goes back
    };

    /// Puts the converted arrays in the place of the varying ones among `args`.
    [[nodiscard]] std::vector<ConvertedArray>
    ConvertArraysForShadeop(const SlcProcCallExprNode* call, std::deque<SlcOperand>& args);
    [[nodiscard]] static bool MayBeWritten(const SlcExprNode& argument);
    [[nodiscard]] SlcOperand CopyOfArray(const SlcOperand& array);
    [[nodiscard]] SlcDetailNode* DetailOfShadeop(const std::deque<SlcOperand>& args) const;
    /// A variable for the result that the call may write at any time.
    [[nodiscard]] SlcOperand ShadeopResult(SlcProcCallExprNode* call,
                                           const std::deque<SlcOperand>& args,
                                           SlcDetailNode* detail);

    SlcLoweringContext& m_context;
    SlcPtr<SlcSemanticError>& m_errors = m_context.m_errors;
    SlcOptionsControl& m_options = m_context.m_options;
    SlcListBuilder& m_list = m_context.m_list;
    SlcConditions& m_conditions = m_context.m_conditions;
    SlcValueStack& m_values = m_context.m_values;
    SlcCallArguments& m_arguments;
};

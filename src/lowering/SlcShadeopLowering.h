#pragma once

#include <deque>
#include <vector>

#include "lowering/SlcCallArguments.h"

/// Lowers a call of a shadeop, which receives the arguments of one point at a time.
class SlcShadeopLowering {
public:
    /// Both must outlive this object.
    SlcShadeopLowering(SlcLoweringContext& context, SlcCallArguments& arguments)
        : m_context(context),
          m_arguments(arguments)
    {
    }

    /// Pops the arguments, and pushes the value unless the call is void. Fatal if the options
    /// disable shadeops: semantic analysis has then reported the function as undefined.
    void Lower(SlcProcCallExprNode* call);

private:
    /// A varying array, and its copy in the layout of shadeops. The copy is the argument, and is
    /// copied back after the call if the shader may write the array.
    struct ConvertedArray {
        SlcOperand original;
        SlcOperand contiguous;
        bool isWritten;  // the copy is copied back
    };

    /// Replaces varying arrays in `args` by converted copies, and returns these; replaces uniform
    /// arrays that the shader may not write by plain copies.
    [[nodiscard]] std::vector<ConvertedArray>
    ConvertArraysForShadeop(const SlcProcCallExprNode* call, std::deque<SlcOperand>& args);
    [[nodiscard]] static bool MayBeWritten(const SlcExprNode& argument);
    [[nodiscard]] SlcOperand CopyOfArray(const SlcOperand& array);
    [[nodiscard]] SlcDetailNode* DetailOfShadeop(const std::deque<SlcOperand>& args) const;
    /// Returns a variable for the result that shares no storage with an argument.
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

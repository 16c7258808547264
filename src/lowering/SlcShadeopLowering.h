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
    /// disable shadeops, which semantic analysis has already reported.
    void Lower(SlcProcCallExprNode* call);

private:
    /// A varying array in the layout of shadeops: the copy is the argument, and is copied back
    /// after the call if the shader may write the array.
    struct ConvertedArray {
        SlcOperand original;
        SlcOperand contiguous;
        bool isWritten;  // the copy is copied back
    };

    /// Replaces the varying arrays in `args` with converted copies, which it returns, and the
    /// uniform arrays that the shadeop must not write with plain copies.
    [[nodiscard]] std::vector<ConvertedArray>
    ConvertArraysForShadeop(const SlcProcCallExprNode* call, std::deque<SlcOperand>& args);
    [[nodiscard]] static bool MayBeWritten(const SlcExprNode& argument);
    [[nodiscard]] SlcOperand CopyOfArray(const SlcOperand& array);
    [[nodiscard]] SlcDetailNode* DetailOfShadeop(const std::deque<SlcOperand>& args) const;
    /// Returns a result variable that the call may write at any time.
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

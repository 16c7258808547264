#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "icode/SlcCallICode.h"
#include "lowering/SlcCallArguments.h"

class SlcFuncVarArgSingle;

/// Lowers a call of a built-in whose arguments have been evaluated: as a plain call, as a call for
/// the whole grid, or by a special lowering.
///
/// `sm_specials` lists the primitives with a special lowering, except `filterstep` and the
/// transforms between named spaces. The special lowerings are in separate files by concept:
/// rewritten argument lists and `shadername`, derivatives, and transforms between named spaces.
class SlcBuiltInLowering {
public:
    /// Both must outlive this object.
    SlcBuiltInLowering(SlcLoweringContext& context, SlcCallArguments& arguments)
        : m_context(context),
          m_arguments(arguments)
    {
    }

    /// Pops the arguments, emits the call, and pushes the value unless the call is void. Then
    /// writes the copies of elements among the output arguments back to their arrays.
    void Lower(SlcProcCallExprNode* node);

private:
    /// A call being lowered. The lowerings may change `args`, but not `outputs`.
    struct BuiltInCall {
        SlcProcCallExprNode* node;
        std::deque<SlcOperand> args;
        std::vector<SlcOperand> outputs;  // arguments that the function writes
    };
    using SpecialLowering = SlcOperand (SlcBuiltInLowering::*)(BuiltInCall&);
    struct SpecialRow {
        SqxPrimitive primitive;
        SpecialLowering create;
    };
    using ArgumentList = SlcCallICode::ArgumentList;

    /// Searched in order; the first match is used.
    static const SpecialRow sm_specials[];

    /// Returns the variable from `SlcListBuilder::GetResultVar`, or a temporary if that variable is
    /// also an output argument of the call, or if both refer to elements of one array.
    [[nodiscard]] SlcOperand GetCallResult(const BuiltInCall& call, SlcTypeNode* type,
                                           SlcDetailNode* detail);
    /// Emits a call that runs at each point, or once if the call is uniform (`DetailOfCall`).
    /// Returns the result; null for a void call.
    [[nodiscard]] SlcOperand GenPlainCall(const BuiltInCall& call, ArgumentList list);
    /// Emits the call in a block of detail `detail`; `result` may be null.
    void AddPlainCall(const BuiltInCall& call, const SlcOperand& result, ArgumentList list,
                      SlcDetailNode* detail);
    /// Emits the call in the given whole-grid form, outside blocks.
    void AddGridCall(const BuiltInCall& call, const SlcOperand& result, const SlcGridForm& form);
    /// Emits a whole-grid call if the enclosing conditions allow it, otherwise a plain one.
    void AddGridOrPlainCall(const BuiltInCall& call, const SlcOperand& result);
    [[nodiscard]] static SlcPtr<SlcICode> MakeCall(const BuiltInCall& call,
                                                   const SlcOperand& result, ArgumentList list,
                                                   const SlcGridForm& form);
    /// Gives each value that the variable tail may contain a fixed position after the fixed
    /// arguments, and passes `GetDefaultValue` for the values that the call leaves out.
    void MakeConstantNbArgs(BuiltInCall& call, const std::vector<SlcCallFormal>& formals);
    /// Returns the constant for a tail value that the call leaves out: the default of a float, a
    /// boolean or a string, otherwise the integer 0. For an output, this 0 means at run time that
    /// nothing is to be written.
    [[nodiscard]] static SlcOperand GetDefaultValue(const SlcFuncVarArgSingle& single);
    /// Lowers the call by its special lowering or by `CreateGridCall`, and returns the result.
    /// Returns null if neither applies, so that a plain call is needed.
    [[nodiscard]] SlcOperand CreateSIMDFuncCall(BuiltInCall& call);
    /// Returns null for a primitive without a special lowering.
    [[nodiscard]] static SpecialLowering FindSpecialLowering(const BuiltInCall& call);
    /// Emits one call for the whole grid, or a plain call if the enclosing conditions require that.
    /// Returns null if the built-in has no whole-grid form, its arguments do not match the form, or
    /// the call is uniform, so that it needs to run only once.
    [[nodiscard]] SlcOperand CreateGridCall(BuiltInCall& call);
    /// True if the details of the arguments match the whole-grid form, possibly once some uniform
    /// arguments have been copied to all points. Adds the positions of the arguments to copy to
    /// `widened`.
    [[nodiscard]] bool CanUseGridCall(const BuiltInCall& call,
                                      std::vector<std::size_t>& widened) const;
    /// Copies the uniform arguments at `places` to varying temporaries, in one block.
    void WidenArguments(BuiltInCall& call, const std::vector<std::size_t>& places);

    // Each `CreateBuiltIn...` lowers one group of built-ins and returns the result. Derivatives are
    // in SlcBuiltInLoweringDerivatives.cpp.
    [[nodiscard]] SlcOperand CreateBuiltInDerivative(BuiltInCall& call);
    /// Returns a zero of the call's type, the derivative of a uniform value: a constant for a
    /// float, otherwise a variable that is set to zero.
    [[nodiscard]] SlcOperand GenZero(const BuiltInCall& call);
    /// Returns the operand of the variable. Fatal if this kind of shader does not have it; the
    /// report names `function`.
    [[nodiscard]] SlcOperand PredefinedOperand(const SlcPtr<SlcVarSymbolEntry>& entry,
                                               const BuiltInCall& call, const char* function);
    /// Emits the call of a primitive that reads neighbouring points. Under a varying condition it
    /// reports `warning` and stores the result in a temporary of `typeInCondition`.
    [[nodiscard]] SlcOperand GenDerivative(const BuiltInCall& call, SlcTypeNode* typeInCondition,
                                           const char* warning);
    // Rewritten argument lists and `shadername` are in SlcBuiltInLoweringForms.cpp.
    [[nodiscard]] SlcOperand CreateBuiltInSpline(BuiltInCall& call);
    [[nodiscard]] SlcOperand CreateBuiltInFilterstep(BuiltInCall& call);
    /// Returns the end of the interval that begins with `start`: the end of the current point's
    /// interval, computed from its neighbours, or `start` itself if it is uniform.
    [[nodiscard]] SlcOperand GenFilterstepEnd(const SlcOperand& start);
    [[nodiscard]] SlcOperand CreateBuiltInMessageFunction(BuiltInCall& call);
    /// Returns the combined detail of all arguments except the last, which receives the answer.
    [[nodiscard]] static SlcDetailNode* DetailOfQuery(const BuiltInCall& call);
    [[nodiscard]] SlcOperand CreateBuiltInShaderName(BuiltInCall& call);
    /// Lowers a transform between two named spaces and returns the result; null if one of the names
    /// is not a constant.
    [[nodiscard]] SlcOperand InlineTransform(SlcProcCallExprNode* call, SqxPrimitive primitive,
                                             const SlcOperand& from, const SlcOperand& to,
                                             const SlcOperand& value);
    /// Copies the unchanged value to the result variable of the call, which it returns.
    [[nodiscard]] SlcOperand GenSameSpace(SlcProcCallExprNode* call, SlcTypeNode* type,
                                          const SlcOperand& value);

    SlcLoweringContext& m_context;
    SlcPtr<SlcSemanticError>& m_errors = m_context.m_errors;
    SlcOptionsControl& m_options = m_context.m_options;
    SlcListBuilder& m_list = m_context.m_list;
    SlcConditions& m_conditions = m_context.m_conditions;
    SlcValueStack& m_values = m_context.m_values;
    SlcElements& m_elements = m_context.m_elements;
    SlcLightEvaluations& m_lights = m_context.m_lights;
    SlcCallArguments& m_arguments;
};

#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "icode/SlcCallICode.h"
#include "lowering/SlcCallArguments.h"

class SlcFuncVarArgSingle;

/// Lowers a call of a built-in whose arguments have their operands: plain, for the whole grid, or
/// in a way of its own.
///
/// Those with a way of their own stand in `FindSpecialLowering`, by primitive, and in files by
/// concept: argument lists that are made anew, derivatives, and transforms between known spaces.
class SlcBuiltInLowering {
public:
    /// Both outlive it.
    SlcBuiltInLowering(SlcLoweringContext& context, SlcCallArguments& arguments)
        : m_context(context),
          m_arguments(arguments)
    {
    }

    /// Pops the arguments, and pushes the value unless the call is void. Fatal for a call that the
    /// checks should have refused.
    void Lower(SlcProcCallExprNode* node);
    /// The primitives with a lowering of their own.
    [[nodiscard]] static std::vector<std::string_view> SpecialPrimitives();

private:
    /// A call on its way. Lowerings change `args`; `outputs` stay as the source has them.
    struct BuiltInCall {
        SlcProcCallExprNode* node;
        std::deque<SlcOperand> args;
        std::vector<SlcOperand> outputs;  // arguments that the function writes
    };
    using SpecialLowering = SlcOperand (SlcBuiltInLowering::*)(BuiltInCall&);
    struct SpecialRow {
        std::string_view primitive;
        SpecialLowering create;
    };
    using ArgumentList = SlcCallICode::ArgumentList;

    /// By primitive, in the order in which they are looked up.
    static const SpecialRow sm_specials[];

    /// As `GetResultVar`, but never a variable that the function also writes as an argument.
    [[nodiscard]] SlcOperand GetCallResult(const BuiltInCall& call, SlcTypeNode* type,
                                           SlcDetailNode* detail);
    /// At each point, or once if everything is uniform. Null for a void call.
    [[nodiscard]] SlcOperand GenPlainCall(const BuiltInCall& call, ArgumentList list);
    /// The call in a block of that detail; `result` may be null.
    void AddPlainCall(const BuiltInCall& call, const SlcOperand& result, ArgumentList list,
                      SlcDetailNode* detail);
    /// In the given form, outside of blocks.
    void AddGridCall(const BuiltInCall& call, const SlcOperand& result, const SlcGridForm& form);
    /// Over the grid where the conditions around it allow that.
    void AddGridOrPlainCall(const BuiltInCall& call, const SlcOperand& result);
    [[nodiscard]] static SlcPtr<SlcICode> MakeCall(const BuiltInCall& call,
                                                   const SlcOperand& result, ArgumentList list,
                                                   const SlcGridForm& form);
    /// Puts the arguments of a variable tail into their fixed places, with defaults for those
    /// that the call leaves out.
    void MakeConstantNbArgs(BuiltInCall& call, const std::vector<SlcCallFormal>& formals);
    /// What stands for a value of the tail that the call leaves out. For an output it is a
    /// constant, which tells whoever runs the call that nothing is to be written.
    [[nodiscard]] static SlcOperand GetDefaultValue(const SlcFuncVarArgSingle& single);
    /// Null if nothing has been added and a plain call will do.
    [[nodiscard]] SlcOperand CreateSIMDFuncCall(BuiltInCall& call);
    /// Null for a primitive without a row.
    [[nodiscard]] static SpecialLowering FindSpecialLowering(const BuiltInCall& call);
    /// Null if the built-in has no such form, or these arguments do not suit it.
    [[nodiscard]] SlcOperand CreateGridCall(BuiltInCall& call);
    /// The details of the arguments suit the form, or do once the uniform ones at the places that
    /// it adds to `widened` are copied to all points.
    [[nodiscard]] bool SuitGridCall(const BuiltInCall& call,
                                    std::vector<std::size_t>& widened) const;
    /// Copies the uniform arguments at `places` into varying temporaries, in one block.
    void WidenArguments(BuiltInCall& call, const std::vector<std::size_t>& places);

    // Each `CreateBuiltIn...` adds the call and gives the result.
    // Those of neighbours, SlcBuiltInLoweringDerivatives.cpp.
    [[nodiscard]] SlcOperand CreateBuiltInDerivative(BuiltInCall& call);
    /// The value of a derivative of what is the same everywhere.
    [[nodiscard]] SlcOperand GenZero(const BuiltInCall& call);
    /// Fatal if the kind of shader has no such variable; `function` names the place in the report.
    [[nodiscard]] SlcOperand PredefinedOperand(const SlcPtr<SlcVarSymbolEntry>& entry,
                                               const BuiltInCall& call, const char* function);
    /// The call of a primitive that looks at neighbours. Under a varying condition it warns with
    /// `warning`, and a temporary of `typeInCondition` takes the result.
    [[nodiscard]] SlcOperand GenDerivative(const BuiltInCall& call, SlcTypeNode* typeInCondition,
                                           const char* warning);
    // Those with other arguments, SlcBuiltInLoweringForms.cpp.
    [[nodiscard]] SlcOperand CreateBuiltInSpline(BuiltInCall& call);
    [[nodiscard]] SlcOperand CreateBuiltInFilterstep(BuiltInCall& call);
    /// Where the interval ends that begins with `start`.
    [[nodiscard]] SlcOperand GenFilterstepEnd(const SlcOperand& start);
    [[nodiscard]] SlcOperand CreateBuiltInMessageFunction(BuiltInCall& call);
    /// Of all arguments but the last, which takes the answer.
    [[nodiscard]] static SlcDetailNode* DetailOfQuestion(const BuiltInCall& call);
    [[nodiscard]] SlcOperand CreateBuiltInShaderName(BuiltInCall& call);
    /// A transform between two spaces; null unless both are constants.
    [[nodiscard]] SlcOperand InlineTransform(SlcProcCallExprNode* call, const std::string& name,
                                             const SlcOperand& from, const SlcOperand& to,
                                             const SlcOperand& value);
    /// The value as it is, in a variable that the caller may write to.
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

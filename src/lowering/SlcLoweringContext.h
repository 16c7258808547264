#pragma once

#include <deque>

#include "lowering/SlcElements.h"
#include "lowering/SlcLeaving.h"
#include "lowering/SlcLightEvaluations.h"

class SlcExprNode;
class SlcSemanticError;
class SlcVarSymbolEntry;

/// What every part of the lowering works on, and the steps that all of them need.
///
/// The walker over the tree owns it; the lowerings of calls, casts and textures, which take
/// operands and never walk, hold it by reference.
class SlcLoweringContext {
public:
    SlcLoweringContext(SlcPtr<SlcSemanticError> errors, SlcOptionsControl& options);
    ~SlcLoweringContext();
    SlcLoweringContext(const SlcLoweringContext&) = delete;
    SlcLoweringContext& operator=(const SlcLoweringContext&) = delete;

    /// Begins a new list, with nothing of another one in reach.
    void Start(SlcListBuilder::Runs runs);

    /// The type and the detail that the semantic passes gave to `expr`; the detail as it is in this
    /// list.
    [[nodiscard]] static SlcTypeNode* TypeOf(const SlcExprNode* expr);
    [[nodiscard]] SlcDetailNode* DetailOf(const SlcExprNode* expr) const;
    /// The operand of a variable, which must have one by now: fatal if not.
    [[nodiscard]] SlcOperand OperandOf(const SlcPtr<SlcVarSymbolEntry>& entry);
    /// `value` if it is of this type, else a temporary that it has been assigned to, in a block of
    /// its own.
    [[nodiscard]] SlcOperand Converted(const SlcOperand& value, SlcTypeNode* type);
    /// A triple is lowered as a point; beside a color it was meant as one, and no instruction
    /// takes the two together.
    void MatchColors(SlcOperand& left, SlcOperand& right);
    /// A varying temporary with this value, assigned in the block that is open.
    [[nodiscard]] SlcOperand WidenHere(const SlcOperand& value);
    /// `value` if it varies, else such a temporary, assigned in a block of its own.
    [[nodiscard]] SlcOperand Widened(const SlcOperand& value);
    /// Fails: there is no code for this form, which the passes before should have refused.
    [[noreturn]] void RefuseForm(const SlcSyntaxNode* node);
    /// Behind code that has written the operand `written` of an assignment or a call.
    void NoteAssigned(const SlcOperand& written);

    SlcPtr<SlcSemanticError> m_errors;
    SlcOptionsControl& m_options;
    /// Null in a list that is made before the kind is known.
    const SlcShaderTypeNode* m_shaderType = nullptr;
    SlcListBuilder m_list;
    SlcConditions m_conditions;
    SlcLeaving m_leaving;
    SlcValueStack m_values;
    SlcElements m_elements;
    SlcLightEvaluations m_lights;
};

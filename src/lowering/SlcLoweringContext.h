#pragma once

#include <deque>

#include "lowering/SlcElements.h"
#include "lowering/SlcLeaving.h"
#include "lowering/SlcLightEvaluations.h"

class SlcExprNode;
class SlcSemanticError;
class SlcVarSymbolEntry;

/// The state that all parts of the lowering share, and the steps that they have in common.
///
/// The tree walker owns it. The lowerings of casts, textures and calls of built-ins and shadeops,
/// which receive operands and never walk the tree, hold a reference to it.
class SlcLoweringContext {
public:
    SlcLoweringContext(SlcPtr<SlcSemanticError> errors, SlcOptionsControl& options);
    ~SlcLoweringContext();
    SlcLoweringContext(const SlcLoweringContext&) = delete;
    SlcLoweringContext& operator=(const SlcLoweringContext&) = delete;

    /// Begins a new list, without the flags, values and copies of elements of the last one.
    void Start(SlcListBuilder::Runs runs);

    /// Return the type and the detail that semantic analysis assigned to `expr`; the detail is the
    /// effective one in this list.
    [[nodiscard]] static SlcTypeNode* TypeOf(const SlcExprNode* expr);
    [[nodiscard]] SlcDetailNode* DetailOf(const SlcExprNode* expr) const;
    /// Returns the operand of a variable; fatal if it has none.
    [[nodiscard]] SlcOperand OperandOf(const SlcPtr<SlcVarSymbolEntry>& entry);
    /// Returns `value` if it has this type, otherwise a temporary to which it is assigned in a
    /// separate block.
    [[nodiscard]] SlcOperand Converted(const SlcOperand& value, SlcTypeNode* type);
    /// Converts a triple without a type to a color if the other operand is a color: such triples
    /// are lowered as points, and no instruction combines a point and a color.
    void MatchColors(SlcOperand& left, SlcOperand& right);
    /// Copies the value to a varying temporary, in the open block.
    [[nodiscard]] SlcOperand WidenHere(const SlcOperand& value);
    /// Returns `value` if it varies, otherwise a varying copy made in a separate block.
    [[nodiscard]] SlcOperand Widened(const SlcOperand& value);
    /// Reports a fatal error: there is no code for this form, which earlier passes should have
    /// rejected.
    [[noreturn]] void RejectForm(const SlcSyntaxNode* node);
    /// Call it after an assignment or call that has written `written`: if that is `P`, the
    /// evaluated lights become stale in a kind of shader that sees lights.
    void NoteAssigned(const SlcOperand& written);

    SlcPtr<SlcSemanticError> m_errors;
    SlcOptionsControl& m_options;
    /// Null until the kind of the shader is known.
    const SlcShaderTypeNode* m_shaderType = nullptr;
    SlcListBuilder m_list;
    SlcConditions m_conditions;
    SlcLeaving m_leaving;
    SlcValueStack m_values;
    SlcElements m_elements;
    SlcLightEvaluations m_lights;
};

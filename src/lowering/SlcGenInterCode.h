#pragma once

#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

#include "frontend/SlcNodes.h"
#include "icode/SlcICodes.h"
#include "lowering/SlcBoolExprResult.h"
#include "lowering/SlcBuiltInLowering.h"
#include "lowering/SlcCastLowering.h"
#include "lowering/SlcLoweringContext.h"
#include "lowering/SlcShadeopLowering.h"
#include "lowering/SlcTextureLowering.h"

class SlcFuncInfo;
class SlcSemanticError;

/// Lowers a checked tree into intermediate code, with all user functions expanded in place.
///
/// A tree walker with a value stack: each expression leaves exactly one operand there, and its
/// parent pops what it needs. A varying operation stands in a parallel run, unless it has a form
/// that runs over the whole grid by itself and may use it.
///
///     Ci = s * Cs        push s, push Cs; pop both; begin run; Ci = s * Cs; end run
///
/// What it works on, the list, the conditions and the values, are classes of their own, held by
/// `SlcLoweringContext`. Calls of built-ins and shadeops, casts and texture accesses have lowerings
/// of their own, which take operands. The walk over the tree is here, in files by concept:
/// statements, expressions, assignments, conditions, relations, loops, calls, bodies and lights.
///
/// One object makes all lists of a shader, one after the other. It needs the types and details that
/// the checks have left in the tree and the marks of `SlcMarkLeaves`, and leaves in the entries of
/// variables the operands that stand for them.
class SlcGenInterCode : public SlcCodeWalker, public SlcCollectable {
public:
    /// `options` outlive it.
    SlcGenInterCode(SlcPtr<SlcSemanticError> errors, SlcOptionsControl& options);
    ~SlcGenInterCode() override;

    /// The main list of the shader in `tree`, between a `SlcBeginShaderICode` and a
    /// `SlcEndShaderICode`. Reports what has no code, such as an expansion that would be too large.
    /// The two flags are told, unused.
    [[nodiscard]] virtual SlcPtr<SlcListICode>
    GenCode(SlcSyntaxNode* tree, SlcShaderTypeNode* shaderType, bool CiAssigned, bool OiAssigned);
    /// The list that computes the default value of a parameter of type `type`; appends to
    /// `values` the operands that hold the value once the list has run.
    [[nodiscard]] virtual SlcPtr<SlcListICode> GenInitFormalCode(SlcDefExprNode* definition,
                                                                 std::deque<SlcOperand>& values,
                                                                 SlcTypeNode* type);
    /// The kind of the shader, for the lists that are made in front of the main one.
    void SetShaderType(SlcShaderTypeNode* shaderType) { m_context.m_shaderType = shaderType; }
    /// Gives the shader's outputs the values that they have unless the body sets them: `Ci` black
    /// and `Oi` white in a surface, `Cl` and `L` zero and `Ol` white in a light. Other kinds have
    /// none.
    virtual void DefaultOutputValues();

protected:
    using SlcCodeWalker::Case;

private:
    /// The test of a loop that is being lowered.
    struct LoopTest {
        SlcRelationNode* relation;
        bool containsBreakOrContinue;
        SlcOperand flag;         // varying; points still in the loop
        SlcOperand uniformFlag;  // some point is; null unless the relation varies
        SlcOperand cond;         // value of the relation; null at first
        SlcLabel start;
        SlcLabel end;
    };

    /// What an assignment writes to.
    struct Target {
        SlcOperand variable;  // or a reference to an element
        SlcOperand array;     // set instead for an element with a varying index, which is then
                              // the last value on the stack
    };

    /// The geometry of a light statement, as far as the statement gives it.
    struct Cone {
        SlcOperand position;
        SlcOperand axis;
        SlcOperand angle;
    };

    /// `value` as a variable that a parameter of type `type` can be copied from.
    [[nodiscard]] SlcOperand InitialValue(const SlcOperand& value, SlcTypeNode* type);
    /// Told, unused: comments on places in the source would be made here.
    void GenLineNumberInfo(SlcSyntaxNode* node);
    /// Walks an expression and pops its value.
    [[nodiscard]] SlcOperand Evaluate(SlcSyntaxNode* expr);
    // Arithmetic and constructors.
    void GenBinOp(SlcBinOpExprNode* node);
    /// The sixteen values.
    [[nodiscard]] std::deque<SlcOperand> EvaluateMatrix(SlcMatrixExprNode* node);

    // Assignments.
    [[nodiscard]] Target GenTarget(SlcAssignExprNode* node);
    /// The value of `expr`, if possible in `target`: whoever computes it asks `GetResultVar` for a
    /// place.
    [[nodiscard]] SlcOperand EvaluateInto(SlcExprNode* expr, const SlcOperand& target);
    /// By the form for the whole grid where that may stand.
    void GenAssignment(const SlcOperand& lhs, const SlcOperand& rhs);
    /// `value` if it is uniform, else a uniform temporary that it has been assigned to. For who
    /// updates a uniform variable by it: in a block for each point that would happen once a point.
    [[nodiscard]] SlcOperand UniformValue(const SlcOperand& value);
    /// `lhs = lhs op rhs`, and for an element below.
    void GenArithAssignment(SlcAssignExprNode* node, const SlcOperand& lhs, SlcOperand rhs);
    void GenElementAssignment(SlcAssignExprNode* node, const SlcOperand& array, bool valueUsed);
    /// `dest = right`, or `dest = left op right` for `+=` and the like.
    [[nodiscard]] SlcPtr<SlcICode> MakeAssignICode(SlcAssignExprNode* node, const SlcOperand& dest,
                                                   const SlcOperand& left, const SlcOperand& right);

    // Statements and definitions.
    void Case(SlcDefinitionsNode* node) override;
    void Case(SlcShaderDefNode* node) override;
    void Case(SlcFuncDefNode* node) override;
    void Case(SlcFuncDefStmtNode* node) override;
    void Case(SlcStmtsNode* node) override;
    void Case(SlcAssignStmtNode* node) override;
    void Case(SlcVarDefsStmtNode* node) override;
    void Case(SlcVarDefsNode* node) override;
    void Case(SlcDefExprsNode* node) override;
    void Case(SlcDefExprNode* node) override;
    void Case(SlcProcCallStmtNode* node) override;
    void Case(SlcReturnStmtNode* node) override;

    // Expressions.
    void Case(SlcConstExprNode* node) override;
    void Case(SlcIdentExprNode* node) override;
    void Case(SlcBinOpExprNode* node) override;
    void Case(SlcUMinusExprNode* node) override;
    void Case(SlcPointExprNode* node) override;
    void Case(SlcMatrixExprNode* node) override;
    void Case(SlcArrayExprNode* node) override;
    void Case(SlcArrayRefExprNode* node) override;
    void Case(SlcEqAssignExprNode* node) override;
    void Case(SlcAssignExprNode* node) override;
    void Case(SlcCastExprNode* node) override;

    // Conditions and loops.
    void Case(SlcNotRelNode* node) override;
    void Case(SlcLogOpNode* node) override;
    void Case(SlcCompOpNode* node) override;
    void Case(SlcIfThenStmtNode* node) override;
    void Case(SlcIfThenElseStmtNode* node) override;
    void Case(SlcCondExprNode* node) override;
    void Case(SlcWhileStmtNode* node) override;
    void Case(SlcForStmtNode* node) override;
    void Case(SlcBreakStmtNode* node) override;
    void Case(SlcContinueStmtNode* node) override;
    /// The flag that holds the value of `relation`, or its opposite if `inverted`. It is `target`
    /// where that fits; null leaves the choice. Uniform only if the relation is.
    [[nodiscard]] SlcOperand GenRelation(SlcRelationNode* relation, const SlcOperand& target,
                                         bool inverted);
    /// Of the two operands on the stack, into the flag that the node's annotation wants.
    void GenComparison(SlcCompOpNode* node);
    /// The flag that a comparison of this detail writes: `target` where that fits.
    [[nodiscard]] SlcOperand FlagFor(const SlcOperand& target, SlcDetailNode* detail);
    /// A varying copy of the uniform `flag`, which is released.
    [[nodiscard]] SlcOperand CopiedFlag(const SlcOperand& flag, const SlcOperand& copy);
    // `flag` holds the value of the left side; they give that of the whole.
    [[nodiscard]] SlcOperand GenLogAndCode(SlcLogOpNode* node, const SlcOperand& flag,
                                           bool inverted);
    [[nodiscard]] SlcOperand GenLogOrCode(SlcLogOpNode* node, const SlcOperand& flag,
                                          bool inverted);
    [[nodiscard]] SlcOperand GenUniformLogOp(SlcLogOpNode* node, const SlcOperand& flag,
                                             bool inverted, SlcConditions::AssignIfValue state);
    /// The same, with a jump over the right side.
    [[nodiscard]] SlcOperand GenUniformLogOpWithJump(SlcLogOpNode* node, const SlcOperand& flag,
                                                     bool inverted,
                                                     SlcConditions::AssignIfValue state);
    /// The flag of the condition of an `if`, which the caller releases.
    [[nodiscard]] SlcOperand GenCondition(SlcIfThenStmtNode* node);
    /// Lowers `branch` for the points of the varying `flag`; sets `uniformFlag` from it.
    void GenBranch(SlcStmtNode* branch, const SlcOperand& flag, const SlcOperand& uniformFlag);
    /// One of the values, by a jump.
    void GenUniformCondExpr(SlcCondExprNode* node, const SlcOperand& flag);
    /// Both values are computed, each for its points.
    void GenVaryingCondExpr(SlcCondExprNode* node, const SlcOperand& flag);
    /// Computes the relation of a loop and leaves the loop, by a jump to its end, once no point
    /// remains.
    void GenerateLoopCondition(LoopTest& test);
    /// Up to the body. The caller lowers that, as `cond` of the test says, and calls `EndLoop`.
    [[nodiscard]] LoopTest BeginLoop(SlcLoopStmtNode* node, SlcRelationNode* relation);
    /// The way back and the end, with flags released.
    void EndLoop(LoopTest& test);
    void GenUniformLoopBody(SlcLoopStmtNode* node, const LoopTest& test, const SlcLabel& next);
    [[nodiscard]] bool GenParallelLoopBody(SlcLoopStmtNode* node, const LoopTest& test,
                                           const SlcLabel& continueLabel);
    /// Lowers an expression that stands as a statement, and drops its value.
    void GenUnusedValue(SlcExprNode& expr);
    /// There are points that could leave the loops; if not, `refusal` is reported.
    [[nodiscard]] bool MayLeave(SlcLoopModStmtNode* node, const char* refusal);

    // Bodies of functions.
    /// Lowers the body that `call` stands for, whose formals have their operands by now, and
    /// pushes the value unless the call is void. A body that returns from within a condition or
    /// a loop is a varying loop of one trip, which the `return` leaves as a `break` does.
    /// The caller has put the temporaries in use out of reach.
    void GenFuncBody(SlcProcCallExprNode* call, SlcStmtNode* body);
    /// One without early returns: it stands where the call does, and its value is that of the
    /// `return`, or zero where it has none.
    void GenPlainBody(SlcProcCallExprNode* call, SlcStmtNode* body);
    /// The type of what the call gives, of an array with a length: one that is unknown is reported.
    [[nodiscard]] SlcTypeNode* TypeOfResult(SlcProcCallExprNode* call);
    /// `result = value`, of arrays element by element.
    void GenCopy(const SlcOperand& result, const SlcOperand& value);
    /// What a point has that does not return.
    void GenZero(const SlcOperand& result);
    void GenBodyOfOneTrip(SlcProcCallExprNode* call, SlcStmtNode* body);
    /// In a list that runs without a grid, a `return` is a jump.
    void GenBodyWithJumps(SlcProcCallExprNode* call, SlcStmtNode* body);
    /// A variable for the value of a function that may return early; null for a void one.
    [[nodiscard]] SlcOperand GenResultOfEarlyReturns(SlcProcCallExprNode* call);

    // Calls.
    void Case(SlcProcCallExprNode* node) override;
    /// Its arguments are on the stack.
    void GenUserCall(SlcProcCallExprNode* call);
    /// Reports the first function that would make the code too large; false from then on.
    [[nodiscard]] bool MayExpand(SlcProcCallExprNode* call, const SlcFuncInfo& info);
    /// Gives the formals of the function the operands of the arguments on the stack.
    [[nodiscard]] std::vector<SlcOperand> BindFormals(SlcProcCallExprNode* call,
                                                      const SlcFuncInfo& info);
    /// Binds the formal to the last value on the stack, argument `position` of the call.
    void BindFormal(SlcProcCallExprNode* call, SlcVarSymbolEntry& formal, std::size_t position);
    /// A variable of the formal's type and detail with this value.
    [[nodiscard]] SlcOperand CopiedForFormal(const SlcVarSymbolEntry& formal,
                                             const SlcOperand& value);

    // Lights.
    void Case(SlcSolarStmtNode* node) override;
    void Case(SlcIlluminateStmtNode* node) override;
    void Case(SlcIlluminanceStmtNode* node) override;
    /// Parts that are null are left out.
    [[nodiscard]] Cone EvaluateCone(SlcExprNode* position, SlcExprNode* axis, SlcExprNode* angle);
    /// Lowers the body of `illuminate` or `solar` for the points of `flag`; at the others the light
    /// is black.
    void GenLitBody(SlcLoopStmtNode* node, const SlcOperand& flag, const SlcOperand& uniformFlag);
    /// The loop with a test for each light, whether it reaches a point within the cone.
    void GenConeLoop(SlcIlluminanceStmtNode* node, const Cone& cone, const SlcPtr<SlcICode>& begin);
    /// Has the lights run for the points at `position`, which may be uniform.
    void EnterLightLoop(const SlcOperand& position);

    // Textures.
    void Case(SlcTextureExprNode* node) override;
    // Lists of arguments are walked through; names, types and details have no code.
    void Case(SlcProcArgsNode* node) override { node->WalkIn(this); }
    void Case(SlcTextureFilenameNode* node) override { node->WalkIn(this); }
    void Case(SlcChannelNode* node) override { node->WalkIn(this); }
    void Case(SlcTextureArgsNode* node) override { node->WalkIn(this); }
    void Case(SlcLexicalNode*) override {}
    void Case(SlcTypeSpecNode*) override {}
    void Case(SlcTextureTypeNode*) override {}
    void Case(SlcIdentNode*) override {}
    void Default(SlcSyntaxNode* node) override;

    SlcLoweringContext m_context;
    // Its parts.
    SlcPtr<SlcSemanticError>& m_errors = m_context.m_errors;
    SlcOptionsControl& m_options = m_context.m_options;
    SlcListBuilder& m_list = m_context.m_list;
    SlcConditions& m_conditions = m_context.m_conditions;
    SlcLeaving& m_leaving = m_context.m_leaving;
    SlcValueStack& m_values = m_context.m_values;
    SlcElements& m_elements = m_context.m_elements;
    SlcLightEvaluations& m_lights = m_context.m_lights;

    SlcCallArguments m_arguments{m_context};
    SlcBuiltInLowering m_builtIns{m_context, m_arguments};
    SlcShadeopLowering m_shadeops{m_context, m_arguments};
    SlcCastLowering m_casts{m_context};
    SlcTextureLowering m_textures{m_context};

    // From one `Case` to another.
    bool m_valueUnused = false;     // the assignment about to be walked is a statement
    bool m_flagCopyNeeded = false;  // a relation must give a varying flag
    std::unordered_map<const SlcSyntaxNode*, bool> m_condExprsWithCalls;  // that were asked about

    bool m_CiAssigned = false;             // told, unused
    bool m_OiAssigned = false;             // told, unused
    int m_expansionLevel = 0;              // functions being expanded
    std::size_t m_expandedOperations = 0;  // of all functions expanded so far
    bool m_expansionRefused = false;       // the code would become too large
};

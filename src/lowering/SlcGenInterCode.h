#pragma once

#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

#include "frontend/SlcCodeWalker.h"
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

/// Lowers a checked tree to intermediate code, with all user functions expanded in place.
///
/// A tree walker with a value stack: each expression pushes one operand, except that an array
/// constructor pushes one per element and a void call none. The parent of an expression pops its
/// operands. A varying operation is placed in a parallel run, unless it has a whole-grid form and
/// may use it.
///
///     Ci = s * Cs        push s, push Cs; pop both; begin run; Ci = s * Cs; end run
///
/// The list, the conditions and the value stack are separate classes in `SlcLoweringContext`. Calls
/// of built-ins and shadeops, casts and texture accesses have separate lowering classes, which
/// receive evaluated operands. This class walks the tree and lowers the rest, in files by concept:
/// statements, expressions, assignments, conditions, relations, loops, calls, bodies and lights.
///
/// One object makes all lists of a shader, one after the other. It requires the types and details
/// from semantic analysis and the marks of `SlcMarkLeaves` in the tree. It stores the operands of
/// locals and of functions' formals in their symbol entries.
class SlcGenInterCode : public SlcCodeWalker, public SlcCollectable {
public:
    /// `options` must outlive this object.
    SlcGenInterCode(SlcPtr<SlcSemanticError> errors, SlcOptionsControl& options);
    ~SlcGenInterCode() override;

    /// Returns the main list of the shader in `tree`, between a `SlcBeginShaderICode` and a
    /// `SlcEndShaderICode`. Reports code that cannot be lowered, such as an expansion that would be
    /// too large. `CiAssigned` and `OiAssigned` have no effect: the outputs are initialized whether
    /// or not the shader assigns them.
    [[nodiscard]] virtual SlcPtr<SlcListICode>
    GenCode(SlcSyntaxNode* tree, SlcShaderTypeNode* shaderType, bool CiAssigned, bool OiAssigned);
    /// Returns the list that computes the default value of the parameter that `definition` defines
    /// with type `type`; appends to `values` the operand that holds the value after the list has
    /// run. The definition must have an initializer, and its symbol entry must already record
    /// whether the value needs shading data (`DependsOnContext`). Reports the same errors as
    /// `GenCode`.
    [[nodiscard]] virtual SlcPtr<SlcListICode> GenInitFormalCode(SlcDefExprNode* definition,
                                                                 std::deque<SlcOperand>& values,
                                                                 SlcTypeNode* type);
    /// Sets the kind of the shader, for the lists that are made before the main one.
    void SetShaderType(SlcShaderTypeNode* shaderType) { m_context.m_shaderType = shaderType; }
    /// Initializes the shader's outputs: `Ci` to black and `Oi` to white in a surface, `Cl` and `L`
    /// to zero and `Ol` to white in a light. Other kinds have no such defaults.
    virtual void DefaultOutputValues();

protected:
    using SlcCodeWalker::Case;

private:
    /// The test of the loop being lowered.
    struct LoopTest {
        SlcRelationNode* relation;
        bool containsBreakOrContinue;
        SlcOperand flag;         // true at points still in the loop
        SlcOperand uniformFlag;  // true if any point is active; null if `cond` is uniform
        SlcOperand cond;         // value of the relation, cleared at points that leave the
                                 // iteration; null until the first test is emitted
        SlcLabel start;
        SlcLabel end;
    };

    /// The target of an assignment.
    struct Target {
        SlcOperand variable;  // may be a reference to an element
        SlcOperand array;     // set instead of `variable` for a varying index, which is then the
                              // last value on the stack
    };

    /// The geometry of a light statement; omitted parts are null.
    struct Cone {
        SlcOperand position;
        SlcOperand axis;
        SlcOperand angle;
    };

    /// Returns an operand of type `type` from which the run time can set the parameter: `value`
    /// itself, or a temporary to which `value` is assigned.
    [[nodiscard]] SlcOperand InitialValue(const SlcOperand& value, SlcTypeNode* type);
    /// Emits nothing. Most statements call it before their code, so comments with source positions
    /// could be emitted here.
    void GenLineNumberInfo(SlcSyntaxNode* node);
    /// Walks an expression and pops its value.
    [[nodiscard]] SlcOperand Evaluate(SlcSyntaxNode* expr);
    // Arithmetic and constructors.
    void GenBinOp(SlcBinOpExprNode* node);
    /// Evaluates the sixteen values of a matrix and returns them in source order.
    [[nodiscard]] std::deque<SlcOperand> EvaluateMatrix(SlcMatrixExprNode* node);

    // Assignments.
    [[nodiscard]] Target GenTarget(SlcAssignExprNode* node);
    /// Evaluates `expr` and returns its operand, which is `target` if the value could be computed
    /// in place. For this, `target` is set as the hint of `expr` during the walk, and
    /// `SlcListBuilder::GetResultVar` returns the hint if its type and detail match.
    [[nodiscard]] SlcOperand EvaluateInto(SlcExprNode* expr, const SlcOperand& target);
    /// Emits an assignment, in whole-grid form where that is allowed; nothing if both operands are
    /// the same.
    void GenAssignment(const SlcOperand& lhs, const SlcOperand& rhs);
    /// Returns `value` if it is uniform, otherwise a uniform copy of it. An update such as `+=` of
    /// a uniform variable needs uniform operands: in a varying block the update would run once per
    /// point.
    [[nodiscard]] SlcOperand UniformValue(const SlcOperand& value);
    /// Emits `lhs = lhs op rhs`, for `+=` and the other operators.
    void GenArithAssignment(SlcAssignExprNode* node, const SlcOperand& lhs, SlcOperand rhs);
    /// Emits an assignment with any operator to an element of `array` whose index varies. Pops the
    /// index, which must be the last value on the stack, and pushes one operand. If `valueUsed`,
    /// this is a copy of the element.
    void GenElementAssignment(SlcAssignExprNode* node, const SlcOperand& array, bool valueUsed);
    /// Makes `dest = right`, or `dest = left op right` for `+=` and the other operators.
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
    /// Lowers `relation` and returns the flag that holds its value, negated if `inverted`. The flag
    /// is `target` or, for example if `target` is uniform and the relation varies, another one; a
    /// null `target` allows any flag. The flag is uniform only if the relation is.
    [[nodiscard]] SlcOperand GenRelation(SlcRelationNode* relation, const SlcOperand& target,
                                         bool inverted);
    /// Pops two operands, compares them, and pushes the flag of the result. The node's annotation
    /// (`SlcBoolExprResult`) may name a preferred flag, and may request the negated result.
    void GenComparison(SlcCompOpNode* node);
    /// Returns the flag that a comparison of detail `detail` writes: `target` if it has this
    /// detail, otherwise another flag. If that flag varies and `target` is uniform, also emits code
    /// that assigns `target` to it at the points that do not compare.
    [[nodiscard]] SlcOperand FlagFor(const SlcOperand& target, SlcDetailNode* detail);
    /// Copies the uniform `flag` to the varying flag `copy`, releases `flag` and returns `copy`.
    [[nodiscard]] SlcOperand CopiedFlag(const SlcOperand& flag, const SlcOperand& copy);
    // `flag` holds the value of the left side. Each function returns the flag that holds the value
    // of the whole operation. If `inverted`, both values are negated, so an `||` in the source is
    // lowered by the function for `&&`, and the reverse. `state` selects the value of the left side
    // for which the right side runs.
    [[nodiscard]] SlcOperand GenLogAndCode(SlcLogOpNode* node, const SlcOperand& flag,
                                           bool inverted);
    [[nodiscard]] SlcOperand GenLogOrCode(SlcLogOpNode* node, const SlcOperand& flag,
                                          bool inverted);
    [[nodiscard]] SlcOperand GenUniformLogOp(SlcLogOpNode* node, const SlcOperand& flag,
                                             bool inverted, SlcConditions::AssignIfValue state);
    /// Like `GenUniformLogOp`, but skips the right side by a jump instead of guarding it.
    [[nodiscard]] SlcOperand GenUniformLogOpWithJump(SlcLogOpNode* node, const SlcOperand& flag,
                                                     bool inverted,
                                                     SlcConditions::AssignIfValue state);
    /// Lowers the condition of an `if` and returns its flag. The caller must release the flag.
    [[nodiscard]] SlcOperand GenCondition(SlcIfThenStmtNode* node);
    /// Sets `uniformFlag` to true if the varying `flag` is true at any point, and lowers `branch`
    /// for the points where `flag` is true.
    void GenBranch(SlcStmtNode* branch, const SlcOperand& flag, const SlcOperand& uniformFlag);
    /// Computes only the selected value, with jumps, and pushes it.
    void GenUniformCondExpr(SlcCondExprNode* node, const SlcOperand& flag);
    /// Computes both values, each for the points that select it, and pushes the result.
    void GenVaryingCondExpr(SlcCondExprNode* node, const SlcOperand& flag);
    /// Emits the test of a loop: computes the relation, and jumps to the end of the loop if no
    /// point remains in it. Sets `cond` and `uniformFlag` of the test.
    void GenerateLoopCondition(LoopTest& test);
    /// Emits the loop up to its body. The caller then lowers the body, by `GenUniformLoopBody` if
    /// `cond` of the test is uniform and otherwise by `GenParallelLoopBody`, and calls `EndLoop`.
    [[nodiscard]] LoopTest BeginLoop(SlcLoopStmtNode* node, SlcRelationNode* relation);
    /// Emits the end of the loop: with code motion another test, then the back edge and the end
    /// label. Releases the flags of the test.
    void EndLoop(LoopTest& test);
    void GenUniformLoopBody(SlcLoopStmtNode* node, const LoopTest& test, const SlcLabel& next);
    [[nodiscard]] bool GenParallelLoopBody(SlcLoopStmtNode* node, const LoopTest& test,
                                           const SlcLabel& continueLabel);
    /// Lowers the first or third expression of a `for`, and drops its value.
    void GenUnusedValue(SlcExprNode& expr);
    /// True if the `break` or `continue` can be lowered; otherwise reports `refusal`. In a list
    /// that runs on grids, a level larger than the number of enclosing varying loops is fatal.
    [[nodiscard]] bool MayLeave(SlcLoopModStmtNode* node, const char* refusal);

    // Bodies of functions.
    /// Lowers the body of the called function, whose formals must be bound to operands, and pushes
    /// the value unless the call is void. A `return` is early if it is inside a condition, a loop
    /// or a light statement. On a grid, a body with an early `return` is lowered as a varying loop
    /// with one iteration, which the `return` leaves like a `break`. The caller must protect the
    /// temporaries in use (`SlcListBuilder::EnterBody`).
    void GenFuncBody(SlcProcCallExprNode* call, SlcStmtNode* body);
    /// Lowers a body without an early `return`, and pushes the value of its `return`. If it has
    /// none and the call is not void, pushes zero or, for a string, the empty text.
    void GenPlainBody(SlcProcCallExprNode* call, SlcStmtNode* body);
    /// Returns the type of a variable for the call's value. An array of unknown length is reported
    /// and gets the length 1.
    [[nodiscard]] SlcTypeNode* TypeOfResult(SlcProcCallExprNode* call);
    /// Emits `result = value`, element by element for arrays.
    void GenCopy(const SlcOperand& result, const SlcOperand& value);
    /// Sets `result`, or all its elements, to zero or the empty text: the value at points that do
    /// not execute a `return`.
    void GenZero(const SlcOperand& result);
    /// Lowers a body with an early `return` in a list that runs on grids.
    void GenBodyAsLoop(SlcProcCallExprNode* call, SlcStmtNode* body);
    /// Lowers a body with an early `return` in a list that runs without a grid, where the `return`
    /// is a jump.
    void GenBodyWithJumps(SlcProcCallExprNode* call, SlcStmtNode* body);
    /// Returns a new varying variable for the value of a function with an early `return`, after
    /// setting it by `GenZero`; null for a void function.
    [[nodiscard]] SlcOperand GenResultOfEarlyReturns(SlcProcCallExprNode* call);

    // Calls.
    void Case(SlcProcCallExprNode* node) override;
    /// Expands a call whose arguments are on the stack, and pushes its value unless it is void.
    void GenUserCall(SlcProcCallExprNode* call);
    /// False if the expanded code would be too large or nested too deeply. Reports the first such
    /// call; after it, all further calls are refused without a report.
    [[nodiscard]] bool MayExpand(SlcProcCallExprNode* call, const SlcFuncInfo& info);
    /// Pops the arguments from the stack and binds the formals of the function to them. Returns the
    /// operands of the output formals, from the last to the first.
    [[nodiscard]] std::vector<SlcOperand> BindFormals(SlcProcCallExprNode* call,
                                                      const SlcFuncInfo& info);
    /// Pops the last value, which is argument `position` of the call, counted from 0, and binds the
    /// formal to it.
    void BindFormal(SlcProcCallExprNode* call, SlcVarSymbolEntry& formal, std::size_t position);
    /// Assigns the constant `value` to a temporary of the formal's type, which varies if the
    /// formal is varying and is uniform otherwise. Returns the temporary.
    [[nodiscard]] SlcOperand CopiedForFormal(const SlcVarSymbolEntry& formal,
                                             const SlcOperand& value);

    // Lights.
    void Case(SlcSolarStmtNode* node) override;
    void Case(SlcIlluminateStmtNode* node) override;
    void Case(SlcIlluminanceStmtNode* node) override;
    /// Evaluates the given parts, and converts position and axis to points; null parts stay null.
    [[nodiscard]] Cone EvaluateCone(SlcExprNode* position, SlcExprNode* axis, SlcExprNode* angle);
    /// Lowers the body of `illuminate` or `solar` for points where `flag` is true; at the other
    /// active points, `Cl` is set to black. Changes both flags.
    void GenLitBody(SlcLoopStmtNode* node, const SlcOperand& flag, const SlcOperand& uniformFlag);
    /// Emits the loop from the evaluation of the lights through its body, without its end. `begin`
    /// is its first instruction. For each light, a test selects the points whose cone contains the
    /// light.
    void GenConeLoop(SlcIlluminanceStmtNode* node, const Cone& cone, const SlcPtr<SlcICode>& begin);
    /// Begins a loop over lights: emits their evaluation for the points at `position`, which may be
    /// uniform.
    void EnterLightLoop(const SlcOperand& position);

    // Textures.
    void Case(SlcTextureExprNode* node) override;
    // The first four kinds of nodes only walk their children, the next four have no code.
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
    // Shortcuts to the parts of the context.
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

    // Passed from one `Case` to another.
    bool m_valueUnused = false;     // no code reads the value of the next assignment walked
    bool m_flagCopyNeeded = false;  // a relation must return a varying flag
    std::unordered_map<const SlcSyntaxNode*, bool> m_condExprsWithCalls;  // cache of `FindCalls`

    bool m_CiAssigned = false;             // set, but never read
    bool m_OiAssigned = false;             // set, but never read
    int m_expansionLevel = 0;              // nesting depth of expanded functions
    std::size_t m_expandedOperations = 0;  // of all functions expanded so far
    bool m_expansionRefused = false;       // `MayExpand` has refused a call
};

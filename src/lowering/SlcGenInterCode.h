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
/// A tree walker with a value stack: each expression pushes one operand, an array constructor one
/// per element and a void call none, and its parent pops what it needs. A varying operation is
/// placed in a parallel run, unless it has a whole-grid form and may use it.
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
    /// too large. The two flags belong to the required interface and are not used.
    [[nodiscard]] virtual SlcPtr<SlcListICode>
    GenCode(SlcSyntaxNode* tree, SlcShaderTypeNode* shaderType, bool CiAssigned, bool OiAssigned);
    /// Returns the list that computes the default value of a parameter of type `type`; appends to
    /// `values` the operand that holds the value after the list has run.
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
        SlcOperand uniformFlag;  // true if a point is in the loop; null unless the relation varies
        SlcOperand cond;         // value of the relation; null until the first test is emitted
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

    /// Returns `value` as a variable of type `type` from which the parameter can be copied.
    [[nodiscard]] SlcOperand InitialValue(const SlcOperand& value, SlcTypeNode* type);
    /// Part of the required interface; emits nothing. This is where comments with source positions
    /// could be emitted.
    void GenLineNumberInfo(SlcSyntaxNode* node);
    /// Walks an expression and pops its value.
    [[nodiscard]] SlcOperand Evaluate(SlcSyntaxNode* expr);
    // Arithmetic and constructors.
    void GenBinOp(SlcBinOpExprNode* node);
    /// Evaluates the sixteen values of a matrix and returns them in source order.
    [[nodiscard]] std::deque<SlcOperand> EvaluateMatrix(SlcMatrixExprNode* node);

    // Assignments.
    [[nodiscard]] Target GenTarget(SlcAssignExprNode* node);
    /// Evaluates `expr`, into `target` if possible: sets `target` as the hint of `expr`, from which
    /// `GetResultVar` returns it.
    [[nodiscard]] SlcOperand EvaluateInto(SlcExprNode* expr, const SlcOperand& target);
    /// Emits an assignment, in whole-grid form where that is allowed; nothing if both operands are
    /// the same.
    void GenAssignment(const SlcOperand& lhs, const SlcOperand& rhs);
    /// Returns `value` if it is uniform, otherwise a uniform copy of it. An update of a uniform
    /// variable needs a uniform value: in a varying block it would happen once per point.
    [[nodiscard]] SlcOperand UniformValue(const SlcOperand& value);
    /// Emits `lhs = lhs op rhs`. The next function emits any assignment to an element whose index,
    /// the last value on the stack, varies.
    void GenArithAssignment(SlcAssignExprNode* node, const SlcOperand& lhs, SlcOperand rhs);
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
    /// is `target` if possible; a null target allows any flag. The flag is uniform only if the
    /// relation is.
    [[nodiscard]] SlcOperand GenRelation(SlcRelationNode* relation, const SlcOperand& target,
                                         bool inverted);
    /// Compares the two operands on the stack, into the flag that the node's annotation requests.
    void GenComparison(SlcCompOpNode* node);
    /// Returns the flag that a comparison of this detail writes: `target` if possible.
    [[nodiscard]] SlcOperand FlagFor(const SlcOperand& target, SlcDetailNode* detail);
    /// Copies the uniform `flag` to the varying flag `copy`, and releases `flag`.
    [[nodiscard]] SlcOperand CopiedFlag(const SlcOperand& flag, const SlcOperand& copy);
    // `flag` holds the value of the left side; each function returns the flag that holds the value
    // of the whole operation.
    [[nodiscard]] SlcOperand GenLogAndCode(SlcLogOpNode* node, const SlcOperand& flag,
                                           bool inverted);
    [[nodiscard]] SlcOperand GenLogOrCode(SlcLogOpNode* node, const SlcOperand& flag,
                                          bool inverted);
    [[nodiscard]] SlcOperand GenUniformLogOp(SlcLogOpNode* node, const SlcOperand& flag,
                                             bool inverted, SlcConditions::AssignIfValue state);
    /// Like `GenUniformLogOp`, but emits a jump over the right side.
    [[nodiscard]] SlcOperand GenUniformLogOpWithJump(SlcLogOpNode* node, const SlcOperand& flag,
                                                     bool inverted,
                                                     SlcConditions::AssignIfValue state);
    /// Returns the flag of the condition of an `if`, which the caller releases.
    [[nodiscard]] SlcOperand GenCondition(SlcIfThenStmtNode* node);
    /// Sets `uniformFlag` from the varying `flag`, and lowers `branch` for the points of `flag`.
    void GenBranch(SlcStmtNode* branch, const SlcOperand& flag, const SlcOperand& uniformFlag);
    /// Selects one of the values with a jump.
    void GenUniformCondExpr(SlcCondExprNode* node, const SlcOperand& flag);
    /// Computes both values, each for the points that select it.
    void GenVaryingCondExpr(SlcCondExprNode* node, const SlcOperand& flag);
    /// Emits the test of a loop: computes the relation, and jumps to the end of the loop once no
    /// point remains.
    void GenerateLoopCondition(LoopTest& test);
    /// Emits the loop up to its body. The caller lowers the body according to `cond` of the test,
    /// and calls `EndLoop`.
    [[nodiscard]] LoopTest BeginLoop(SlcLoopStmtNode* node, SlcRelationNode* relation);
    /// Emits the back edge, after another test if the loop is rotated, and the end of the loop.
    /// Releases its flags.
    void EndLoop(LoopTest& test);
    void GenUniformLoopBody(SlcLoopStmtNode* node, const LoopTest& test, const SlcLabel& next);
    [[nodiscard]] bool GenParallelLoopBody(SlcLoopStmtNode* node, const LoopTest& test,
                                           const SlcLabel& continueLabel);
    /// Lowers an expression used as a statement, and drops its value.
    void GenUnusedValue(SlcExprNode& expr);
    /// True if the `break` or `continue` can be lowered; otherwise reports `refusal`. Fatal if it
    /// leaves more loops than there are.
    [[nodiscard]] bool MayLeave(SlcLoopModStmtNode* node, const char* refusal);

    // Bodies of functions.
    /// Lowers the body of the called function, whose formals must be bound to operands, and pushes
    /// the value unless the call is void. On a grid, a body that returns inside a condition or a
    /// loop is lowered as a varying loop with one iteration, which `return` leaves like a `break`.
    /// The caller must protect the temporaries in use (`EnterBody`).
    void GenFuncBody(SlcProcCallExprNode* call, SlcStmtNode* body);
    /// Lowers a body without early returns: it is expanded at the call, and its value is that of
    /// the `return`, or zero if there is none.
    void GenPlainBody(SlcProcCallExprNode* call, SlcStmtNode* body);
    /// Returns the type of the call's value; reports an array whose length is unknown.
    [[nodiscard]] SlcTypeNode* TypeOfResult(SlcProcCallExprNode* call);
    /// Emits `result = value`, element by element for arrays.
    void GenCopy(const SlcOperand& result, const SlcOperand& value);
    /// Sets `result` to zero, the value at points that do not return.
    void GenZero(const SlcOperand& result);
    void GenBodyAsLoop(SlcProcCallExprNode* call, SlcStmtNode* body);
    /// Lowers a body in a list that runs without a grid, where a `return` is a jump.
    void GenBodyWithJumps(SlcProcCallExprNode* call, SlcStmtNode* body);
    /// Makes a variable for the value of a function that may return early, and sets it to zero;
    /// null for a void function.
    [[nodiscard]] SlcOperand GenResultOfEarlyReturns(SlcProcCallExprNode* call);

    // Calls.
    void Case(SlcProcCallExprNode* node) override;
    /// Expands a call whose arguments are on the stack.
    void GenUserCall(SlcProcCallExprNode* call);
    /// False if the code would become too large, which is reported once.
    [[nodiscard]] bool MayExpand(SlcProcCallExprNode* call, const SlcFuncInfo& info);
    /// Binds the formals of the function to the arguments on the stack; returns the operands of the
    /// output formals.
    [[nodiscard]] std::vector<SlcOperand> BindFormals(SlcProcCallExprNode* call,
                                                      const SlcFuncInfo& info);
    /// Binds the formal to the last value on the stack, which is argument `position` of the call.
    void BindFormal(SlcProcCallExprNode* call, SlcVarSymbolEntry& formal, std::size_t position);
    /// Copies the value to a new variable of the formal's type and detail.
    [[nodiscard]] SlcOperand CopiedForFormal(const SlcVarSymbolEntry& formal,
                                             const SlcOperand& value);

    // Lights.
    void Case(SlcSolarStmtNode* node) override;
    void Case(SlcIlluminateStmtNode* node) override;
    void Case(SlcIlluminanceStmtNode* node) override;
    /// Evaluates the given parts; null parts stay null.
    [[nodiscard]] Cone EvaluateCone(SlcExprNode* position, SlcExprNode* axis, SlcExprNode* angle);
    /// Lowers the body of `illuminate` or `solar` for points where `flag` is true; at the other
    /// active points, `Cl` is set to black.
    void GenLitBody(SlcLoopStmtNode* node, const SlcOperand& flag, const SlcOperand& uniformFlag);
    /// Emits the loop without its end: for each light, a test selects the points whose cone
    /// contains the light.
    void GenConeLoop(SlcIlluminanceStmtNode* node, const Cone& cone, const SlcPtr<SlcICode>& begin);
    /// Emits the evaluation of the lights for the points at `position`, which may be uniform.
    void EnterLightLoop(const SlcOperand& position);

    // Textures.
    void Case(SlcTextureExprNode* node) override;
    // Argument lists just walk their children; names, types and details have no code.
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
    bool m_valueUnused = false;     // of the assignment about to be walked
    bool m_flagCopyNeeded = false;  // a relation must return a varying flag
    std::unordered_map<const SlcSyntaxNode*, bool> m_condExprsWithCalls;  // cache of `FindCalls`

    bool m_CiAssigned = false;             // required, not used
    bool m_OiAssigned = false;             // required, not used
    int m_expansionLevel = 0;              // nesting depth of expanded functions
    std::size_t m_expandedOperations = 0;  // of all functions expanded so far
    bool m_expansionRefused = false;       // the code would become too large
};

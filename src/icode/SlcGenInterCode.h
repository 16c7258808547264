#pragma once

#include <deque>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "frontend/SlcNodes.h"
#include "icode/SlcBoolExprResult.h"
#include "icode/SlcCallFormals.h"
#include "icode/SlcICodes.h"
#include "icode/SlcListICode.h"
#include "icode/SlcTempPools.h"
#include "support/SlcOptionsControl.h"

class SlcFuncInfo;
class SlcSemanticError;
class SlcTextureParameters;

/// Lowers a checked tree into intermediate code, with all user functions expanded in place.
///
/// A tree walker with a value stack: each expression leaves exactly one operand there, and its
/// parent pops what it needs. A varying operation stands in a parallel run, unless it has a form
/// that runs over the whole grid by itself and may use it. Code under a varying condition is
/// guarded by the innermost flag alone: a flag is false wherever the flags around it are.
///
/// The implementation is spread over files by concept: temporaries and statements, expressions,
/// casts, assignments, conditions, loops, calls, built-ins, lights and textures.
class SlcGenInterCode : public SlcCodeWalker, public SlcCollectable {
public:
    SlcGenInterCode(SlcPtr<SlcSemanticError> errors, SlcOptionsControl& options);
    ~SlcGenInterCode() override;

    /// The main list of the shader in `tree`.
    [[nodiscard]] virtual SlcPtr<SlcListICode>
    GenCode(SlcSyntaxNode* tree, SlcShaderTypeNode* shaderType, bool CiAssigned, bool OiAssigned);
    /// The list that computes the default value of a parameter of type `type`; appends to
    /// `values` the operands that hold the value once the list has run.
    [[nodiscard]] virtual SlcPtr<SlcListICode> GenInitFormalCode(SlcDefExprNode* definition,
                                                                 std::deque<SlcOperand>& values,
                                                                 SlcTypeNode* type);
    /// The kind of the shader, for the lists that are made in front of the main one.
    void SetShaderType(SlcShaderTypeNode* shaderType) { m_shaderType = shaderType; }
    /// Gives the shader's outputs the values that they have unless the body sets them.
    virtual void DefaultOutputValues();

protected:
    using SlcCodeWalker::Case;

private:
    /// What a flag must be for a point to be active.
    enum class AssignIfValue { IfTrue = 0, IfFalse = 1 };

    /// One level of conditions; the innermost is the last.
    struct Condition {
        SlcOperand flag;         // varying guard; may be null
        AssignIfValue state;     // the value of the flag at active points
        SlcOperand uniformFlag;  // true when some point is active; may be null
    };

    /// A varying loop, or any loop of a list that runs without a grid, which has no flags.
    struct Loop {
        SlcOperand flag;  // points still in the loop
        SlcOperand cond;  // points active in this round
        SlcLabel breakLabel;
        SlcLabel continueLabel;
        bool isContinued;  // a `continue` of this loop has been met
    };

    /// A loop over lights; none stands inside another. There is one set of lights: where a
    /// function inside has run it for `P`, it must be run for the loop's points again.
    struct LightLoop {
        SlcOperand position;
        const SlcICode* evaluation = nullptr;         // in front of the loop; null outside of one
        bool movesP = false;                          // `P` is assigned inside
        std::vector<const SlcICode*> callsForP = {};  // last instruction of each
    };

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

    /// A function body that is being expanded.
    struct Body {
        SlcOperand flag;    // points that have not returned; null unless some return early
        SlcOperand result;  // their value; null unless some return early with one
        std::size_t loops;  // varying loops around the call
        SlcLabel end;       // null unless some return early
        SlcProcCallExprNode* call;
        bool ended = false;  // at a `return` that all points reach; its value is on the stack
    };

    /// An operand on the value stack.
    struct Value {
        SlcOperand operand;
        std::size_t mark;  // length of the list when it was pushed
    };

    /// A temporary that stands for an array element whose index varies.
    struct ElementCopy {
        SlcOperand copy;
        SlcOperand array;
        SlcOperand index;
        std::size_t mark;  // length of the list when the index was read
    };

    /// Code that takes a copy of a value in time, with its place in the list as it is.
    struct LateCopy {
        std::size_t mark;
        std::vector<SlcPtr<SlcICode>> codes;
    };

    /// What an assignment writes to.
    struct Target {
        SlcOperand variable;  // or a reference to an element
        SlcOperand array;     // set instead for an element with a varying index, which is then
                              // the last value on the stack
    };

    /// A call of a built-in that is being lowered.
    struct BuiltInCall {
        SlcProcCallExprNode* node;
        std::deque<SlcOperand> args;
        std::vector<SlcOperand> outputs;  // arguments that the function writes
    };
    using SpecialLowering = SlcOperand (SlcGenInterCode::*)(BuiltInCall&);
    /// Whether the count of arguments is written with them.
    enum class ArgumentList { Fixed, Counted };

    /// A varying array in the form that a shadeop takes.
    struct ConvertedArray {
        SlcOperand original;
        SlcOperand contiguous;
    };

    /// The geometry of a light statement, as far as the statement gives it.
    struct Cone {
        SlcOperand position;
        SlcOperand axis;
        SlcOperand angle;
    };

    // Instructions and operands.
    /// The one way for instructions into the list: it also notes what they write.
    void AddICode(SlcPtr<SlcICode> code);
    /// A new list, with no temporary or flag of another one in reach.
    void StartList();
    [[nodiscard]] SlcOperand MakeTempVar(SlcTypeNode* type, SlcDetailNode* detail);
    [[nodiscard]] SlcOperand GenTempVar(SlcTypeNode* type, SlcDetailNode* detail);
    void ReleaseTempVars();
    /// The operand that is to hold the value of `expr`: the assignment's target if that fits, or
    /// a temporary. For one instruction that reads its operands before it writes: a value that is
    /// built up in several steps takes a temporary, since the target may be read meanwhile.
    [[nodiscard]] SlcOperand GetResultVar(SlcExprNode* expr, SlcTypeNode* type,
                                          SlcDetailNode* detail);
    [[nodiscard]] SlcLabel GenLabel();
    /// For a declared local; no other one of the list has it.
    [[nodiscard]] std::string LocalName(const std::string& sourceName);
    void GenLineNumberInfo(SlcSyntaxNode* node);
    /// The type and the detail that the semantic passes gave to `expr`. In a list that runs once
    /// per shader instance, without a grid, every detail is uniform.
    [[nodiscard]] static SlcTypeNode* TypeOf(const SlcExprNode* expr);
    [[nodiscard]] SlcDetailNode* DetailOf(const SlcExprNode* expr) const;
    [[nodiscard]] SlcDetailNode* DetailHere(SlcDetailNode* detail) const;
    void Push(SlcOperand value);
    /// The last value as it was when it was pushed: if code since then has written the variable
    /// that held it, as in `x + (x = 2)`, this gives a copy made in time.
    [[nodiscard]] SlcOperand Pop();
    /// The last value for one who writes to it, such as an output argument.
    [[nodiscard]] SlcOperand PopReference();
    /// Walks an expression and pops its value.
    [[nodiscard]] SlcOperand Evaluate(SlcSyntaxNode* expr);
    [[nodiscard]] bool WrittenSince(const SlcOperand& operand, std::size_t mark) const;
    [[nodiscard]] SlcOperand CopyAt(const SlcOperand& operand, std::size_t mark);
    void InsertLateCopies();
    /// No value is waiting any more: marks may become stale.
    void ForgetWrites();
    /// `value` if it is of this type, else a temporary that it has been assigned to.
    [[nodiscard]] SlcOperand Converted(const SlcOperand& value, SlcTypeNode* type);
    /// A triple is lowered as a point; beside a color it was meant as one, and no instruction
    /// takes the two together.
    void MatchColors(SlcOperand& left, SlcOperand& right);
    [[nodiscard]] SlcOperand OperandOf(const SlcPtr<SlcVarSymbolEntry>& entry);

    // Array elements. One reference cannot serve all points if the index varies: it stands in
    // one block with its access. A read copies the element into a temporary; who writes to such
    // a copy, as a call with an output argument does, writes it back afterwards.
    [[nodiscard]] SlcOperand GenElementRef(const SlcOperand& array, const SlcOperand& index,
                                           SlcDetailNode* detail);
    /// The reference alone, before an instruction lets it refer to an element.
    [[nodiscard]] SlcOperand MakeElementRef(const SlcOperand& array, const SlcDetailNode* detail);
    void GenIndexCheck(SlcSyntaxNode* node, SlcIdentNode* ident, const SlcOperand& array,
                       const SlcOperand& index);
    void GenElementRead(SlcArrayRefExprNode* node, const SlcOperand& array,
                        const SlcOperand& index);
    void RememberCopy(const SlcOperand& copy, const SlcOperand& array, const SlcOperand& index);
    /// After each call, for each output argument: does nothing unless `argument` is such a copy.
    void WriteBackElement(const SlcOperand& argument);
    void GenArrayInit(const SlcOperand& array, SlcDetailNode* detail, std::size_t valuesBefore);
    [[nodiscard]] SlcOperand GenArrayValue(const std::deque<SlcOperand>& elements,
                                           SlcTypeNode* type);
    void GenArrayCopy(const SlcOperand& array, const SlcOperand& source);
    /// One value for all elements.
    void GenArrayFill(const SlcOperand& array, const SlcOperand& value);
    /// `value` where a call wants `type`. Of arrays it is a report if they differ in length, which
    /// only an expansion tells for a formal of any length; `what` names the value in it.
    [[nodiscard]] SlcOperand ConvertedForCall(SlcProcCallExprNode* call, const SlcOperand& value,
                                              SlcTypeNode* type, const std::string& what);

    // Arithmetic and constructors.
    void GenBinOp(SlcBinOpExprNode* node);
    [[nodiscard]] std::deque<SlcOperand> EvaluateMatrix(SlcMatrixExprNode* node);
    [[nodiscard]] static SlcDetailNode* UniformIfAll(const std::deque<SlcOperand>& operands);

    // Assignments.
    [[nodiscard]] Target GenTarget(SlcAssignExprNode* node);
    [[nodiscard]] SlcOperand EvaluateInto(SlcExprNode* expr, const SlcOperand& target);
    /// By the form for the whole grid where that may stand.
    void GenAssignment(const SlcOperand& lhs, const SlcOperand& rhs);
    /// In a block. A uniform variable too is assigned in a varying one if the value varies, as
    /// that of a function may that did not know its arguments to be uniform.
    void GenPlainAssignment(const SlcOperand& lhs, const SlcOperand& rhs);
    /// `value` if it is uniform, else a uniform temporary that it has been assigned to. For who
    /// updates a uniform variable by it: in a block for each point that would happen once a point.
    [[nodiscard]] SlcOperand UniformValue(const SlcOperand& value);
    void GenArithAssignment(SlcAssignExprNode* node, const SlcOperand& lhs, SlcOperand rhs);
    void GenElementAssignment(SlcAssignExprNode* node, const SlcOperand& array, bool valueUsed);
    [[nodiscard]] SlcPtr<SlcICode> MakeAssignICode(SlcAssignExprNode* node, const SlcOperand& dest,
                                                   const SlcOperand& left, const SlcOperand& right);

    // Casts.
    void GenTripleCast(SlcCastExprNode* node, SlcPointExprNode* triple);
    void GenMatrixCast(SlcCastExprNode* node, SlcMatrixExprNode* matrix);
    void GenValueCast(SlcCastExprNode* node);
    void GenCastToColor(SlcCastExprNode* node, const SlcOperand& value);
    void GenCastToPoint(SlcCastExprNode* node, const SlcOperand& value);
    void GenCastToMatrix(SlcCastExprNode* node, const SlcOperand& value);
    void GenConcatSpace(SlcCastExprNode* node, const SlcOperand& source);
    /// result = what `constructor` makes in `source`, meant in the cast's space.
    void GenFromSpace(SlcCastExprNode* node, const SlcOperand& result, const SlcOperand& source,
                      SlcTypeNode* type, SlcPtr<SlcICode> constructor);
    [[nodiscard]] SlcOperand SimdCondition() const;

    // Blocks and conditions.
    /// Opens what code of this detail must stand in; closed by `AddEndBlock` of the same detail.
    void AddBeginBlock(const SlcDetailNode* detail);
    void AddEndBlock(const SlcDetailNode* detail);
    /// One instruction in a block of its own.
    void AddInBlock(const SlcDetailNode* detail, SlcPtr<SlcICode> code);
    /// With recycling, a flag that has been released before; its old value is still in it.
    [[nodiscard]] SlcOperand GetBoolFlag(SlcDetailNode* detail);
    /// The next flag of its detail may be this one.
    void ReleaseBoolFlag(const SlcOperand& flag);
    /// Of the varying loop `level` loops up; 1 is the innermost.
    [[nodiscard]] SlcLabel GetBreakLabel(std::size_t level) const;
    [[nodiscard]] SlcLabel GetContinueLabel(std::size_t level) const;
    void InsideParallelCond() { ++m_parallelCondDepth; }
    void OutsideParallelCond() { --m_parallelCondDepth; }
    /// The code stands under a varying condition.
    [[nodiscard]] bool IsInParallelIf() const { return m_parallelCondDepth > 0; }
    [[nodiscard]] bool IsInsideBoolExpr() const { return m_boolExprDepth > 0; }
    /// Under a varying condition the innermost varying flag, which is true at the active points;
    /// else null. What limits a SIMD form.
    [[nodiscard]] SlcOperand InnermostFlag() const;
    /// The uniform flag of the innermost level; null if the level has none.
    [[nodiscard]] SlcOperand InnermostUniformFlag() const;
    /// Under a varying condition: jumps to `label` if no point is active.
    void GenSkipWithoutPoints(const SlcLabel& label);
    void BeginParallelIfTrue(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void BeginParallelIfFalse(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void EndParallelIfTrue() { m_conditions.pop_back(); }
    void EndParallelIfFalse() { m_conditions.pop_back(); }
    void BeginParallelIfNotCurrentCond();
    void EndParallelIfNotCurrentCond() { m_conditions.pop_back(); }
    void BeginAssignIfTrue(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void BeginAssignIfFalse(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void EndAssignIfTrue();
    void EndAssignIfFalse();
    void BeginParallelLoop(const SlcOperand& flag, const SlcOperand& cond,
                           const SlcOperand& uniformFlag, const SlcLabel& breakLabel,
                           const SlcLabel& continueLabel);
    void EndParallelLoop();
    /// Around a body that runs at the points where the varying `flag` is true.
    void EnterCondition(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void LeaveCondition();
    /// flag = value at the points that the innermost level leaves out.
    void AssignOutsideCondition(const SlcOperand& flag, const SlcOperand& value);
    /// For a varying flag that has been set under the condition around it: makes it false outside
    /// that condition, so that what it guards need not test both.
    void ClearOutsideCondition(const SlcOperand& flag);

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
    void GenComparison(SlcCompOpNode* node);
    [[nodiscard]] SlcOperand FlagFor(const SlcOperand& target, SlcDetailNode* detail);
    /// A varying copy of the uniform `flag`, which is released.
    [[nodiscard]] SlcOperand CopiedFlag(const SlcOperand& flag, const SlcOperand& copy);
    // `flag` holds the value of the left side; they give that of the whole.
    [[nodiscard]] SlcOperand GenLogAndCode(SlcLogOpNode* node, const SlcOperand& flag,
                                           bool inverted);
    [[nodiscard]] SlcOperand GenLogOrCode(SlcLogOpNode* node, const SlcOperand& flag,
                                          bool inverted);
    [[nodiscard]] SlcOperand GenUniformLogOp(SlcLogOpNode* node, const SlcOperand& flag,
                                             bool inverted, AssignIfValue state);
    [[nodiscard]] SlcOperand GenUniformLogOpWithJump(SlcLogOpNode* node, const SlcOperand& flag,
                                                     bool inverted, AssignIfValue state);
    [[nodiscard]] SlcOperand GenCondition(SlcIfThenStmtNode* node);
    void GenBranch(SlcStmtNode* branch, const SlcOperand& flag, const SlcOperand& uniformFlag);
    void GenUniformCondExpr(SlcCondExprNode* node, const SlcOperand& flag);
    void GenVaryingCondExpr(SlcCondExprNode* node, const SlcOperand& flag);
    /// Computes the relation of a loop and leaves the loop, by a jump to its end, once no point
    /// remains.
    void GenerateLoopCondition(LoopTest& test);
    [[nodiscard]] LoopTest BeginLoop(SlcLoopStmtNode* node, SlcRelationNode* relation);
    void EndLoop(LoopTest& test);
    void GenUniformLoopBody(SlcLoopStmtNode* node, const LoopTest& test, const SlcLabel& next);
    [[nodiscard]] bool GenParallelLoopBody(SlcLoopStmtNode* node, const LoopTest& test,
                                           const SlcLabel& continueLabel);
    void GenUnusedValue(SlcExprNode* expr);
    /// flag = true at the points that are active here, false at the others.
    void GenAllActive(const SlcOperand& flag);
    void AddLoopFlags(std::deque<SlcOperand>& flags, std::size_t count) const;
    /// Adds `leave`, a `break` or `continue` with these `flags`, to which those of all levels up
    /// to that of `outermost` come.
    void GenLeave(const SlcPtr<SlcICode>& leave, std::deque<SlcOperand>& flags,
                  const SlcOperand& outermost);

    // Bodies of functions.
    /// Lowers the body that `call` stands for, whose formals have their operands by now, and
    /// pushes the value unless the call is void. A body that returns from within a condition or
    /// a loop is a varying loop of one trip, which the `return` leaves as a `break` does.
    /// The caller has put the temporaries in use out of reach.
    void GenFuncBody(SlcProcCallExprNode* call, SlcStmtNode* body);
    void GenPlainBody(SlcProcCallExprNode* call, SlcStmtNode* body);
    /// The type of what the call gives, of an array with a length: one that is unknown is reported.
    [[nodiscard]] SlcTypeNode* TypeOfResult(SlcProcCallExprNode* call);
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
    /// Pops the arguments, each as its formal wants it; gives them in source order.
    [[nodiscard]] std::deque<SlcOperand>
    ReadAndCastParameters(SlcProcCallExprNode* call, const std::vector<SlcCallFormal>& formals);
    /// Behind the call, for each argument that it has written.
    void FinishOutputArgument(const SlcOperand& argument);
    void GenUserCall(SlcProcCallExprNode* call);
    /// Reports the first function that would make the code too large; false from then on.
    [[nodiscard]] bool MayExpand(SlcProcCallExprNode* call, const SlcFuncInfo& info);
    [[nodiscard]] std::vector<SlcOperand> BindFormals(SlcProcCallExprNode* call,
                                                      const SlcFuncInfo& info);
    /// Binds the formal to the last value on the stack, argument `position` of the call.
    void BindFormal(SlcProcCallExprNode* call, SlcVarSymbolEntry& formal, std::size_t position);
    [[nodiscard]] SlcOperand CopiedForFormal(const SlcVarSymbolEntry& formal,
                                             const SlcOperand& value);
    void GenShadeopCall(SlcProcCallExprNode* call);
    [[nodiscard]] std::vector<ConvertedArray> ConvertArraysForShadeop(std::deque<SlcOperand>& args);
    [[nodiscard]] SlcOperand ShadeopResult(SlcProcCallExprNode* call,
                                           const std::deque<SlcOperand>& args,
                                           SlcDetailNode* detail);

    // Built-ins. Each `CreateBuiltIn...` adds the call and gives the result.
    void GenBuiltInCall(SlcProcCallExprNode* node);
    /// Of the value that the function gives, before the context promotes it.
    [[nodiscard]] static SlcTypeNode* TypeOfCall(const SlcProcCallExprNode* call);
    [[nodiscard]] SlcDetailNode* DetailOfCall(const SlcProcCallExprNode* call,
                                              const std::deque<SlcOperand>& args) const;
    /// As `GetResultVar`, but never a variable that the function also writes as an argument.
    [[nodiscard]] SlcOperand GetCallResult(const BuiltInCall& call, SlcTypeNode* type,
                                           SlcDetailNode* detail);
    /// The array of a reference to an element; any other operand is its own variable.
    [[nodiscard]] SlcOperand VariableOf(const SlcOperand& operand) const;
    [[nodiscard]] SlcOperand GenPlainCall(const BuiltInCall& call, ArgumentList list);
    void AddPlainCall(const BuiltInCall& call, const SlcOperand& result, ArgumentList list,
                      SlcDetailNode* detail);
    void AddGridCall(const BuiltInCall& call, const SlcOperand& result,
                     const SlcOperand& condition);
    void AddGridOrPlainCall(const BuiltInCall& call, const SlcOperand& result);
    /// The condition of a form for the whole grid that stands here, null if it runs for all
    /// points; nothing where only the plain form will do.
    [[nodiscard]] std::optional<SlcOperand> GridForm() const;
    /// Puts the arguments of a variable tail into their fixed places, with defaults for those
    /// that the call leaves out.
    void MakeConstantNbArgs(BuiltInCall& call, const std::vector<SlcCallFormal>& formals);
    [[nodiscard]] SlcOperand GetDefaultValue(const SlcFuncVarArgSingle& single);
    /// Null if nothing has been added and a plain call will do.
    [[nodiscard]] SlcOperand CreateSIMDFuncCall(BuiltInCall& call);
    [[nodiscard]] static SpecialLowering FindSpecialLowering(const BuiltInCall& call);
    [[nodiscard]] SlcOperand CreateGridCall(BuiltInCall& call);
    [[nodiscard]] bool SuitGridCall(const BuiltInCall& call,
                                    std::vector<std::size_t>& widened) const;
    void WidenArguments(BuiltInCall& call, const std::vector<std::size_t>& places);
    /// A varying temporary with this value, assigned in the block that is open.
    [[nodiscard]] SlcOperand WidenHere(const SlcOperand& value);
    /// `value` if it varies, else such a temporary, assigned in a block of its own.
    [[nodiscard]] SlcOperand Widened(const SlcOperand& value);
    [[nodiscard]] SlcOperand CreateBuiltInDu(BuiltInCall& call);
    [[nodiscard]] SlcOperand CreateBuiltInDv(BuiltInCall& call);
    [[nodiscard]] SlcOperand CreateBuiltInDeriv(BuiltInCall& call);
    [[nodiscard]] SlcOperand CreateBuiltInArea(BuiltInCall& call);
    [[nodiscard]] SlcOperand CreateBuiltInCalculateNormal(BuiltInCall& call);
    void WarnOfZero(const BuiltInCall& call, const char* text);
    [[nodiscard]] SlcOperand GenZero(const BuiltInCall& call);
    /// The type of a value; that of the element for a reference.
    [[nodiscard]] static SlcTypeNode* ValueType(const SlcOperand& operand);
    [[nodiscard]] SlcOperand PredefinedOperand(const SlcPtr<SlcVarSymbolEntry>& entry,
                                               const BuiltInCall& call, const char* function);
    [[nodiscard]] SlcOperand GenDerivative(const BuiltInCall& call, SlcTypeNode* typeInCondition,
                                           const char* warning);
    [[nodiscard]] SlcOperand CreateBuiltInSpline(BuiltInCall& call);
    [[nodiscard]] SlcOperand CreateBuiltInFilterstep(BuiltInCall& call);
    [[nodiscard]] SlcOperand GenFilterstepEnd(const SlcOperand& start);
    [[nodiscard]] SlcOperand CreateBuiltInMessageFunction(BuiltInCall& call);
    [[nodiscard]] static SlcDetailNode* DetailOfQuestion(const BuiltInCall& call);
    [[nodiscard]] SlcOperand CreateBuiltInShaderName(BuiltInCall& call);
    [[nodiscard]] SlcOperand GenSameSpace(SlcProcCallExprNode* call, SlcTypeNode* type,
                                          const SlcOperand& value);

    // Lights.
    void Case(SlcSolarStmtNode* node) override;
    void Case(SlcIlluminateStmtNode* node) override;
    void Case(SlcIlluminanceStmtNode* node) override;
    /// Parts that are null are left out.
    [[nodiscard]] Cone EvaluateCone(SlcExprNode* position, SlcExprNode* axis, SlcExprNode* angle);
    void GenLitBody(SlcLoopStmtNode* node, const SlcOperand& flag, const SlcOperand& uniformFlag);
    void GenConeLoop(SlcIlluminanceStmtNode* node, const Cone& cone, const SlcPtr<SlcICode>& begin);
    /// Runs the light shaders for the points at `position`, in front of a loop over them.
    void EnterLightLoop(const SlcOperand& position);
    /// Behind the loop and its `end`.
    void LeaveLightLoop(const SlcLabel& end);
    void AddEvalLightForP();
    /// Behind a function that looks at the lights for `P`.
    void NoteCallForP();
    /// Lights evaluated for `P` are stale once it has been assigned.
    void ResetEvalLightIfPAssigned(const SlcOperand& lhs);
    /// Who leaves the lights of another point behind has those for `P` evaluated anew, in a shader
    /// that looks at them; and around it, a loop's lights come back.
    void InsertLightEvaluations();

    // Textures.
    void Case(SlcTextureExprNode* node) override;
    void GenTextureAccess(SlcTextureExprNode* node, const std::deque<SlcOperand>& args);
    void GenPointAccess(SlcTextureExprNode* node, const std::deque<SlcOperand>& args);
    [[nodiscard]] std::deque<SlcOperand> TextureCorners(SlcTextureExprNode* node,
                                                        const std::deque<SlcOperand>& args,
                                                        std::size_t positional);
    /// The corners of the patch that a point covers.
    [[nodiscard]] std::deque<SlcOperand> FootprintOf(const SlcOperand& s, const SlcOperand& t);
    [[nodiscard]] std::deque<SlcOperand> FootprintOf(const SlcOperand& point);
    static void AppendParameters(std::deque<SlcOperand>& call,
                                 const SlcTextureParameters& parameters,
                                 std::span<const std::string_view> keys);
    void AppendSource(SlcTextureExprNode* node, std::deque<SlcOperand>& call,
                      const std::deque<SlcOperand>& points);
    void GenAccessCall(SlcTextureExprNode* node, const std::string& name, const char* suffix,
                       std::deque<SlcOperand> args, std::size_t corners);

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

    /// A transform between two spaces; null unless both are constants.
    [[nodiscard]] virtual SlcOperand InlineTransform(SlcProcCallExprNode* call,
                                                     const std::string& name,
                                                     const SlcOperand& from, const SlcOperand& to,
                                                     const SlcOperand& value);

    static int sm_noTemp;       // temporaries made in this run
    static int sm_noGotoLabel;  // labels made in this run

    SlcPtr<SlcSemanticError> m_errors;
    SlcPtr<SlcListICode> m_list;  // where instructions and locals go
    std::deque<Value> m_values;
    std::deque<ElementCopy> m_elementCopies;  // of the statement being lowered
    std::vector<LateCopy> m_lateCopies;       // not yet in the list, while values are waiting
    // By operand, the place in the list behind its last write while values are waiting.
    std::unordered_map<const SlcLexType*, std::size_t> m_lastWrites;
    std::unordered_map<const SlcLexType*, SlcOperand> m_arrayOfRef;  // of element references
    bool m_valueUnused = false;  // the assignment about to be walked is a statement
    int m_blockCounter = 0;      // suffix of local variable names
    std::unordered_set<std::string> m_localNames;  // of the list
    SlcOptionsControl& m_options;
    SlcShaderTypeNode* m_shaderType = nullptr;
    bool m_CiAssigned = false;
    bool m_OiAssigned = false;
    bool m_withoutGrid = false;  // the list runs once per shader instance
    int m_parallelCondDepth = 0;
    int m_boolExprDepth = 0;
    std::vector<Condition> m_conditions;
    std::vector<SlcLabel> m_blockEndLabels;  // of open guards
    std::vector<Loop> m_loops;
    std::vector<Body> m_bodies;  // the innermost is the last
    SlcLabel m_currentParallelLabel;
    bool m_flagCopyNeeded = false;  // a relation must give a varying flag
    bool m_noTempRelease = false;
    std::deque<SlcOperand> m_freeVaryingFlags;
    std::deque<SlcOperand> m_freeUniformFlags;
    SlcTempPools m_temps;
    int m_expansionLevel = 0;              // functions being expanded
    std::size_t m_expandedOperations = 0;  // of all functions expanded so far
    bool m_expansionRefused = false;       // the code would become too large
    bool m_evaluatesLightsForP = false;
    LightLoop m_lightLoop;  // being lowered
    // By instruction: the lights left behind it are not those for `P`; points whose lights come
    // back there, if any.
    std::unordered_map<const SlcICode*, SlcOperand> m_otherLightsBehind;
    // By evaluation in front of a loop: keeps its points.
    std::unordered_map<const SlcICode*, SlcPtr<SlcICode>> m_copiesOfPoints;
};

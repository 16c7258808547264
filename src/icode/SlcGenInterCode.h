#pragma once

#include <deque>
#include <string>
#include <vector>

#include "frontend/SlcNodes.h"
#include "icode/SlcBoolExprResult.h"
#include "icode/SlcICodes.h"
#include "icode/SlcListICode.h"
#include "icode/SlcTempPools.h"
#include "support/SlcOptionsControl.h"

class SlcFuncSymbolEntry;
class SlcFuncVarArgSingle;
class SlcSemanticError;

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

    /// A varying loop.
    struct Loop {
        SlcOperand flag;  // points still in the loop
        SlcOperand cond;  // points active in this round
        SlcLabel breakLabel;
        SlcLabel continueLabel;
    };

    // Instructions and operands.
    void AddICode(SlcPtr<SlcICode> code);
    [[nodiscard]] SlcOperand GenTempVar(SlcTypeNode* type, SlcDetailNode* detail);
    void ReleaseTempVars();
    /// The operand that is to hold the value of `expr`: the assignment's target if that fits, or
    /// a temporary.
    [[nodiscard]] SlcOperand GetResultVar(SlcExprNode* expr, SlcTypeNode* type,
                                          SlcDetailNode* detail);
    [[nodiscard]] SlcLabel GenLabel();
    void GenLineNumberInfo(SlcSyntaxNode* node);
    void Push(SlcOperand value) { m_values.push_back(std::move(value)); }
    [[nodiscard]] SlcOperand Pop();
    /// Walks an expression and pops its value.
    [[nodiscard]] SlcOperand Evaluate(SlcSyntaxNode* expr);

    // Blocks and conditions.
    /// Opens what code of this detail must stand in; closed by `AddEndBlock` of the same detail.
    void AddBeginBlock(const SlcDetailNode* detail);
    void AddEndBlock(const SlcDetailNode* detail);
    /// One instruction in a block of its own.
    void AddInBlock(const SlcDetailNode* detail, SlcPtr<SlcICode> code);
    [[nodiscard]] SlcOperand GetBoolFlag(SlcDetailNode* detail);
    void ReleaseBoolFlag(const SlcOperand& flag);
    [[nodiscard]] SlcLabel GetBreakLabel(int level) const;
    [[nodiscard]] SlcLabel GetContinueLabel(int level) const;
    void InsideParallelCond() { ++m_parallelCondDepth; }
    void OutsideParallelCond() { --m_parallelCondDepth; }
    /// The code stands under a varying condition.
    [[nodiscard]] bool IsInParallelIf() const { return m_parallelCondDepth > 0; }
    [[nodiscard]] bool IsInsideBoolExpr() const { return m_boolExprDepth > 0; }
    /// The innermost flag under a varying condition, else null: what limits a SIMD form.
    [[nodiscard]] SlcOperand InnermostFlag() const;
    void BeginParallelIfTrue(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void BeginParallelIfFalse(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void EndParallelIfTrue() { m_conditions.pop_back(); }
    void EndParallelIfFalse() { m_conditions.pop_back(); }
    void BeginParallelIfNotCurrentCond(SlcSyntaxNode* node);
    void EndParallelIfNotCurrentCond(SlcSyntaxNode* node);
    void BeginAssignIfTrue(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void BeginAssignIfFalse(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void EndAssignIfTrue();
    void EndAssignIfFalse();
    void BeginParallelLoop(const SlcOperand& flag, const SlcOperand& cond,
                           const SlcOperand& uniformFlag, const SlcLabel& breakLabel,
                           const SlcLabel& continueLabel);
    void EndParallelLoop();

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
    void Case(SlcIdentLValueNode* node) override;
    void Case(SlcBinOpExprNode* node) override;
    void Case(SlcUMinusExprNode* node) override;
    void Case(SlcPointExprNode* node) override;
    void Case(SlcMatrixExprNode* node) override;
    void Case(SlcArrayExprNode* node) override;
    void Case(SlcArrayRefExprNode* node) override;
    void Case(SlcArrayRefLValueNode* node) override;
    void Case(SlcEqAssignExprNode* node) override;
    void Case(SlcAssignExprNode* node) override;
    void Case(SlcCastExprNode* node) override;

    // Conditions and loops.
    void Case(SlcNotRelNode* node) override;
    void Case(SlcLogAndNode* node) override;
    void Case(SlcLogOrNode* node) override;
    void Case(SlcCompOpNode* node) override;
    void Case(SlcIfThenStmtNode* node) override;
    void Case(SlcIfThenElseStmtNode* node) override;
    void Case(SlcCondExprNode* node) override;
    void Case(SlcWhileStmtNode* node) override;
    void Case(SlcForStmtNode* node) override;
    void Case(SlcBreakStmtNode* node) override;
    void Case(SlcContinueStmtNode* node) override;
    void GenLogAndCode(SlcRelationNode* left, SlcRelationNode* right, const SlcOperand& target,
                       bool inverted);
    void GenLogOrCode(SlcRelationNode* left, SlcRelationNode* right, const SlcOperand& target,
                      bool inverted);

    // Calls, lights and textures.
    void Case(SlcProcCallExprNode* node) override;
    void Case(SlcSolarStmtNode* node) override;
    void Case(SlcIlluminateStmtNode* node) override;
    void Case(SlcIlluminanceStmtNode* node) override;
    void Case(SlcTextureExprNode* node) override;
    /// Lights evaluated for `P` are stale once it has been assigned.
    void ResetEvalLightIfPAssigned(const SlcOperand& lhs);

    void Default(SlcSyntaxNode* node) override;

    static int sm_noTemp;       // temporaries made in this run
    static int sm_noGotoLabel;  // labels made in this run

    SlcPtr<SlcSemanticError> m_errors;
    SlcPtr<SlcListICode> m_list;  // where instructions and locals go
    std::deque<SlcOperand> m_values;
    int m_blockCounter = 0;  // suffix of local variable names
    SlcOptionsControl& m_options;
    SlcShaderTypeNode* m_shaderType = nullptr;
    bool m_CiAssigned = false;
    bool m_OiAssigned = false;
    bool m_inParameterInit = false;
    int m_parallelCondDepth = 0;
    int m_boolExprDepth = 0;
    std::vector<Condition> m_conditions;
    std::vector<SlcLabel> m_blockEndLabels;  // of open guards
    std::vector<Loop> m_loops;
    SlcLabel m_currentParallelLabel;
    bool m_flagCopyNeeded = false;  // a relation must give a varying flag
    bool m_noTempRelease = false;
    std::deque<SlcOperand> m_freeVaryingFlags;
    std::deque<SlcOperand> m_freeUniformFlags;
    SlcTempPools m_temps;
};

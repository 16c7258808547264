#pragma once

#include <deque>
#include <vector>

#include "icode/SlcGridForm.h"
#include "lowering/SlcListBuilder.h"

/// The conditions around the code being lowered, and the blocks that guard it by the innermost of
/// them.
///
/// Code under a varying condition is guarded by the innermost flag alone: a flag is false wherever
/// the flags around it are, for which who makes one has to care (`ClearOutsideCondition`).
class SlcConditions {
public:
    /// What a flag must be for a point to be active.
    enum class AssignIfValue { IfTrue = 0, IfFalse = 1 };

    /// One level of conditions.
    struct Condition {
        SlcOperand flag;         // varying guard; may be null
        AssignIfValue state;     // the value of the flag at active points
        SlcOperand uniformFlag;  // true when some point is active; may be null
    };

    /// Both outlive it.
    SlcConditions(SlcListBuilder& list, const SlcOptionsControl& options)
        : m_list(list),
          m_options(options)
    {
    }

    /// With a new list: no flag of another one is in reach.
    void Start();

    // Blocks.
    /// Opens what code of this detail must stand in; closed by `AddEndBlock` of the same detail,
    /// under the same conditions. No varying block stands inside another.
    void AddBeginBlock(const SlcDetailNode* detail);
    void AddEndBlock(const SlcDetailNode* detail);
    /// One instruction in a block of its own.
    void AddInBlock(const SlcDetailNode* detail, const SlcPtr<SlcICode>& code);
    /// In a block. A uniform variable too is assigned in a varying one if the value varies, as
    /// that of a function may that did not know its arguments to be uniform.
    void GenPlainAssignment(const SlcOperand& lhs, const SlcOperand& rhs);
    /// Of a value that is computed from these, and of its block.
    [[nodiscard]] static SlcDetailNode* UniformIfAll(const std::deque<SlcOperand>& operands);

    // Flags.
    /// With recycling, a flag that has been released before; its old value is still in it.
    [[nodiscard]] SlcOperand GetBoolFlag(SlcDetailNode* detail);
    /// The next flag of its detail may be this one.
    void ReleaseBoolFlag(const SlcOperand& flag);
    /// flag = true at the points that are active here, false at the others.
    void GenAllActive(const SlcOperand& flag);
    /// flag = value at the points that the innermost level leaves out.
    void AssignOutsideCondition(const SlcOperand& flag, const SlcOperand& value);
    /// For a varying flag that has been set under the condition around it: makes it false outside
    /// that condition, so that what it guards need not test both.
    void ClearOutsideCondition(const SlcOperand& flag);

    // Levels.
    /// The innermost is the last.
    [[nodiscard]] const std::vector<Condition>& Levels() const { return m_conditions; }
    /// Opens a level: varying code from here on is guarded by `flag`, which is true, or false, at
    /// the active points, and uniform code by `uniformFlag`; null guards nothing. By itself a level
    /// does not count as a varying condition, which `InsideParallelCond` says. Levels end in the
    /// reverse order.
    void BeginParallelIfTrue(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void BeginParallelIfFalse(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void EndParallelIfTrue() { m_conditions.pop_back(); }
    void EndParallelIfFalse() { m_conditions.pop_back(); }
    /// For the points that the innermost level leaves out; there must be one.
    void BeginParallelIfNotCurrentCond();
    void EndParallelIfNotCurrentCond() { m_conditions.pop_back(); }
    /// Around the right side of a logical operator.
    void BeginAssignIfTrue(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void BeginAssignIfFalse(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void EndAssignIfTrue();
    void EndAssignIfFalse();
    /// Code from here on counts as standing under a varying condition, whatever the levels are.
    void InsideParallelCond() { ++m_parallelCondDepth; }
    void OutsideParallelCond() { --m_parallelCondDepth; }
    /// Around a body that runs at the points where the varying `flag` is true.
    void EnterCondition(const SlcOperand& flag, const SlcOperand& uniformFlag);
    /// Behind it; the level that `EnterCondition` opened must be the innermost.
    void LeaveCondition();

    // Questions about the place.
    /// The code stands under a varying condition.
    [[nodiscard]] bool IsInParallelIf() const { return m_parallelCondDepth > 0; }
    /// The code stands in the right side of a logical operator.
    [[nodiscard]] bool IsInsideBoolExpr() const { return m_boolExprDepth > 0; }
    /// Under a varying condition the innermost varying flag, which is true at the active points;
    /// else null.
    [[nodiscard]] SlcOperand InnermostFlag() const;
    /// The uniform flag of the innermost level; null if the level has none.
    [[nodiscard]] SlcOperand InnermostUniformFlag() const;
    /// The points that a form for the whole grid is limited to. Null for all points: under a flag
    /// that must be false, or one for the whole grid, such a form computes all of them, and its
    /// result has to be a temporary.
    [[nodiscard]] SlcOperand SimdCondition() const;
    /// The form in which an instruction may stand here that has one for the whole grid: plain
    /// where only that will do.
    [[nodiscard]] SlcGridForm GridForm() const;
    /// The form of an instruction that takes varying values over the whole grid only, and uniform
    /// ones only plain. Its result is a temporary or a target that such a form may write.
    [[nodiscard]] SlcGridForm FormFor(const SlcDetailNode* detail) const;
    /// Adds an instruction of that form: plain ones in a varying block.
    void AddInForm(const SlcGridForm& form, const SlcPtr<SlcICode>& code);
    /// Under a varying condition: jumps to `label` if no point is active.
    void GenSkipWithoutPoints(const SlcLabel& label);

private:
    SlcListBuilder& m_list;
    const SlcOptionsControl& m_options;
    std::vector<Condition> m_conditions;
    std::vector<SlcLabel> m_blockEndLabels;  // of open guards
    SlcLabel m_currentParallelLabel;         // of the varying block that is open
    int m_parallelCondDepth = 0;
    int m_boolExprDepth = 0;
    std::vector<SlcOperand> m_freeVaryingFlags;
    std::vector<SlcOperand> m_freeUniformFlags;
};

#pragma once

#include <deque>
#include <vector>

#include "icode/SlcGridForm.h"
#include "lowering/SlcListBuilder.h"

/// The conditions around the code being lowered, and the blocks that guard the code by the
/// innermost condition.
///
/// Code under a varying condition is guarded only by the flag of the innermost level. This works
/// because a varying flag is false wherever an enclosing condition does not hold; code that makes a
/// flag must ensure that (`ClearOutsideCondition`).
class SlcConditions {
public:
    /// The value of a flag at active points.
    enum class AssignIfValue { IfTrue = 0, IfFalse = 1 };

    /// One level of conditions.
    struct Condition {
        SlcOperand flag;         // guards varying code; uniform only in logical operators and in
                                 // lists that run without a grid
        AssignIfValue state;     // the value of the flag at active points
        SlcOperand uniformFlag;  // guards uniform code by the same value; may be null
    };

    /// Both must outlive this object.
    SlcConditions(SlcListBuilder& list, const SlcOptionsControl& options)
        : m_list(list),
          m_options(options)
    {
    }

    /// Call it for each new list: a list must not use the flags of another list.
    void Start();

    // Blocks.
    /// Opens the block that code of this detail needs: a parallel run if it is varying, and in both
    /// cases the guard of the innermost level, if that has a flag for this detail. `AddEndBlock`
    /// with the same detail closes it, under the same conditions. Varying blocks do not nest.
    void AddBeginBlock(const SlcDetailNode* detail);
    void AddEndBlock(const SlcDetailNode* detail);
    /// Adds one instruction in a separate block.
    void AddInBlock(const SlcDetailNode* detail, const SlcPtr<SlcICode>& code);
    /// Adds an assignment in a block, which is varying if one of the operands is. The value may
    /// vary even for a uniform variable: a function that was checked without knowing that its
    /// arguments are uniform may return a varying value.
    void GenPlainAssignment(const SlcOperand& lhs, const SlcOperand& rhs);
    /// Returns uniform if all `operands` are, otherwise varying: the detail of a value computed
    /// from them, and of its block.
    [[nodiscard]] static SlcDetailNode* UniformIfAll(const std::deque<SlcOperand>& operands);

    // Flags.
    /// Returns a flag, with the effective detail in this list. If the options recycle flags, it may
    /// be a released one that still holds its old value.
    [[nodiscard]] SlcOperand GetBoolFlag(SlcDetailNode* detail);
    /// If the options recycle flags, makes `flag` available to later calls of `GetBoolFlag`.
    void ReleaseBoolFlag(const SlcOperand& flag);
    /// Sets `flag` to true at the points that are active here, and to false at all others.
    void GenAllActive(const SlcOperand& flag);
    /// Sets `flag` to `value` at the points that are not active in the innermost level, which must
    /// exist.
    void AssignOutsideCondition(const SlcOperand& flag, const SlcOperand& value);
    /// Clears a varying flag that has just been set under the innermost condition, at all points
    /// outside that condition, so that guards need not test both flags. Does nothing for a uniform
    /// flag, outside varying conditions, under a uniform guard, or if `flag` is the guard itself.
    void ClearOutsideCondition(const SlcOperand& flag);

    // Levels.
    /// The innermost level is the last.
    [[nodiscard]] const std::vector<Condition>& Levels() const { return m_conditions; }
    /// Open a level: from here on, varying code is guarded by `flag`, which is true (for the second
    /// function, false) at the active points, and uniform code by `uniformFlag`, or not at all if
    /// that is null. A level alone does not count as a varying condition: call `InsideParallelCond`
    /// for that. Levels end in reverse order.
    void BeginParallelIfTrue(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void BeginParallelIfFalse(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void EndParallelIfTrue() { m_conditions.pop_back(); }
    void EndParallelIfFalse() { m_conditions.pop_back(); }
    /// Opens a level for the points that are not active in the innermost level, which must exist.
    void BeginParallelIfNotCurrentCond();
    void EndParallelIfNotCurrentCond() { m_conditions.pop_back(); }
    /// Open and close the level of the right side of a `||` with a varying left side, or of a
    /// logical operator with a uniform left side, unless a jump skips the right side. For a `&&`
    /// with a varying left side, `EnterCondition` opens the level.
    void BeginAssignIfTrue(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void BeginAssignIfFalse(const SlcOperand& flag, const SlcOperand& uniformFlag);
    void EndAssignIfTrue();
    void EndAssignIfFalse();
    /// From here on, code counts as being under a varying condition, whatever the levels are.
    void InsideParallelCond() { ++m_parallelCondDepth; }
    void OutsideParallelCond() { --m_parallelCondDepth; }
    /// Begins code that runs where `flag` is true: opens a level that counts as a varying
    /// condition.
    void EnterCondition(const SlcOperand& flag, const SlcOperand& uniformFlag);
    /// Ends this code; the level that `EnterCondition` opened must be the innermost.
    void LeaveCondition();

    // Queries about the current place.
    /// True under a varying condition.
    [[nodiscard]] bool IsInParallelIf() const { return m_parallelCondDepth > 0; }
    /// True inside a level that `BeginAssignIfTrue` or `BeginAssignIfFalse` opened.
    [[nodiscard]] bool IsInsideBoolExpr() const { return m_boolExprDepth > 0; }
    /// Under a varying condition, returns the innermost varying flag, which is true at the active
    /// points. Null elsewhere, or if all flags are uniform.
    [[nodiscard]] SlcOperand InnermostFlag() const;
    /// Under a varying condition, returns the uniform flag of the innermost level, which may be
    /// null; otherwise null.
    [[nodiscard]] SlcOperand InnermostUniformFlag() const;
    /// Returns the condition for an instruction in whole-grid form; null for all points. Under a
    /// varying condition it is null if the innermost flag is uniform, or false at the active
    /// points. Then the instruction also computes inactive points, so its result must be a
    /// temporary.
    [[nodiscard]] SlcOperand SimdCondition() const;
    /// Returns the form to use here for an instruction that has a whole-grid form: plain if the
    /// whole-grid form is not allowed here.
    [[nodiscard]] SlcGridForm GridForm() const;
    /// Returns the form of an instruction that is lowered in whole-grid form for varying values and
    /// in plain form for uniform ones. The result of the instruction must be a temporary or a
    /// target that a whole-grid form may write.
    [[nodiscard]] SlcGridForm FormFor(const SlcDetailNode* detail) const;
    /// Adds an instruction of the given form; a plain one goes into a varying block.
    void AddInForm(const SlcGridForm& form, const SlcPtr<SlcICode>& code);
    /// Emits a jump to `label` that is taken if no point is active; nothing outside all levels, or
    /// if the innermost level has no uniform flag.
    void GenSkipWithoutPoints(const SlcLabel& label);

private:
    SlcListBuilder& m_list;
    const SlcOptionsControl& m_options;
    std::vector<Condition> m_conditions;
    std::vector<SlcLabel> m_blockEndLabels;  // of open blocks inside a level
    SlcLabel m_currentParallelLabel;         // of the open varying block
    int m_parallelCondDepth = 0;
    int m_boolExprDepth = 0;
    std::vector<SlcOperand> m_freeVaryingFlags;
    std::vector<SlcOperand> m_freeUniformFlags;
};

#pragma once

#include <deque>
#include <string>
#include <unordered_set>

#include "icode/SlcBlockICode.h"
#include "icode/SlcListICode.h"
#include "lowering/SlcTempPools.h"
#include "support/SlcOptionsControl.h"

class SlcExprNode;

/// Builds a list: appends instructions, and makes the temporaries, the labels and the names of
/// locals that they use.
///
/// Temporaries and labels are numbered across all lists of a compilation, so that no two lists
/// share one.
class SlcListBuilder {
public:
    /// Whether a list runs for each shaded grid or, without a grid, once per instance of the
    /// shader. Without a grid every detail is uniform.
    enum class Runs { OnGrid, OncePerInstance };

    /// There is no list until `Start`. `options` must outlive this object.
    explicit SlcListBuilder(const SlcOptionsControl& options) : m_options(options) {}

    /// Begins a new list. Temporaries of other lists are not reused.
    void Start(Runs runs);
    [[nodiscard]] const SlcPtr<SlcListICode>& List() const { return m_list; }
    [[nodiscard]] std::deque<SlcPtr<SlcICode>>& Codes() const { return m_list->m_icodes; }
    /// Returns the index that the next instruction will have.
    [[nodiscard]] std::size_t Place() const { return m_list->m_icodes.size(); }
    [[nodiscard]] bool IsWithoutGrid() const { return m_runs == Runs::OncePerInstance; }
    /// Returns the effective detail in this list: always uniform in a list that runs without a
    /// grid.
    [[nodiscard]] SlcDetailNode* DetailHere(SlcDetailNode* detail) const;

    void AddICode(const SlcPtr<SlcICode>& code) { m_list->AddICode(code); }

    /// Makes a temporary that is never reused for another value, and adds it to the locals of the
    /// list, with its effective detail.
    [[nodiscard]] SlcOperand MakeTempVar(SlcTypeNode* type, SlcDetailNode* detail);
    /// Returns a temporary that `ReleaseTempVars` frees for other values. Without the option to
    /// reuse temporaries, and for types without a pool (`SlcTempPools`), the temporary is made by
    /// `MakeTempVar` and never freed.
    [[nodiscard]] SlcOperand GenTempVar(SlcTypeNode* type, SlcDetailNode* detail);
    /// Frees the temporaries in use, except those that `EnterBody` protects. Call it after a
    /// statement, when none of its values is needed any more.
    void ReleaseTempVars();
    /// While an object of this class exists, `ReleaseTempVars` does nothing: the statements of a
    /// loop's body must not reuse a temporary that was made before the loop and is read in each
    /// iteration.
    class KeepTempVars {
    public:
        explicit KeepTempVars(SlcListBuilder& list);
        ~KeepTempVars() { m_list.m_keepsTempVars = m_outer; }
        KeepTempVars(const KeepTempVars&) = delete;
        KeepTempVars& operator=(const KeepTempVars&) = delete;

    private:
        SlcListBuilder& m_list;
        bool m_outer;
    };
    /// Returns the operand for the value of `expr`: the target of the enclosing assignment if it is
    /// set as the hint of `expr` and has this type and detail, otherwise a temporary. Use it only
    /// if each point gets its value from one instruction that reads its operands before it writes.
    /// A value that is computed in several steps needs a temporary, since the target may be read in
    /// between.
    [[nodiscard]] SlcOperand GetResultVar(const SlcExprNode* expr, SlcTypeNode* type,
                                          SlcDetailNode* detail);

    /// Makes a new label, which the caller adds to the list.
    [[nodiscard]] SlcLabel GenLabel();

    /// Gives locals that are named from here on another number. Call it where a block of the source
    /// begins or ends.
    void NextBlock() { ++m_blockCounter; }
    /// Makes a name that is unique in the list for a declared local: `name_number`.
    [[nodiscard]] std::string LocalName(const std::string& sourceName);

    /// Call these around the body of an expanded function. The body does not reuse the temporaries
    /// in use. Afterwards, the free temporaries that the body took are free again, except `result`,
    /// the operand of the function's value, which may be null. Temporaries that the body made are
    /// not reused after it.
    void EnterBody() { m_temps.EnterBody(); }
    void LeaveBody(const SlcOperand& result) { m_temps.LeaveBody(result); }

private:
    const SlcOptionsControl& m_options;
    SlcPtr<SlcListICode> m_list;  // the list being built
    Runs m_runs = Runs::OnGrid;
    SlcTempPools m_temps;
    bool m_keepsTempVars = false;
    int m_blockCounter = 0;                        // suffix of the names of locals
    std::unordered_set<std::string> m_localNames;  // names of locals in the list so far
};

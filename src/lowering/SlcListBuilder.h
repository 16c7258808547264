#pragma once

#include <string>
#include <unordered_set>

#include "icode/SlcBlockICode.h"
#include "icode/SlcListICode.h"
#include "lowering/SlcTempPools.h"
#include "support/SlcOptionsControl.h"

class SlcExprNode;

/// The list being made: appends instructions, and makes the temporaries, locals and labels that
/// they name.
///
/// Temporaries are numbered, and labels too, over all lists of a run, so that no two lists of a
/// shader share a name.
class SlcListBuilder {
public:
    /// How often a list runs: for the grid that is shaded or, without one, once for each instance
    /// of the shader. There every detail is uniform.
    enum class Runs { OnGrid, OncePerInstance };

    /// Without a list until `Start`. `options` outlive it.
    explicit SlcListBuilder(const SlcOptionsControl& options) : m_options(options) {}

    /// Begins a new list, with no temporary of another one in reach.
    void Start(Runs runs);
    [[nodiscard]] const SlcPtr<SlcListICode>& List() const { return m_list; }
    [[nodiscard]] std::deque<SlcPtr<SlcICode>>& Codes() const { return m_list->m_icodes; }
    /// The place of the next instruction.
    [[nodiscard]] std::size_t Place() const { return m_list->m_icodes.size(); }
    [[nodiscard]] bool IsWithoutGrid() const { return m_runs == Runs::OncePerInstance; }
    /// What `detail` comes to in this list: uniform in one that runs without a grid.
    [[nodiscard]] SlcDetailNode* DetailHere(SlcDetailNode* detail) const;

    void AddICode(const SlcPtr<SlcICode>& code) { m_list->AddICode(code); }

    /// One that no other value of the list shares. Both add what they make to the locals of the
    /// list, and give it the detail that it has here.
    [[nodiscard]] SlcOperand MakeTempVar(SlcTypeNode* type, SlcDetailNode* detail);
    /// One that `ReleaseTempVars` gives free for other values; without the option that reuses
    /// temporaries, the same as above.
    [[nodiscard]] SlcOperand GenTempVar(SlcTypeNode* type, SlcDetailNode* detail);
    /// Behind a statement: no value of it is needed any more.
    void ReleaseTempVars();
    /// While one lives, `ReleaseTempVars` does nothing: the statements of a loop's body must not
    /// take what was made in front of the loop and is read in each round.
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
    /// The operand that is to hold the value of `expr`: the target of an assignment if that has
    /// been hinted at and fits, or a temporary. For one instruction that reads its operands before
    /// it writes: a value that is built up in several steps takes a temporary, since the target
    /// may be read meanwhile.
    [[nodiscard]] SlcOperand GetResultVar(const SlcExprNode* expr, SlcTypeNode* type,
                                          SlcDetailNode* detail);

    /// A new one, which the caller puts into the list at its place.
    [[nodiscard]] SlcLabel GenLabel();

    /// The locals declared from here on belong to another block of the source.
    void NextBlock() { ++m_blockCounter; }
    /// For a declared local, `name_number`; no other one of the list has it.
    [[nodiscard]] std::string LocalName(const std::string& sourceName);

    /// Around the body of a function that is expanded: the temporaries in use are out of its
    /// reach, and behind it all are free again but `result`, which may be null.
    void EnterBody() { m_temps.EnterBody(); }
    void LeaveBody(const SlcOperand& result) { m_temps.LeaveBody(result); }

private:
    const SlcOptionsControl& m_options;
    SlcPtr<SlcListICode> m_list;  // where instructions and locals go
    Runs m_runs = Runs::OnGrid;
    SlcTempPools m_temps;
    bool m_keepsTempVars = false;
    int m_blockCounter = 0;                        // suffix of the names of locals
    std::unordered_set<std::string> m_localNames;  // of the list
};

#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "icode/SlcListICode.h"
#include "icode/SlcOperandWalker.h"

/// The numbers of the variables of one list: the universe of the data-flow sets.
///
/// Only variables that the analysis can track have a number: locals, temporaries and predefined
/// variables. Parameters and externs have none, so that no pass treats a write to one as dead.
class SlcVariableNumbers {
public:
    /// Numbers the variables of `list` by their position in `m_allVars`. The numbers are stored in
    /// the operands, until those of another list replace them. Variables that are not tracked have
    /// a position but no number.
    explicit SlcVariableNumbers(const SlcListICode& list);

    /// Returns the number of variables of the list, tracked or not, which is above all numbers.
    [[nodiscard]] int Count() const { return static_cast<int>(m_variables.size()); }
    /// Returns the variable with this number. A position below `Count()` that is no number yields a
    /// variable that is not tracked.
    [[nodiscard]] const SlcOperand& Variable(int number) const { return m_variables[number]; }
    /// Returns the number of an operand; -1 for a constant and for a variable that is not tracked.
    [[nodiscard]] static int Of(const SlcOperand& operand) { return operand->m_setIndex; }
    /// Returns the number of a predefined variable by its name in the source; -1 if the list does
    /// not use it. For `L`, `Cl` and `Ol`, prefers the variables of light loops. An unknown
    /// name is fatal.
    [[nodiscard]] int OfPredefined(std::string_view name) const;
    /// Returns the number of the predefined variable with this accessor, the expression for it in
    /// generated code; -1 if the list does not use it.
    [[nodiscard]] int OfAccessor(std::string_view accessor) const;

private:
    std::vector<SlcOperand> m_variables;
    std::vector<int> m_hiddens;  // predefined variables
};

/// The numbered variables that an instruction reads and writes, including those that it does not
/// name.
///
/// An instruction that may write only some points, or only a part of a value, also counts as
/// reading its result, so that the previous value stays live (the traits PartialWrite and
/// PartialIfLimited). Variables without a number are ignored.
class SlcDefUse : public SlcOperandWalker {
public:
    /// `variables` must outlive this object.
    explicit SlcDefUse(const SlcVariableNumbers& variables);

    /// What an instruction reads and writes. Valid until `Compute` analyses another instruction, or
    /// until `ForgetAll`. A number can occur more than once in `uses` or `defs`.
    struct Facts {
        std::span<const int> uses;
        std::span<const int> defs;
        int computes;        // variable, if writing it as a whole is the only effect; or -1
        bool assignsItself;  // x = x
    };

    /// Analyses the instruction if it is new, or if its operands have changed
    /// (`SlcICode::m_flowIndex`).
    void Compute(const SlcPtr<SlcICode>& code)
    {
        if (!IsKnown(*code))
            Add(code);
        m_current = static_cast<std::size_t>(code->m_flowIndex);
    }
    /// Return the sets of the last instruction passed to `Compute`.
    [[nodiscard]] std::span<const int> Uses() const { return FactsAt(m_current).uses; }
    [[nodiscard]] std::span<const int> Defs() const { return FactsAt(m_current).defs; }
    /// Returns the facts about an instruction that was passed to `Compute`.
    [[nodiscard]] Facts Of(const SlcICode& code) const { return FactsAt(code.m_flowIndex); }
    /// Drops all facts, since any operand may have changed.
    void ForgetAll();

private:
    /// `uses`, `defs` and `end` are positions in m_numbers: first the reads, then the writes.
    struct Entry {
        const SlcICode* code;
        std::size_t uses;
        std::size_t defs;
        std::size_t end;
        int computes;
        bool assignsItself;
    };

    [[nodiscard]] bool IsKnown(const SlcICode& code) const
    {
        const auto index = static_cast<std::size_t>(code.m_flowIndex);
        return index < m_entries.size() && m_entries[index].code == &code;
    }
    [[nodiscard]] Facts FactsAt(std::size_t index) const
    {
        const Entry& entry = m_entries[index];
        const std::span numbers(m_numbers);
        return {numbers.subspan(entry.uses, entry.defs - entry.uses),
                numbers.subspan(entry.defs, entry.end - entry.defs), entry.computes,
                entry.assignsItself};
    }
    void Add(const SlcPtr<SlcICode>& code);
    /// Stores the reads and writes in m_uses and m_defs.
    void Collect(const SlcPtr<SlcICode>& code);

    void Read(SlcOperand& operand) override { Add(m_uses, operand); }
    void Write(SlcOperand& operand) override { Add(m_defs, operand); }
    void ReadCondition(SlcOperand& condition) override
    {
        m_isLimited = true;
        Read(condition);
    }

    using SlcOperandWalker::Case;
    void Case(SlcPtr<SlcCallICode> code) override;
    void Case(SlcPtr<SlcCallDSOICode> code) override;
    void Case(SlcPtr<SlcCheckIlluminanceICode> code) override;
    void Case(SlcPtr<SlcTextureSTPointsICode> code) override;
    void Case(SlcPtr<SlcTexturePointsICode> code) override;
    void Case(SlcPtr<SlcInvertBoolFlagICode> code) override;
    void Case(SlcPtr<SlcConvertArrayDSOICode> code) override;
    void Case(SlcPtr<SlcEvalLightForPICode> code) override;
    void Case(SlcPtr<SlcEvalLightICode> code) override;
    void Case(SlcPtr<SlcResetEvalLightForPICode> code) override;
    void Case(SlcPtr<SlcBeginIlluminanceICode> code) override;
    void Case(SlcPtr<SlcBeginShaderICode> code) override;
    void Case(SlcPtr<SlcEndShaderICode> code) override;

    /// Does nothing for an operand without a number.
    static void Add(std::vector<int>& numbers, const SlcOperand& operand);
    void UsePredefined(std::string_view name);

    const SlcVariableNumbers& m_variables;
    std::vector<int> m_predefined;      // every predefined variable of the list
    std::vector<int> m_readWrite;       // the ones that the renderer reads at the end of the shader
    std::vector<int> m_lightVariables;  // `L`, `Cl` and `Ol` of the light loops
    bool m_isLimited = false;           // the instruction has a condition
    std::vector<int> m_uses;
    std::vector<int> m_defs;
    std::vector<Entry> m_entries;
    std::vector<int> m_numbers;
    std::size_t m_current = 0;
};

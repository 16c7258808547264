#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "icode/SlcListICode.h"
#include "icode/SlcOperandWalker.h"

/// The variables of one list by number: the universe of the data-flow sets.
///
/// Only variables that the analysis can follow have a number: locals, temporaries and predefined
/// variables. Parameters and externs have none, so that no pass treats a write to one as dead.
class SlcVariableNumbers {
public:
    /// Numbers the variables of `list` by their position in `m_allVars`. The numbers are stored in
    /// the operands, until those of another list replace them. Variables that are not followed have
    /// a position but no number.
    explicit SlcVariableNumbers(const SlcListICode& list);

    /// Numbers are from 0 to `Count() - 1`.
    [[nodiscard]] int Count() const { return static_cast<int>(m_variables.size()); }
    [[nodiscard]] const SlcOperand& Variable(int number) const { return m_variables[number]; }
    /// -1 for a constant and for a variable that is not followed.
    [[nodiscard]] static int Of(const SlcOperand& operand) { return operand->m_setIndex; }
    /// Number of a predefined variable by its name in the source; -1 if the list does not use it.
    /// `L`, `Cl` and `Ol` are those of the light loops if there are any.
    [[nodiscard]] int OfPredefined(std::string_view name) const;
    /// The same by its expression in generated code.
    [[nodiscard]] int OfAccessor(std::string_view accessor) const;

private:
    std::vector<SlcOperand> m_variables;
    std::vector<int> m_hiddens;  // predefined variables
};

/// The numbered variables that an instruction reads and writes, including those that it does not
/// name.
///
/// An instruction that may write only some points, or only a part of a value, also counts as
/// reading what it writes, so that the previous value stays live (the traits PartialWrite and
/// PartialIfLimited). Variables without a number are ignored.
class SlcDefUse : public SlcOperandWalker {
public:
    /// `variables` must outlive this object.
    explicit SlcDefUse(const SlcVariableNumbers& variables);

    /// Valid until the next call. A number can occur twice in `uses` or `defs`.
    void Compute(const SlcPtr<SlcICode>& code);
    [[nodiscard]] std::span<const int> Uses() const { return m_uses; }
    [[nodiscard]] std::span<const int> Defs() const { return m_defs; }

private:
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
    std::vector<int> m_predefined;      // every predefined variable
    std::vector<int> m_readWrite;       // the ones that the renderer reads at the end
    std::vector<int> m_lightVariables;  // `L`, `Cl` and `Ol` of the light loops
    bool m_isLimited = false;           // the instruction has a condition
    std::vector<int> m_uses;
    std::vector<int> m_defs;
};

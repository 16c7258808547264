#pragma once

#include <string>

#include "machine/translate/QxMachineCode.h"
#include "sqx/SqxShader.h"

/// The variables of a program while it is made: those of the file, by the same numbers, and behind
/// them what the translation adds. A view of `QxMachineCode::variables`, in which they are kept.
class QxMachineVariables {
public:
    /// Fills in the variables and constants of `target`, which must be empty and outlive this, like
    /// `shader`. The shader is verified: of a reference that is bound in several ways, the most
    /// general one decides how it is kept.
    QxMachineVariables(const SqxShader& shader, QxMachineCode& target);

    [[nodiscard]] std::size_t Count() const { return m_target.variables.size(); }
    [[nodiscard]] const QxStorage& operator[](std::uint32_t variable) const
    {
        return m_target.variables[variable];
    }
    /// Its value if it is a constant, else null. It stays where it is.
    [[nodiscard]] const QxConstant* ConstantOf(std::uint32_t variable) const;
    /// The variable whole, as an operand of an instruction.
    [[nodiscard]] QxOperand OperandOf(std::uint32_t variable) const;
    /// A uniform variable, or an element of a uniform array that each point refers to.
    [[nodiscard]] bool IsOneForAllPoints(const QxOperand& operand) const;
    /// Takes what nobody wants: as large as any value, and uniform.
    [[nodiscard]] std::uint32_t Nowhere() const { return m_nowhere; }
    /// The geometric normal of the grid.
    [[nodiscard]] std::uint32_t Ng() const { return m_ng; }

    // Each of these gives the number of a new variable.

    /// A varying one, for what a reference of each point stands for. Texts in it are not its own.
    [[nodiscard]] std::uint32_t AddTemporary(QxStored stored);
    /// A triple of equal numbers, for where one is wanted and a number stands.
    [[nodiscard]] std::uint32_t AddNumberConstant(float value);
    /// The empty text, for where one is wanted and the literal stands that leaves it out.
    [[nodiscard]] std::uint32_t AddTextConstant(std::uint32_t constant);

private:
    void AddVariables();
    void AddConstant(const SqxVariable& variable, QxStorage& storage);
    [[nodiscard]] std::uint32_t AddVariable(const QxStorage& storage);
    void ClassifyReferences(const SqxBlock& block);
    void ClassifyReference(const SqxBlock& block, const SqxInstruction& source, bool within);

    const SqxShader& m_shader;
    QxMachineCode& m_target;
    std::uint32_t m_nowhere = 0;
    std::uint32_t m_ng = 0;
};

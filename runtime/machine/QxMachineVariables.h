#pragma once

#include <string>

#include "machine/QxMachineCode.h"
#include "sqx/SqxShader.h"

/// The variables of a program while it is made: those of the file, by the same numbers, and behind
/// them what the translation adds.
class QxMachineVariables {
public:
    /// Fills in the variables and constants of `target`.
    QxMachineVariables(const SqxShader& shader, QxMachineCode& target);

    [[nodiscard]] std::size_t Count() const { return m_target.variables.size(); }
    [[nodiscard]] const QxStorage& operator[](std::uint32_t variable) const
    {
        return m_target.variables[variable];
    }
    /// Its value if it is a constant, else null.
    [[nodiscard]] const QxConstant* ConstantOf(std::uint32_t variable) const;
    [[nodiscard]] QxOperand OperandOf(std::uint32_t variable) const;
    /// A uniform variable, or an element of a uniform array that each point refers to.
    [[nodiscard]] bool IsOneForAllPoints(const QxOperand& operand) const;
    /// Takes what nobody wants.
    [[nodiscard]] std::uint32_t Nowhere() const { return m_nowhere; }
    /// The geometric normal of the grid.
    [[nodiscard]] std::uint32_t Ng() const { return m_ng; }

    /// For what a reference of each point stands for.
    [[nodiscard]] std::uint32_t AddTemporary(QxStored stored);
    [[nodiscard]] std::uint32_t AddNumberConstant(float value);
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

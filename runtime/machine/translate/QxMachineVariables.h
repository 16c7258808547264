#pragma once

#include <string>
#include <vector>

#include "machine/translate/QxMachineCode.h"
#include "sqx/SqxShader.h"

/// The variables of a program during translation: those of the file, with the same numbers, and
/// after them those that the translation adds. They are stored in `QxMachineCode::variables`.
class QxMachineVariables {
public:
    /// Adds the variables of the file to `target`, which must have none, with their constants and
    /// texts, and lists those for L, Cl and Ol. `target` and `shader` must outlive this object. The
    /// shader must be verified. If a reference is bound in several ways, the most general one
    /// determines its storage.
    QxMachineVariables(const SqxShader& shader, QxMachineCode& target);

    [[nodiscard]] std::size_t Count() const { return m_target.variables.size(); }
    [[nodiscard]] const QxStorage& operator[](std::uint32_t variable) const
    {
        return m_target.variables[variable];
    }
    /// Returns the value of a variable that is a constant, otherwise null. The address is stable.
    [[nodiscard]] const QxConstant* ConstantOf(std::uint32_t variable) const;
    /// Returns the whole variable as an operand of an instruction.
    [[nodiscard]] QxOperand OperandOf(std::uint32_t variable) const;
    /// True for a uniform variable except `Nowhere`, and for a varying reference that may refer to
    /// elements of a uniform array.
    [[nodiscard]] bool IsOneForAllPoints(const QxOperand& operand) const;
    /// A uniform variable for discarded results, large enough for any value.
    [[nodiscard]] std::uint32_t Nowhere() const { return m_nowhere; }
    /// The geometric normal of the grid.
    [[nodiscard]] std::uint32_t Ng() const { return m_ng; }

    // Each of these adds a variable, unless stated otherwise, and returns its number.

    /// A varying temporary for the element of a varying reference. The temporary does not own the
    /// texts in it.
    [[nodiscard]] std::uint32_t AddTemporary(QxStored stored);
    /// A varying local with room for one strip. Each kind of storage has its own locals, numbered
    /// from 0; local `index` is added if it is the next one.
    [[nodiscard]] std::uint32_t StripLocal(QxStored stored, std::size_t index);
    /// A constant of three equal numbers, for an instruction that requires a triple but has one
    /// number.
    [[nodiscard]] std::uint32_t AddNumberConstant(float value);
    /// A constant with the text of another one. The text of a number is empty: it is for an
    /// instruction that requires a text but has the number that replaces an omitted argument.
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
    std::vector<std::uint32_t> m_stripLocals[k_qxStoredKinds];  // by `QxStored`
};

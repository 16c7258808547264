#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "machine/QxDraft.h"
#include "machine/QxKernelTable.h"
#include "machine/QxMachineVariables.h"
#include "sqx/SqxLayout.h"

/// Writes the instructions of a block one after the other: finds the kernels for their operands,
/// and puts what references need in between.
class QxDraftWriter {
public:
    QxDraftWriter(const QxKernelTable& kernels, QxMachineVariables& variables)
        : m_kernels(kernels),
          m_variables(variables)
    {
    }

    struct Argument {
        QxOperand operand;
        char letter;
        std::uint32_t reference = 0;  // that it stands for
        bool isReference = false;
    };
    /// `wanted`: how the instruction wants the operand stored. All operations throw `QxHostError`
    /// for what the machine cannot do.
    [[nodiscard]] Argument MakeArgument(int variable, char letter, QxStored wanted);

    /// An instruction without operands.
    QxDraft& Add(QxCodeStep step);
    /// Of the last instruction.
    void AddOperand(const QxOperand& operand, char letter);
    /// Behind the last operand.
    void ChooseKernels(QxDraft& draft);
    /// An instruction whole. `flag`: the condition of a conditional one.
    void Emit(const QxKernelRow& row, const std::vector<Argument>& arguments, int number,
              const SqxLayout& layout, const QxOperand& flag);
    [[nodiscard]] const QxKernelRow& RowOf(std::string_view primitive) const;

    /// What was written.
    [[nodiscard]] QxDraftBlock& Block() { return m_block; }
    /// Parallel brackets are open.
    [[nodiscard]] bool IsWithin() const { return m_within; }
    void SetWithin(bool within) { m_within = within; }

    [[noreturn]] static void Refuse(std::string_view instruction, const std::string& what);

private:
    void EmitMoves(const std::vector<Argument>& arguments, const SqxLayout& layout,
                   const QxOperand& flag, bool load);
    void ChooseStep(QxDraft& draft, const SqxLayout& layout, const QxOperand& flag);

    const QxKernelTable& m_kernels;
    QxMachineVariables& m_variables;
    QxDraftBlock m_block;
    bool m_within = false;
    // Free ones for references, by how they are stored.
    std::vector<std::uint32_t> m_temporaries[6];
};

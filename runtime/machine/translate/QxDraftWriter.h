#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "machine/translate/QxDraft.h"
#include "machine/translate/QxKernelTable.h"
#include "machine/translate/QxMachineVariables.h"
#include "sqx/SqxLayout.h"

/// Writes the instructions of a block one after the other: finds the kernels for their operands,
/// and puts what references need in between. One writer serves the blocks of a program in turn: the
/// temporaries of references are made once for all of them.
class QxDraftWriter {
public:
    /// Both must outlive it; temporaries and constants are added to the variables.
    QxDraftWriter(const QxKernelTable& kernels, QxMachineVariables& variables)
        : m_kernels(kernels),
          m_variables(variables)
    {
    }

    /// An operand before it is written. One that stands for an element for each point has no place
    /// yet: `Emit` gives it a temporary.
    struct Argument {
        QxOperand operand;
        char letter;                  // of the layout
        std::uint32_t reference = 0;  // that it stands for
        bool isReference = false;
    };
    /// The argument that a variable of the file becomes. `wanted`: how the instruction wants it
    /// stored; a constant number is made a triple or the empty text where one of these is wanted,
    /// and a result that the call left out goes nowhere. All operations throw `QxHostError` for
    /// what the machine cannot do.
    [[nodiscard]] Argument MakeArgument(int variable, char letter, QxStored wanted);

    /// An instruction without operands. The reference is good until the next one is added.
    QxDraft& Add(QxCodeStep step);
    /// Of the last instruction.
    void AddOperand(const QxOperand& operand, char letter);
    /// The kernels of a draft's row for its operands, all of which are there. Its step and row are
    /// set; it need not be the last one.
    void ChooseKernels(QxDraft& draft);
    /// An instruction whole, with loads of its references in front of it and stores behind.
    /// `number`: its literal. `flag`: the condition of a conditional one.
    void Emit(const QxKernelRow& row, const std::vector<Argument>& arguments, int number,
              const SqxLayout& layout, const QxOperand& flag);
    /// Throws if there is no such primitive.
    [[nodiscard]] const QxKernelRow& RowOf(std::string_view primitive) const;

    /// What was written. For the next block it is emptied by its user.
    [[nodiscard]] QxDraftBlock& Block() { return m_block; }
    /// Parallel brackets are open.
    [[nodiscard]] bool IsWithin() const { return m_within; }
    void SetWithin(bool within) { m_within = within; }

    /// Throws: "Instruction NAME " and what is the matter with it.
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

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "machine/translate/QxDraft.h"
#include "machine/translate/QxKernelTable.h"
#include "machine/translate/QxMachineVariables.h"
#include "sqx/SqxLayout.h"

/// Writes the instructions of a block one after another: finds the kernels for their operands, and
/// inserts the loads and stores for references. One writer is used for all blocks of a program,
/// which share the temporaries of references.
class QxDraftWriter {
public:
    /// Both must outlive this object; temporaries and constants are added to the variables.
    QxDraftWriter(const QxKernelTable& kernels, QxMachineVariables& variables)
        : m_kernels(kernels),
          m_variables(variables)
    {
    }

    /// An operand before it is added to the block. For a varying reference, `operand` has no
    /// variable yet: `Emit` assigns a temporary.
    struct Argument {
        QxOperand operand;
        char letter;                  // in the layout
        std::uint32_t reference = 0;  // the varying reference, if any
        bool isReference = false;
    };
    /// Makes the argument for a variable of the file. `wanted` is the storage that the instruction
    /// requires: a constant number is converted to a triple or the empty text if required, and a
    /// result that the call leaves out is discarded. `MakeArgument`, `Emit` and `RowOf` throw
    /// `QxHostError` for anything that the machine does not support.
    [[nodiscard]] Argument MakeArgument(int variable, char letter, QxStored wanted);

    /// Adds an instruction without operands. The reference is valid until the next one is added.
    QxDraft& Add(QxCodeStep step);
    /// Adds an operand to the last instruction.
    void AddOperand(const QxOperand& operand, char letter);
    /// Chooses the kernels of a draft's row for its operands, all of which must have been added.
    /// The draft's step and row must be set; it need not be the last draft.
    void ChooseKernels(QxDraft& draft);
    /// Adds a whole instruction, with loads of its references before it and stores after it.
    /// `number` is its literal, `flag` the condition of a conditional instruction.
    void Emit(const QxKernelRow& row, const std::vector<Argument>& arguments, int number,
              const SqxLayout& layout, const QxOperand& flag);
    /// Returns the kernels of a primitive. Throws if there are none.
    [[nodiscard]] const QxKernelRow& RowOf(SqxPrimitive primitive) const;

    /// The drafts written so far. The caller empties it for the next block.
    [[nodiscard]] QxDraftBlock& Block() { return m_block; }
    /// True inside parallel brackets.
    [[nodiscard]] bool IsWithin() const { return m_within; }
    void SetWithin(bool within) { m_within = within; }

    /// Throws `QxHostError` with the text "Instruction NAME " and the fault.
    [[noreturn]] static void Refuse(std::string_view instruction, const std::string& what);

private:
    void EmitMoves(const std::vector<Argument>& arguments, const SqxLayout& layout,
                   const QxOperand& flag, bool load);
    void ChooseStep(QxDraft& draft, const SqxLayout& layout, const QxOperand& flag);

    const QxKernelTable& m_kernels;
    QxMachineVariables& m_variables;
    QxDraftBlock m_block;
    bool m_within = false;
    // Free temporaries for references, by storage.
    std::vector<std::uint32_t> m_temporaries[k_qxStoredKinds];
};

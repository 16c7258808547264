#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "machine/translate/QxDraft.h"
#include "machine/translate/QxKernelTable.h"
#include "machine/translate/QxMachineVariables.h"
#include "sqx/SqxLayout.h"

/// Writes the instructions of a block one after another: finds the kernels for their operands, and
/// inserts the loads and stores for varying references. One writer is used for all blocks of a
/// program, which share the temporaries for these loads and stores.
class QxDraftWriter {
public:
    /// Both must outlive this object; temporaries and constants are added to the variables.
    QxDraftWriter(const QxKernelTable& kernels, QxMachineVariables& variables)
        : m_kernels(kernels),
          m_variables(variables)
    {
    }

    /// An operand before it is added to the block. For an element that is accessed through a
    /// varying reference, `operand` has no variable yet: `Emit` assigns a temporary.
    struct Argument {
        QxOperand operand;
        char letter;                  // in `SqxLayout::operands`
        std::uint32_t reference = 0;  // the varying reference, if any
        bool isReference = false;
    };
    /// Makes the argument for a variable of the file, given by its number. `wanted` is the storage
    /// that the instruction requires: a constant number is converted to a triple or the empty text
    /// if required, and a result that the call leaves out is discarded. `MakeArgument`, `Emit` and
    /// `RowOf` throw `QxHostError` for anything that the machine does not support.
    [[nodiscard]] Argument MakeArgument(int variable, char letter, QxStored wanted);

    /// Adds an instruction that has no operands yet. The result is valid until the next instruction
    /// is added.
    QxDraft& Add(QxCodeStep step);
    /// Adds an operand to the last instruction.
    void AddOperand(const QxOperand& operand, char letter);
    /// Chooses the kernels of a draft's row for its operands, all of which must have been added.
    /// The draft's step and row must be set; it need not be the last draft.
    void ChooseKernels(QxDraft& draft);
    /// Adds an instruction with its operands, its step and its kernels, the loads of elements
    /// before it and their stores after it. `number` is that of `QxCode`, and `flag` the condition
    /// of a conditional instruction.
    void Emit(const QxKernelRow& row, const std::vector<Argument>& arguments, int number,
              const SqxLayout& layout, const QxOperand& flag);
    /// Returns the kernels of a primitive. Throws `QxHostError` if there are none.
    [[nodiscard]] const QxKernelRow& RowOf(SqxPrimitive primitive) const;

    /// Returns the current block, which the caller empties before the next one.
    [[nodiscard]] QxDraftBlock& Block() { return m_block; }
    /// True inside parallel brackets; the caller sets this at their start and their end.
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
    // Temporaries for elements of varying references, by storage; each instruction reuses them.
    std::vector<std::uint32_t> m_temporaries[k_qxStoredKinds];
};

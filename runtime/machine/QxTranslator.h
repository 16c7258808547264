#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "machine/QxMachineCode.h"

/// The kernels of all instructions, by name.
class QxKernelTable {
public:
    /// `avx2`: the processor has it.
    [[nodiscard]] static const QxKernelTable& For(bool avx2);
    /// Null if there is none.
    [[nodiscard]] const QxKernelRow* Find(std::string_view primitive) const;
    /// The same for the number of an instruction of a file.
    [[nodiscard]] const QxKernelRow* OfNumber(int number) const { return m_byNumber[number]; }

private:
    explicit QxKernelTable(bool avx2);

    std::map<std::string_view, const QxKernelRow*> m_byName;
    std::vector<const QxKernelRow*> m_byNumber;
};

/// An instruction while a block is translated: what the passes over it need beyond the code.
struct QxDraft {
    QxCode code;
    const QxKernelRow* row = nullptr;
    std::size_t first = 0;  // place of its operands in those of the block, and of their letters
    bool jumps = false;     // to an instruction of the file
};

/// A block while it is translated.
struct QxDraftBlock {
    std::vector<QxDraft> drafts;
    std::vector<QxOperand> operands;
    std::string letters;  // of the operands: r read, w written, m both
};

/// Makes the blocks of a verified shader ready to run.
///
/// An instruction becomes a kernel and its operands. A reference that is bound once for all points
/// is another base address. One of each point is read into a variable before the instruction and
/// stored behind it, so that kernels know of uniform and varying operands only.
class QxTranslator {
public:
    QxTranslator(const SqxShader& shader, const QxKernelTable& kernels, QxMachineCode& target);
    /// Throws `QxHostError` if there is something in the file that the machine does not know.
    void Run();

private:
    void AddVariables();
    void AddConstant(const SqxVariable& variable, QxStorage& storage);
    void ClassifyReferences(const SqxBlock& block);
    void ClassifyReference(const SqxBlock& block, const SqxInstruction& source, bool within);

    void Translate(const SqxBlock& block, QxProgramBlock& target);
    void TranslateInstruction(const SqxBlock& block, const SqxInstruction& source);
    [[nodiscard]] bool TranslateMark(const SqxBlock& block, const SqxInstruction& source);
    void BeginCondition(QxCodeStep step, int flag);
    void EndCondition();
    void EndParallel();
    [[nodiscard]] bool IsOneForAllPoints(const QxOperand& operand) const;
    [[nodiscard]] bool MakeFlagOperations(std::size_t begin);
    void TranslateArrayRef(const SqxBlock& block, const SqxInstruction& source);
    void TranslateCheck(const SqxBlock& block, const SqxInstruction& source);
    void TranslateCall(const SqxBlock& block, const SqxInstruction& source);

    struct Argument {
        QxOperand operand;
        char letter;
        std::uint32_t reference = 0;  // that it stands for
        bool isReference = false;
    };
    [[nodiscard]] Argument MakeArgument(int variable, char letter, QxStored wanted);
    void Emit(const QxKernelRow& row, const std::vector<Argument>& arguments, int number,
              const SqxLayout& layout, const QxOperand& flag);
    void EmitMoves(const std::vector<Argument>& arguments, const SqxLayout& layout,
                   const QxOperand& flag, bool load);
    QxDraft& Add(QxCodeStep step);
    void AddOperand(const QxOperand& operand, char letter);
    void ChooseStep(QxDraft& draft, const SqxLayout& layout, const QxOperand& flag);
    void ChooseKernels(QxDraft& draft);
    [[nodiscard]] QxOperand OperandOf(std::uint32_t variable) const;
    [[nodiscard]] std::uint32_t AddVariable(const QxStorage& storage);
    [[nodiscard]] std::uint32_t AddNumberConstant(float value);
    [[nodiscard]] const QxKernelRow& RowOf(std::string_view primitive) const;
    [[noreturn]] static void Refuse(std::string_view instruction, const std::string& what);

    const SqxShader& m_shader;
    const QxKernelTable& m_kernels;
    QxMachineCode& m_target;
    QxDraftBlock m_block;
    std::vector<std::size_t> m_starts;      // index of the code for each instruction
    std::vector<std::size_t> m_conditions;  // that are open
    std::size_t m_parallel = 0;             // index of the open brackets
    bool m_within = false;                  // parallel brackets are open
    std::vector<std::uint32_t>
        m_temporaries[6];  // free ones for references, by how they are stored
    std::uint32_t m_nowhere = 0;
    std::uint32_t m_ng = 0;
};

/// Rewrites that make masks cheap, and which locals are read before they are written. Leaves the
/// targets of the codes as indexes among the drafts.
void QxSimplifyMasks(QxDraftBlock& block, const std::vector<QxStorage>& variables,
                     std::vector<std::uint32_t>& clears);

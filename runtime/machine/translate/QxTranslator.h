#pragma once

#include <optional>
#include <vector>

#include "machine/translate/QxDraftWriter.h"
#include "machine/translate/QxMachineCode.h"

/// Translates the blocks of a verified shader into code for the machine.
///
/// An instruction becomes a kernel and its operands, or a step without a kernel if it is a jump or
/// a bracket. A reference that is the same for all points is just another base address. The element
/// of a varying reference is copied to a variable before an instruction that reads it, and back
/// after one that writes it, so that kernels see only uniform and varying operands.
class QxTranslator {
public:
    /// Adds the variables and constants of the file to `target`, which must be empty except for its
    /// shadeops; these must be there if the shader calls any. `shader` must be verified. All must
    /// outlive this object; the target does not refer to the shader.
    QxTranslator(const SqxShader& shader, const QxKernelTable& kernels, QxMachineCode& target);
    /// Fills in the rest of the target: the blocks of main and of the
    /// initializers, and the variables and constants that they need in addition. Call it once.
    /// Throws `QxHostError` if the file uses something that the machine does not support; the
    /// target must not be used then. O(n log n) for n instructions, plus O(v) per block for v
    /// variables and the costs of `QxLiveness`.
    void Run();

private:
    /// `result` is the variable that is read after the block; main has none.
    void Translate(const SqxBlock& block, std::optional<std::uint32_t> result,
                   QxProgramBlock& target);
    void Finish(QxProgramBlock& target);
    [[nodiscard]] std::vector<std::int32_t> LoopsOverLights() const;
    void DropUnusedVariables();
    void TranslateInstruction(const SqxBlock& block, const SqxInstruction& source);
    [[nodiscard]] bool TranslateMark(const SqxBlock& block, const SqxInstruction& source);
    void BeginCondition(QxCodeStep step, int flag);
    void EndCondition();
    void EndParallel();
    [[nodiscard]] bool MakeFlagOperations(std::size_t begin);
    void TranslateArrayRef(const SqxBlock& block, const SqxInstruction& source);
    void TranslateCheck(const SqxBlock& block, const SqxInstruction& source);
    void TranslateCall(const SqxBlock& block, const SqxInstruction& source);
    [[nodiscard]] bool IsTakenBack(const SqxBlock& block, const SqxInstruction& call,
                                   std::size_t i) const;

    const SqxShader& m_shader;
    const QxKernelTable& m_kernels;
    QxMachineCode& m_target;
    QxMachineVariables m_variables;
    QxDraftWriter m_writer;
    QxDraftBlock& m_block;                  // the drafts of the current block
    std::vector<std::size_t> m_starts;      // index of the first draft of each instruction
    std::vector<std::size_t> m_conditions;  // drafts that begin open conditions
    std::size_t m_parallel = 0;             // draft that begins the open parallel brackets
};

#pragma once

#include <optional>
#include <vector>

#include "machine/translate/QxDraftWriter.h"
#include "machine/translate/QxMachineCode.h"

/// Makes the blocks of a verified shader ready to run.
///
/// An instruction becomes a kernel and its operands. A reference that is bound once for all points
/// is another base address. One of each point is read into a variable before the instruction and
/// stored behind it, so that kernels know of uniform and varying operands only.
class QxTranslator {
public:
    /// `shader`: verified. `target`: empty but for `isLight`. All must outlive this; the target
    /// keeps nothing of the shader.
    QxTranslator(const SqxShader& shader, const QxKernelTable& kernels, QxMachineCode& target);
    /// Fills the target but for its shadeops: variables, constants, and the blocks of main and of
    /// the initializers. Once. Throws `QxHostError` if there is something in the file that the
    /// machine does not know; then the target is of no use. O(n) for n instructions, but for
    /// what `QxJoinRuns` and `QxLiveness` say.
    void Run();

private:
    /// `result`: the variable that is read after the block; none for main.
    void Translate(const SqxBlock& block, std::optional<std::uint32_t> result,
                   QxProgramBlock& target);
    void TranslateInstruction(const SqxBlock& block, const SqxInstruction& source);
    [[nodiscard]] bool TranslateMark(const SqxBlock& block, const SqxInstruction& source);
    void BeginCondition(QxCodeStep step, int flag);
    void EndCondition();
    void EndParallel();
    [[nodiscard]] bool MakeFlagOperations(std::size_t begin);
    void TranslateArrayRef(const SqxBlock& block, const SqxInstruction& source);
    void TranslateCheck(const SqxBlock& block, const SqxInstruction& source);
    void TranslateCall(const SqxBlock& block, const SqxInstruction& source);

    const SqxShader& m_shader;
    const QxKernelTable& m_kernels;
    QxMachineCode& m_target;
    QxMachineVariables m_variables;
    QxDraftWriter m_writer;
    QxDraftBlock& m_block;                  // what was written of the block at hand
    std::vector<std::size_t> m_starts;      // index of the code for each instruction
    std::vector<std::size_t> m_conditions;  // that are open
    std::size_t m_parallel = 0;             // index of the open brackets
};

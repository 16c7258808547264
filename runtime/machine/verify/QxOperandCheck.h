#pragma once

#include <vector>

#include "machine/verify/QxBrackets.h"
#include "machine/verify/QxUntrustedBlock.h"

/// What of a variable decides whether it may be an operand. One for each variable of a shader, in
/// their order, serves all its blocks.
struct QxOperandFacts {
    explicit QxOperandFacts(const SqxVariable& variable);

    unsigned char shape = 0;  // one bit; points, vectors, normals and colors have the same
    bool uniform = true;
    bool array = false;
    bool reference = false;
    bool constant = false;
};

/// Whether each operand of an instruction has the type and detail that it must have. The rules are
/// told in QxVerifier.h, under "Operands" and "Detail"; what an instruction wants stands in
/// `SqxLayout::types`.
class QxOperandCheck {
public:
    /// `facts`: of all variables of the shader. `brackets`: of the block. All must outlive this.
    QxOperandCheck(const QxUntrustedBlock& block, const std::vector<QxOperandFacts>& facts,
                   const QxBrackets& brackets)
        : m_block(block),
          m_facts(facts),
          m_brackets(brackets)
    {
    }

    /// Throws `QxRefused` for the first operand that does not fit; the message is with the block.
    /// O(n) for n operands.
    void Run();

private:
    /// What the operands of one instruction have in common.
    struct Details {
        bool writesUniform = false;
        bool writesVarying = false;
        bool readsVarying = false;
    };

    void Check(std::size_t index);
    void CheckType(const SqxInstruction& instruction, std::size_t i) const;
    void CheckReference(const SqxInstruction& instruction) const;
    void CheckArrays(const SqxInstruction& instruction) const;
    [[nodiscard]] Details DetailsOf(const SqxInstruction& instruction) const;
    void CheckPlace(std::size_t index) const;
    void CheckDetails(std::size_t index) const;
    [[nodiscard]] const QxOperandFacts& Facts(const SqxInstruction& instruction,
                                              std::size_t i) const
    {
        return m_facts[static_cast<std::size_t>(m_block.code.Value(instruction, i))];
    }
    [[noreturn]] void RefuseOperand(const SqxInstruction& instruction, std::size_t i,
                                    const std::string& fault) const;

    const QxUntrustedBlock& m_block;
    const std::vector<QxOperandFacts>& m_facts;
    const QxBrackets& m_brackets;
};

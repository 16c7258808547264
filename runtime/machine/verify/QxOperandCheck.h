#pragma once

#include <vector>

#include "machine/verify/QxBrackets.h"
#include "machine/verify/QxUntrustedBlock.h"

/// Facts about a variable for the checks of its uses as an operand. The verifier makes one object
/// for each variable of a shader, in order, for all blocks.
struct QxOperandFacts {
    explicit QxOperandFacts(const SqxVariable& variable);

    unsigned char shape = 0;  // one bit; the same for points, vectors, normals and colors
    bool uniform = true;
    bool array = false;
    bool reference = false;
    bool constant = false;
};

/// Checks that each operand of an instruction has the required type and detail, and that
/// whole-grid instructions are outside parallel brackets. QxVerifier.h states the rules;
/// `SqxLayout::types` specifies the types for each instruction.
class QxOperandCheck {
public:
    /// `facts` are those of all variables of the shader, `brackets` those of the block. All must
    /// outlive this object.
    QxOperandCheck(const QxUntrustedBlock& block, const std::vector<QxOperandFacts>& facts,
                   const QxBrackets& brackets)
        : m_block(block),
          m_facts(facts),
          m_brackets(brackets)
    {
    }

    /// Throws `QxRefused` for the first instruction that is invalid, after storing the message in
    /// the verifier. O(n) for n operands.
    void Run();

private:
    /// The details of all operands of one instruction.
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

// One walk finds the brackets, then the jumps are checked. A file may nest brackets deeply, so
// the open brackets are a chain of indexes, not a recursion.
//
// The machine keeps a mask for each open condition and the number of the current light for each
// open loop. After a jump into or out of a bracket they would belong to the wrong bracket. A jump
// that only leaves loops over lights is accepted, since the machine then removes their numbers.
//
//     BEGIN_PARALLEL;  IF_TRUE f;  END_PARALLEL     refused: does not close what was opened last
//     BEGIN_ILLUMINANCE ->A;  GOTO A;  ...  A:      accepted: leaves a loop over lights
//
// Tested by tests/machine/QxVerifierTest.cpp, and by the fuzz target `bytecode`.

#include "machine/verify/QxBrackets.h"

#include "machine/verify/QxVerifier.h"

QxBrackets::QxBrackets(const QxUntrustedBlock& block)
{
    const auto& instructions = block.code.instructions;
    m_brackets.emplace_back();
    m_around.reserve(instructions.size() + 1);
    for (std::size_t i = 0; i < instructions.size(); ++i) {
        const SqxPrimitive mark = SqxBlock::Primitive(instructions[i]);
        m_around.push_back(m_open);
        if (SqxOpensBracket(mark))
            Open(block, i);
        else if (SqxClosesBracket(mark))
            Close(block, i);
    }
    if (m_open != 0)
        block.Refuse(instructions[m_brackets[m_open].first], "is a bracket that is not closed");
    m_around.push_back(0);
    for (std::size_t i = 0; i < instructions.size(); ++i)
        if (instructions[i].layout->operands.ends_with('j'))
            CheckJump(block, i);
}

void QxBrackets::Open(const QxUntrustedBlock& block, std::size_t index)
{
    const SqxPrimitive mark = SqxBlock::Primitive(block.code.instructions[index]);
    Bracket bracket;
    bracket.begin = mark;
    bracket.first = index;
    bracket.parent = m_open;
    bracket.depth = m_brackets[m_open].depth + 1;
    bracket.parallel = m_brackets[m_open].parallel || mark == SqxPrimitive::BEGIN_PARALLEL;
    if (bracket.depth > QxVerifier::k_deepestNesting)
        block.Refuse(block.code.instructions[index], "is a bracket that is nested too deeply");
    m_open = m_brackets.size();
    m_brackets.push_back(bracket);
}

void QxBrackets::Close(const QxUntrustedBlock& block, std::size_t index)
{
    const SqxInstruction& instruction = block.code.instructions[index];
    Bracket& bracket = m_brackets[m_open];
    if (m_open == 0 || !SqxClosesBracket(bracket.begin, SqxBlock::Primitive(instruction)))
        block.Refuse(instruction, "closes a bracket that was not opened last");
    bracket.last = index;
    if (bracket.begin == SqxPrimitive::BEGIN_ILLUMINANCE)
        CheckLoop(block, bracket);
    m_open = bracket.parent;
}

/// Checks that the start of a loop refers to the instruction after the end, and the end to the
/// instruction after the start.
void QxBrackets::CheckLoop(const QxUntrustedBlock& block, const Bracket& loop) const
{
    const auto& instructions = block.code.instructions;
    const auto after = [&](std::size_t index) {
        return index + 1 < instructions.size() ? instructions[index + 1].position
                                               : block.code.code.size();
    };
    const auto target = [&](std::size_t index) {
        return static_cast<std::size_t>(block.code.Value(instructions[index], 0));
    };
    if (target(loop.first) != after(loop.last) || target(loop.last) != after(loop.first))
        block.Refuse(instructions[loop.last], "does not end the loop over lights that it closes");
}

void QxBrackets::CheckJump(const QxUntrustedBlock& block, std::size_t index) const
{
    const SqxInstruction& jump = block.code.instructions[index];
    const SqxPrimitive mark = SqxBlock::Primitive(jump);
    if (mark == SqxPrimitive::BEGIN_ILLUMINANCE || mark == SqxPrimitive::END_ILLUMINANCE)
        return;
    const int position = block.code.Value(jump, jump.count - 1);
    const std::size_t target = m_around[block.code.IndexOf(static_cast<std::size_t>(position))];
    std::size_t from = m_around[index];
    while (from != target && m_brackets[from].begin == SqxPrimitive::BEGIN_ILLUMINANCE)
        from = m_brackets[from].parent;
    if (from != target)
        block.Refuse(jump, "goes into or out of brackets");
}

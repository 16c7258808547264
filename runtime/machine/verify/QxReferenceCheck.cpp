// Most references are bound right before their use, in a straight-line piece of code: one walk
// finds these. The others, called far, are tracked through the block as sets of references that are
// bound on all paths (the forward "must" problem of Gary Kildall, "A unified approach to global
// program optimization", 1973). A reference is never unbound, so a backward jump never removes
// anything from the set at its target, and one walk in the order of the code is enough unless the
// code jumps into the middle of a loop.
//
//     IF_TRUE_GOTO f ->L
//     ARRAY_REF e a 1
// L:  ASSIGN x e            here e may be unbound
//
// A conditional bracket counts as entered: the compiler binds a reference if any point needs it and
// uses it where such a point is active, but this check cannot see that one condition implies the
// other. So a reference may refer to elements of one array only, and the machine initially binds
// each reference to dummy elements.

#include "machine/verify/QxReferenceCheck.h"

#include <algorithm>

#include "sqx/SqxDump.h"

namespace {

constexpr int k_mostWalks = 16;  // the compiler's code needs only one
constexpr std::size_t k_wordBits = 64;

bool BindsReference(const SqxInstruction& instruction)
{
    return instruction.layout->types.starts_with('e');
}

}  // namespace

QxReferenceCheck::QxReferenceCheck(const QxUntrustedBlock& block,
                                   const std::vector<QxOperandFacts>& facts)
    : m_block(block),
      m_facts(facts)
{
}

void QxReferenceCheck::Run()
{
    FindArrays();
    FindJoins();
    FindFarReferences();
    if (m_far.empty())
        return;
    for (int walk = 1; Walk(); ++walk)
        if (walk == k_mostWalks)
            m_block.Refuse(m_block.code.instructions.back(),
                           "ends a block whose jumps are too tangled to follow its references");
}

std::size_t QxReferenceCheck::Target(const SqxInstruction& jump) const
{
    const int position = m_block.code.Value(jump, jump.count - 1);
    return m_block.code.IndexOf(static_cast<std::size_t>(position));
}

void QxReferenceCheck::FindJoins()
{
    m_isJoin.assign(m_block.code.instructions.size() + 1, false);
    for (const SqxInstruction& instruction : m_block.code.instructions)
        if (instruction.layout->operands.ends_with('j'))
            m_isJoin[Target(instruction)] = true;
}

void QxReferenceCheck::FindArrays()
{
    std::vector<int> arrays(m_facts.size(), -1);
    for (const SqxInstruction& instruction : m_block.code.instructions) {
        if (!BindsReference(instruction))
            continue;
        int& array = arrays[static_cast<std::size_t>(m_block.code.Value(instruction, 0))];
        if (array >= 0 && array != m_block.code.Value(instruction, 1))
            m_block.Refuse(instruction, "binds a reference to elements of two arrays");
        array = m_block.code.Value(instruction, 1);
    }
}

template <class Use>
void QxReferenceCheck::ForEachUse(const SqxInstruction& instruction, Use use) const
{
    for (std::size_t i = BindsReference(instruction) ? 1 : 0; i < instruction.count; ++i) {
        const char letter = SqxBlock::Letter(instruction, i);
        if (letter != 'r' && letter != 'w' && letter != 'm')
            continue;
        const auto number = static_cast<std::size_t>(m_block.code.Value(instruction, i));
        if (m_facts[number].reference)
            use(number);
    }
}

void QxReferenceCheck::FindFarReferences()
{
    std::vector<std::size_t> boundOn(m_facts.size(), 0);  // the straight-line piece where it was
                                                          // last bound
    std::size_t stretch = 1;
    for (std::size_t i = 0; i < m_block.code.instructions.size(); ++i) {
        const SqxInstruction& instruction = m_block.code.instructions[i];
        if (m_isJoin[i])
            ++stretch;
        ForEachUse(instruction, [&](std::size_t number) {
            if (boundOn[number] != stretch)
                m_far.emplace(number, m_far.size());
        });
        if (BindsReference(instruction))
            boundOn[static_cast<std::size_t>(m_block.code.Value(instruction, 0))] = stretch;
    }
}

/// Walks the code in order. Returns true if another walk is needed.
bool QxReferenceCheck::Walk()
{
    const std::size_t words = (m_far.size() + k_wordBits - 1) / k_wordBits;
    m_bound.assign(words, 0);
    m_changed = false;
    for (m_index = 0; m_index < m_block.code.instructions.size(); ++m_index) {
        if (m_isJoin[m_index]) {
            Flow(m_index);
            m_bound = m_atJoin[m_index];
        }
        Step(m_index);
    }
    return m_changed;
}

void QxReferenceCheck::Step(std::size_t index)
{
    const SqxInstruction& instruction = m_block.code.instructions[index];
    ForEachUse(instruction, [&](std::size_t number) {
        if (!IsBound(number))
            m_block.Refuse(instruction, "uses reference " +
                                            SqxVariableText(m_block.shader, number) +
                                            ", which may stand for nothing yet");
    });
    if (BindsReference(instruction))
        Bind(static_cast<std::size_t>(m_block.code.Value(instruction, 0)));
    if (instruction.layout->operands.ends_with('j'))
        Flow(Target(instruction));
    if (SqxBlock::Primitive(instruction) == SqxPrimitive::GOTO)
        std::fill(m_bound.begin(), m_bound.end(), ~std::uint64_t{0});  // not reachable by falling
                                                                       // through
}

/// Intersects the set at a jump target with the references that are bound now.
void QxReferenceCheck::Flow(std::size_t target)
{
    const auto [place, isNew] = m_atJoin.emplace(target, m_bound);
    if (isNew)
        return;
    for (std::size_t i = 0; i < m_bound.size(); ++i) {
        const std::uint64_t both = place->second[i] & m_bound[i];
        if (both != place->second[i] && target < m_index)
            m_changed = true;
        place->second[i] = both;
    }
}

void QxReferenceCheck::Bind(std::size_t reference)
{
    const auto far = m_far.find(reference);
    if (far != m_far.end())
        m_bound[far->second / k_wordBits] |= std::uint64_t{1} << (far->second % k_wordBits);
}

bool QxReferenceCheck::IsBound(std::size_t reference) const
{
    const auto far = m_far.find(reference);
    return far == m_far.end() ||
           (m_bound[far->second / k_wordBits] >> (far->second % k_wordBits) & 1) != 0;
}

// A library accesses its arguments through raw addresses, according to the types that it declares.
// So each call must match some overload in the number of arguments, and in the shape and length of
// the arguments and the result. It does not matter which overload the compiler chose, since all
// overloads share a method.
//
// Tested by tests/machine/QxShadeopCheckTest.cpp.

#include "machine/verify/QxShadeopCheck.h"

#include <algorithm>

#include "QxHostError.h"
#include "machine/verify/QxOperandCheck.h"
#include "sqx/SqxDump.h"

namespace {

// Values of a call: the number of the shadeop, the number of arguments, the result, the arguments.
constexpr std::size_t k_result = 2;

/// Types that code does not distinguish match each other.
bool FitsType(const SqxVariable& variable, const SqxShadeopType& wanted)
{
    SqxVariable declared;
    declared.type = wanted.type;
    if (QxOperandFacts(variable).shape != QxOperandFacts(declared).shape)
        return false;
    if (!wanted.array)
        return variable.size == 1;
    return wanted.size == 0 || wanted.size == variable.size;
}

}  // namespace

void QxShadeopCheck::Declare(std::size_t function, std::string_view declaration)
{
    SqxShadeopText text(declaration);
    const std::optional<SqxType> result = text.ReadReturnType();
    if (!result || text.ReadName() != m_shader.functions[function].method)
        return;
    Types types = {{*result}};
    do {
        const std::optional<SqxShadeopType> argument = text.ReadArgument(types.size() == 1);
        if (!argument)
            return;
        types.push_back(*argument);
    } while (!text.IsAtEnd());
    if (!text.ReadEnd())
        return;
    for (std::size_t k = 1; k < types.size(); ++k)
        if (types[k].array && types[k].type != SqxType::String)
            m_arrays.insert({function, types.size() - 1, k});
    m_overloads[function].push_back(std::move(types));
}

void QxShadeopCheck::Run() const
{
    CheckBlock(m_shader.main, "main");
    for (const SqxInitializer& initializer : m_shader.initializers)
        CheckBlock(initializer.code, m_shader.SectionOf(initializer));
}

void QxShadeopCheck::CheckBlock(const SqxBlock& block, const std::string& section) const
{
    for (const SqxInstruction& instruction : block.instructions)
        if (SqxBlock::Primitive(instruction) == SqxPrimitive::CALL_DSO)
            CheckCall(block, instruction, section);
}

void QxShadeopCheck::CheckCall(const SqxBlock& block, const SqxInstruction& call,
                               const std::string& section) const
{
    const auto function = static_cast<std::size_t>(block.Value(call, 0));
    const auto& overloads = m_overloads[function];
    if (std::none_of(overloads.begin(), overloads.end(),
                     [&](const Types& types) { return Fits(block, call, types); }))
        throw QxHostError(SqxFaultText(block.Line(call), section,
                                       SqxBlock::Place(call) + ": Shadeop '" +
                                           m_shader.functions[function].method +
                                           "' is called with other types than its library "
                                           "declares"));
}

bool QxShadeopCheck::Fits(const SqxBlock& block, const SqxInstruction& call,
                          const Types& types) const
{
    if (call.count != k_result + types.size())
        return false;
    for (std::size_t i = 0; i < types.size(); ++i)
        if (!FitsType(Variable(block, call, k_result + i), types[i]))
            return false;
    return true;
}

const SqxVariable& QxShadeopCheck::Variable(const SqxBlock& block, const SqxInstruction& call,
                                            std::size_t i) const
{
    return m_shader.variables[static_cast<std::size_t>(block.Value(call, i))];
}

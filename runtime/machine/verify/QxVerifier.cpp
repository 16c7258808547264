// Verifies first the names, the variables, whose facts the operands are checked against, and the
// results of initializers; then each block: its brackets, its operands, its references, in this
// order, since each step relies on the previous ones.
//
// A single fault rejects the whole file: the compiler does not write such code, so the file is
// damaged or malicious. Kernels need not repeat these checks for each point.
//
// Tested by tests/machine/QxVerifierTest.cpp, and by the fuzz target `bytecode`.

#include "machine/verify/QxVerifier.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

#include "machine/verify/QxBrackets.h"
#include "machine/verify/QxOperandCheck.h"
#include "machine/verify/QxReferenceCheck.h"
#include "sqx/SqxDump.h"

namespace {

/// Returns the size in bytes of one element in the machine; for a string, an upper bound.
std::size_t BytesOf(SqxType type)
{
    switch (type) {
    case SqxType::Point:
    case SqxType::Color:
    case SqxType::Vector:
    case SqxType::Normal:
        return 3 * sizeof(float);
    case SqxType::Matrix:
        return 16 * sizeof(float);
    case SqxType::String:
        return sizeof(std::string);
    case SqxType::Float:
    case SqxType::Int:
    case SqxType::Bool:
        return sizeof(float);
    }
    return sizeof(float);
}

void VerifyBlock(const QxUntrustedBlock& block, const std::vector<QxOperandFacts>& facts)
{
    const QxBrackets brackets(block);
    QxOperandCheck(block, facts, brackets).Run();
    QxReferenceCheck(block, facts).Run();
}

}  // namespace

bool QxVerifier::Verify(const SqxShader& shader)
{
    m_message.clear();
    try {
        VerifyNames(shader);
        VerifyVariables(shader);
        const std::vector<QxOperandFacts> facts(shader.variables.begin(), shader.variables.end());
        VerifyInitializers(shader);
        using Kind = QxUntrustedBlock::Kind;
        for (const SqxInitializer& initializer : shader.initializers) {
            const Kind kind = initializer.perPoint ? Kind::PointInitializer : Kind::OnceInitializer;
            VerifyBlock({shader, initializer.code, kind, shader.SectionOf(initializer), m_message},
                        facts);
        }
        VerifyBlock({shader, shader.main, Kind::Main, "main", m_message}, facts);
    } catch (const QxRefused&) {
        return false;
    }
    return true;
}

void QxVerifier::Refuse(int line, const std::string& section, const std::string& fault)
{
    m_message = SqxFaultText(line, section, fault);
    throw QxRefused();
}

/// Two predefined variables of the same name would share their memory, and a host finds parameters
/// by name.
void QxVerifier::VerifyNames(const SqxShader& shader)
{
    std::unordered_set<std::string_view> predefined;
    std::unordered_set<std::string_view> parameters;
    for (std::size_t i = 0; i < shader.predefinedCount + shader.parameterCount; ++i) {
        const SqxVariable& variable = shader.variables[i];
        auto& names = i < shader.predefinedCount ? predefined : parameters;
        if (!names.insert(variable.name).second)
            Refuse(variable.line, "variables", "'" + variable.name + "' is there twice");
    }
}

void QxVerifier::VerifyVariables(const SqxShader& shader)
{
    std::size_t bytes = 0;
    std::size_t pointBytes = 0;
    for (const SqxVariable& variable : shader.variables) {
        VerifyVariable(shader, variable);
        (variable.uniform ? bytes : pointBytes) +=
            BytesOf(variable.type) * static_cast<std::size_t>(variable.size);
        if (bytes > k_mostBytes || pointBytes > k_mostPointBytes)
            Refuse(variable.line, "variables", "The variables are too large");
    }
}

void QxVerifier::VerifyVariable(const SqxShader& shader, const SqxVariable& variable)
{
    const auto number = static_cast<std::size_t>(&variable - shader.variables.data());
    const auto refuse = [&](const char* fault) {
        Refuse(variable.line, "variables",
               "Variable " + SqxVariableText(shader, number) + ' ' + fault);
    };
    const auto size = static_cast<std::size_t>(variable.size);
    if (variable.kind == SqxVariableKind::Constant)
        return;
    if (size < 1 || size > k_longestArray)
        refuse("is an array of a length that cannot be");
    if (variable.type == SqxType::Int ||
        (variable.type == SqxType::Bool && variable.kind == SqxVariableKind::Parameter))
        refuse("has a type that it cannot have");
    if (variable.type == SqxType::Bool && (size != 1 || variable.reference))
        refuse("is an array of flags");
    if (variable.reference && size != 1)
        refuse("is a reference and an array");
}

void QxVerifier::VerifyInitializers(const SqxShader& shader)
{
    std::unordered_set<std::size_t> parameters;
    for (const SqxInitializer& initializer : shader.initializers) {
        if (!parameters.insert(initializer.parameter).second)
            Refuse(initializer.line, shader.SectionOf(initializer), "The parameter has two");
        VerifyResult(shader, initializer);
    }
}

/// The value is copied to the parameter without conversion, so type and length must be equal.
void QxVerifier::VerifyResult(const SqxShader& shader, const SqxInitializer& initializer)
{
    const auto number = static_cast<std::size_t>(initializer.result);
    const SqxVariable& result = shader.variables[number];
    const SqxVariable& parameter = shader.Parameter(initializer.parameter);
    const bool sameType = QxOperandFacts(result).shape == QxOperandFacts(parameter).shape &&
                          result.size == parameter.size && !result.reference;
    const bool ofMain = result.kind == SqxVariableKind::Local && number < shader.mainCount;
    if (!sameType || ofMain || (parameter.uniform && !result.uniform))
        Refuse(initializer.resultLine, shader.SectionOf(initializer),
               SqxVariableText(shader, number) + " cannot become the parameter's value");
}

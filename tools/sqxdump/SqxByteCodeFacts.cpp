// Most facts are in the sections of the file. The use of predefined variables and lights is derived
// from the instructions; a shared object contains it as a list. The machine computes default
// values. It gets the shader without its main block, so that errors in that block do not matter.
//
// Tested by tests/run/SqxDumpToolTest.cpp and tests/listing.

#include <algorithm>
#include <set>

#include "QxHostError.h"
#include "host/QxByteCodeShader.h"
#include "sqx/SqxObjectFacts.h"
#include "sqx/SqxReader.h"
#include "sqxdump/SqxShaderFacts.h"

namespace {

using Facts = SqxShaderFacts;

// One of these precedes each access to lights.
constexpr std::string_view k_evalLights = "EVAL_LIGHTS";
constexpr std::string_view k_evalLightsForP = "EVAL_LIGHTS_FOR_P";

/// The uses of predefined variables and lights in all blocks of a shader.
class CodeFacts {
public:
    explicit CodeFacts(const SqxObjectFacts& object) : m_usesLights(object.UsesLights())
    {
        for (const SqxObjectFacts::Use& use : object.Uses()) {
            m_read.push_back(use.read);
            m_written.push_back(use.written);
        }
    }
    explicit CodeFacts(const SqxShader& shader)
        : m_read(shader.predefinedCount, false),
          m_written(shader.predefinedCount, false)
    {
        for (const SqxInitializer& initializer : shader.initializers) {
            Look(initializer.code);
            if (initializer.result >= 0)
                Mark(m_read, initializer.result);
        }
        Look(shader.main);
    }

    [[nodiscard]] bool UsesLights() const { return m_usesLights; }
    [[nodiscard]] bool UsesLightsAtP() const { return m_usesLightsAtP; }
    [[nodiscard]] bool Reads(std::size_t predefined) const { return m_read[predefined]; }
    [[nodiscard]] bool Writes(std::size_t predefined) const { return m_written[predefined]; }

private:
    void Look(const SqxBlock& block)
    {
        for (const SqxInstruction& instruction : block.instructions) {
            m_usesLightsAtP = m_usesLightsAtP || instruction.layout->name == k_evalLightsForP;
            m_usesLights =
                m_usesLights || m_usesLightsAtP || instruction.layout->name == k_evalLights;
            for (std::size_t i = 0; i < instruction.count; ++i)
                LookAt(SqxBlock::Letter(instruction, i), block.Value(instruction, i));
        }
    }

    void LookAt(char letter, int value)
    {
        if (letter == 'r' || letter == 'm' || letter == 'c')
            Mark(m_read, value);
        if (SqxIsWritten(letter))
            Mark(m_written, value);
    }

    /// Predefined variables have the first numbers.
    static void Mark(std::vector<bool>& marks, int variable)
    {
        if (static_cast<std::size_t>(variable) < marks.size())
            marks[static_cast<std::size_t>(variable)] = true;
    }

    std::vector<bool> m_read;  // by number
    std::vector<bool> m_written;
    bool m_usesLights = false;
    bool m_usesLightsAtP = false;
};

/// If the reader did not reach the end of the file, uses that were found are facts, and all others
/// are unknown.
std::optional<bool> AsFarAsSeen(bool seen, const SqxShader& shader)
{
    if (!seen && shader.reached < SqxSection::Main)
        return std::nullopt;
    return seen;
}

/// True for a variable with a result of the shader. The renderer uses it, so that the file may list
/// it although no instruction names it.
bool IsResult(const SqxShader& shader, const std::string& name)
{
    constexpr int k_light = 3;
    const std::vector<std::string_view> results =
        shader.shaderType == k_light ? std::vector<std::string_view>{"L", "Cl", "Ol"}
                                     : std::vector<std::string_view>{"Ci", "Oi"};
    return std::ranges::find(results, name) != results.end();
}

/// Returns how the shader uses predefined variable `i`. Adds reads that no instruction shows: of
/// `P` for lights, and of variables, except results, that a complete file lists but no instruction
/// names, such as `Ng` for `faceforward`.
Facts::Predefined PredefinedFacts(const SqxShader& shader, const CodeFacts& code, std::size_t i)
{
    const std::string& name = shader.variables[i].name;
    const bool isNamed = code.Reads(i) || code.Writes(i);
    const bool isWhole = shader.reached == SqxSection::Main;
    const bool readUnnamed = isWhole && !isNamed && !IsResult(shader, name);
    const bool readByLights = name == "P" && code.UsesLightsAtP();
    return {name, AsFarAsSeen(code.Reads(i) || readUnnamed || readByLights, shader),
            AsFarAsSeen(code.Writes(i), shader)};
}

Facts::Parameter ParameterFacts(const SqxShader& shader, const SqxVariable& variable)
{
    Facts::Parameter parameter;
    parameter.name = variable.name;
    parameter.varying = !variable.uniform;
    parameter.type = static_cast<QxValueType>(static_cast<int>(variable.type));
    if (variable.text.ends_with(']'))
        parameter.arrayLength = static_cast<std::size_t>(variable.size);
    parameter.space = variable.space;
    if (shader.reached >= SqxSection::Flags)
        parameter.output = variable.output;
    return parameter;
}

bool CallsShadeops(const SqxBlock& block)
{
    return std::ranges::any_of(block.instructions, [](const SqxInstruction& instruction) {
        return instruction.layout->operands.starts_with('d');
    });
}

/// True if an instruction of the initializer reads a parameter in the set, or if its result is one.
bool NamesOneOf(const SqxShader& shader, const SqxInitializer& initializer,
                const std::set<std::size_t>& parameters)
{
    const auto names = [&](int variable) {
        const auto number = static_cast<std::size_t>(variable);
        return number >= shader.predefinedCount &&
               parameters.contains(number - shader.predefinedCount);
    };
    const SqxBlock& block = initializer.code;
    for (const SqxInstruction& instruction : block.instructions)
        for (std::size_t i = 0; i < instruction.count; ++i)
            if (std::string_view("rm").find(SqxBlock::Letter(instruction, i)) !=
                    std::string_view::npos &&
                names(block.Value(instruction, i)))
                return true;
    return names(initializer.result);
}

/// Whether default values that call shadeops are computed.
enum class Shadeops { Called, LeftOut };

/// Returns the shader without its main block, with those initializers whose values can be computed:
/// they are complete and do not depend on unknown values, and call shadeops only if `shadeops`
/// allows it.
SqxShader OnlyInitializers(const SqxShader& shader, Shadeops shadeops)
{
    SqxShader only = shader;
    only.main = SqxBlock();
    only.initializers.clear();
    // At first, the values of parameters without an initializer are unknown.
    std::set<std::size_t> unknown;
    for (std::size_t i = 0; i < shader.parameterCount; ++i)
        unknown.insert(i);
    for (const SqxInitializer& initializer : shader.initializers)
        unknown.erase(initializer.parameter);
    bool calls = false;
    for (const SqxInitializer& initializer : shader.initializers) {
        const bool callsHere = CallsShadeops(initializer.code);
        if (initializer.result < 0 || (callsHere && shadeops == Shadeops::LeftOut) ||
            NamesOneOf(shader, initializer, unknown)) {
            unknown.insert(initializer.parameter);
            continue;
        }
        calls = calls || callsHere;
        only.initializers.push_back(initializer);
    }
    // Libraries that only the main block needs are not required.
    if (!calls) {
        only.functions.clear();
        only.libraries.clear();
    }
    return only;
}

void TakeDefaults(const SqxShader& only, const std::string& name,
                  const std::vector<std::string>& folders, Facts& facts)
{
    const auto values = QxByteCodeShader(only, name, folders).Defaults();
    for (const SqxInitializer& initializer : only.initializers) {
        Facts::Parameter& parameter = facts.parameters[initializer.parameter];
        parameter.value = values[initializer.parameter];
        parameter.defaultIs = parameter.value ? Facts::Default::Known : Facts::Default::PerPoint;
    }
}

void AddDefaults(const SqxShader& shader, const std::string& name, const SqxTrustedFolders& folders,
                 Facts& facts)
{
    // The reader checks the numbers of shadeops in initializers after it has read their list.
    const bool areChecked = shader.reached >= SqxSection::Facts;
    const SqxShader most =
        OnlyInitializers(shader, areChecked ? Shadeops::Called : Shadeops::LeftOut);
    try {
        if (!folders && !most.libraries.empty())
            throw QxHostError("A default value calls a shadeop; '--load' loads its library, which "
                              "runs its code");
        TakeDefaults(most, name, folders.value_or(std::vector<std::string>()), facts);
        return;
    } catch (const QxHostError& error) {
        facts.defaultsFault = error.what();
    }
    if (most.libraries.empty())
        return;
    try {
        TakeDefaults(OnlyInitializers(shader, Shadeops::LeftOut), name, {}, facts);
    } catch (const QxHostError& error) {
        facts.defaultsFault = error.what();
    }
}

Facts FactsOf(const SqxShader& shader, const CodeFacts& code, const std::string& name,
              const SqxTrustedFolders& shadeopFolders)
{
    Facts facts;
    if (shader.reached == SqxSection::None)
        return facts;
    facts.type = SqxShaderTypeName(shader.shaderType);
    for (std::size_t i = 0; i < shader.parameterCount; ++i)
        facts.parameters.push_back(ParameterFacts(shader, shader.Parameter(i)));
    for (std::size_t i = 0; i < shader.predefinedCount; ++i)
        facts.predefined.push_back(PredefinedFacts(shader, code, i));
    facts.usesLights = AsFarAsSeen(code.UsesLights(), shader);
    if (shader.reached >= SqxSection::Facts) {
        facts.tracesRays = shader.usesRaytracing;
        facts.modifiesP = shader.modifiesP;
    }
    if (shader.reached >= SqxSection::Shadeops)
        facts.shadeopLibraries = shader.libraries;
    AddDefaults(shader, name, shadeopFolders, facts);
    return facts;
}

}  // namespace

SqxShaderFacts SqxByteCodeFacts(std::string_view bytes, const std::string& name,
                                const SqxTrustedFolders& shadeopFolders)
{
    SqxReader reader;
    const bool isWhole = reader.Read(bytes);
    Facts facts = FactsOf(reader.Shader(), CodeFacts(reader.Shader()), name, shadeopFolders);
    if (!isWhole)
        facts.fault = {reader.FaultLine(), reader.Message()};
    return facts;
}

std::optional<SqxShaderFacts> SqxStoredFacts(std::string_view bytes, const std::string& name,
                                             const SqxTrustedFolders& shadeopFolders)
{
    const auto* const data = reinterpret_cast<const std::byte*>(bytes.data());
    const SqxElfFile file(std::vector<std::byte>(data, data + bytes.size()));
    if (!file.IsLibrary())
        throw QxHostError("It is no library of this machine, or cut short");
    const SqxObjectFacts object(file);
    if (object.Found() == SqxObjectFacts::State::Absent)
        return std::nullopt;
    Facts facts = FactsOf(object.Shader(), CodeFacts(object), name, shadeopFolders);
    facts.kind = Facts::Kind::SharedObject;
    if (object.Found() == SqxObjectFacts::State::Damaged)
        facts.fault = {object.FaultLine(), object.Message()};
    return facts;
}

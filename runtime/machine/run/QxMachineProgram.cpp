// Loads a file into the machine: read, verify, translate, load the libraries. Each step relies on
// the previous ones, so errors are thrown in this order.
//
// The AVX2 kernels are the same source compiled for that instruction set; the choice is made here,
// once per program.
//
// Tested by tests/machine, tests/host/HostTest.cpp and the fuzz target `bytecode`.

#include "machine/run/QxMachineProgram.h"

#include <algorithm>

#include "QxHostError.h"
#include "machine/translate/QxTranslator.h"
#include "machine/verify/QxVerifier.h"
#include "sqx/SqxReader.h"

namespace {

QxShaderInterface::QxType TypeOf(int code)
{
    static constexpr QxShaderInterface::QxType types[] = {
        QxShaderInterface::e_typeSurface, QxShaderInterface::e_typeDisplacement,
        QxShaderInterface::e_typeVolume, QxShaderInterface::e_typeLight,
        QxShaderInterface::e_typeImager};
    return types[code];
}

/// `illuminate` and `solar` give a light a position or a direction.
bool IsLightStatement(const SqxInstruction& instruction)
{
    const SqxPrimitive primitive = SqxBlock::Primitive(instruction);
    return primitive == SqxPrimitive::ILLUMINATE ||
           primitive == SqxPrimitive::ILLUMINATE_NO_CONE || primitive == SqxPrimitive::SOLAR;
}

SqxShader ReadWhole(std::string_view bytes, const std::string& name)
{
    SqxReader reader;
    if (!reader.Read(bytes))
        throw QxHostError("'" + name + "' is no shader in byte-code: " + reader.Message());
    return reader.TakeShader();
}

}  // namespace

QxMachineProgram::QxMachineProgram(std::string_view bytes, const std::string& name,
                                   const std::vector<std::string>& shadeopFolders,
                                   QxKernelChoice kernels)
    : QxMachineProgram(ReadWhole(bytes, name), name, shadeopFolders, kernels)
{
}

QxMachineProgram::QxMachineProgram(const SqxShader& shader, std::string name,
                                   const std::vector<std::string>& shadeopFolders,
                                   QxKernelChoice kernels)
    : m_name(std::move(name))
{
    QxVerifier verifier;
    if (!verifier.Verify(shader))
        throw QxHostError("'" + m_name + "' cannot be run safely: " + verifier.Message());
    m_type = TypeOf(shader.shaderType);
    for (std::size_t i = 0; i < shader.predefinedCount; ++i)
        m_predefined.push_back(shader.variables[i].name);
    for (std::size_t i = 0; i < shader.parameterCount; ++i) {
        const SqxVariable& parameter = shader.Parameter(i);
        m_parameters.push_back({parameter.name,
                                static_cast<QxValueType>(static_cast<int>(parameter.type)),
                                !parameter.uniform, static_cast<std::size_t>(parameter.size),
                                parameter.output, parameter.needsObjectSpace, parameter.space});
    }
    m_spaces = shader.spaces;
    m_shadeopLibraries = shader.libraries;
    m_tracesRays = shader.usesRaytracing;
    m_modifiesP = shader.modifiesP;
    m_isAmbient = m_type == QxShaderInterface::e_typeLight &&
                  std::none_of(shader.main.instructions.begin(), shader.main.instructions.end(),
                               IsLightStatement);

    auto code = std::make_unique<QxMachineCode>();
    code->isLight = m_type == QxShaderInterface::e_typeLight;
    const bool avx2 =
        kernels == QxKernelChoice::Avx2 || (kernels == QxKernelChoice::Best && HasAvx2());
    if (avx2 && !HasAvx2())
        throw QxHostError("This processor does not have AVX2");
    try {
        QxTranslator(shader, QxKernelTable::For(avx2), *code).Run();
    } catch (const QxHostError& error) {
        throw QxHostError("'" + m_name + "' cannot be run: " + error.what());
    }
    if (!shader.functions.empty())
        code->shadeops = std::make_unique<QxShadeops>(shader, shadeopFolders);
    m_code = std::move(code);
}

QxMachineProgram::~QxMachineProgram() = default;

bool QxMachineProgram::HasAvx2()
{
#ifdef QX_HAS_AVX2
    return __builtin_cpu_supports("avx2") != 0;
#else
    return false;
#endif
}

bool QxMachineProgram::IsDefaultPerPoint(std::size_t parameter) const
{
    return std::any_of(
        m_code->perPoint.begin(), m_code->perPoint.end(),
        [parameter](const auto& initializer) { return initializer.parameter == parameter; });
}

std::size_t QxMachineProgram::InstructionCount() const
{
    return m_code->instructions;
}

void QxMachineProgram::Declare(std::vector<QxVar>& variables) const
{
    for (std::size_t i = 0; i < variables.size(); ++i)
        variables[i].Declare(m_parameters[i].name.c_str(), m_parameters[i].type,
                             m_parameters[i].varying, m_parameters[i].length);
}

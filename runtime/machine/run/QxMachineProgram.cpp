// Loads a file into the machine: reads, verifies and translates it, and checks its shadeops against
// the tables of their libraries. Each step relies on the previous ones, so errors are thrown in
// this order.
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
    m_info = QxInfoOf(shader);

    auto code = std::make_unique<QxMachineCode>();
    if (!shader.functions.empty())
        code->shadeops = std::make_unique<QxShadeops>(shader, shadeopFolders);
    const bool avx2 =
        kernels == QxKernelChoice::Avx2 || (kernels == QxKernelChoice::Best && HasAvx2());
    if (avx2 && !HasAvx2())
        throw QxHostError("This processor does not have AVX2");
    try {
        QxTranslator(shader, QxKernelTable::For(avx2), *code).Run();
    } catch (const QxHostError& error) {
        throw QxHostError("'" + m_name + "' cannot be run: " + error.what());
    }
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

#pragma once

#include "host/QxShader.h"
#include "machine/run/QxMachineProgram.h"

/// A shader in byte-code. All runs share one translated program, and each has separate memory. Runs
/// count their steps and can be stopped.
class QxByteCodeShader : public QxShader {
public:
    /// As `QxShader::Read`; `kernels` selects the instruction set of the kernels, for tests that
    /// compare them. The bytes are not needed after the call. Throws `QxHostError`, which says what
    /// is wrong with the file or its shadeop libraries, or that the processor cannot run `kernels`.
    QxByteCodeShader(std::string_view bytes, const std::string& name,
                     const std::vector<std::string>& shadeopFolders,
                     QxKernelChoice kernels = QxKernelChoice::Best);
    /// As above, for a shader that `SqxReader` has read completely.
    QxByteCodeShader(const SqxShader& shader, const std::string& name,
                     const std::vector<std::string>& shadeopFolders);

    [[nodiscard]] std::unique_ptr<QxShaderRun> NewRun() const override;

protected:
    [[nodiscard]] bool IsDefaultPerPoint(std::size_t parameter) const override;

private:
    class Run;

    QxMachineProgram m_program;
};

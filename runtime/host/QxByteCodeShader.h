#pragma once

#include "host/QxShader.h"
#include "machine/run/QxMachineProgram.h"

/// A shader of byte-code. Each run has a machine of its own; the program is one for all of them.
/// Runs count steps and can be stopped.
class QxByteCodeShader : public QxShader {
public:
    /// As `QxShader::Read`; `kernels` is for comparisons. Keeps nothing of the bytes. Throws
    /// `QxHostError`, which says what is wrong with the file or its shadeop libraries.
    QxByteCodeShader(std::string_view bytes, const std::string& name,
                     const std::vector<std::string>& shadeopFolders,
                     QxKernelChoice kernels = QxKernelChoice::Best);
    /// The same for what `SqxReader` has read. All of it must have been read.
    QxByteCodeShader(const SqxShader& shader, const std::string& name,
                     const std::vector<std::string>& shadeopFolders);

    [[nodiscard]] std::unique_ptr<QxShaderRun> NewRun() const override;

protected:
    [[nodiscard]] bool IsDefaultPerPoint(std::size_t parameter) const override;

private:
    class Run;

    QxMachineProgram m_program;
};

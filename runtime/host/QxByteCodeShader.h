#pragma once

#include "host/QxShader.h"
#include "machine/QxMachineProgram.h"

/// A shader of byte-code. Each run has a machine of its own.
class QxByteCodeShader : public QxShader {
public:
    /// Throws `QxHostError`.
    QxByteCodeShader(std::string_view bytes, const std::string& name,
                     const std::vector<std::string>& shadeopFolders,
                     QxKernelChoice kernels = QxKernelChoice::Best);

    [[nodiscard]] std::unique_ptr<QxShaderRun> NewRun() const override;

protected:
    [[nodiscard]] bool IsDefaultPerPoint(std::size_t parameter) const override;

private:
    class Run;

    QxMachineProgram m_program;
};

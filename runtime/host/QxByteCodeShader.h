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
    /// The same for a file that was read whole, less what nothing refers to.
    QxByteCodeShader(const SqxShader& shader, const std::string& name,
                     const std::vector<std::string>& shadeopFolders);

    [[nodiscard]] std::unique_ptr<QxShaderRun> NewRun() const override;

protected:
    [[nodiscard]] bool IsDefaultPerPoint(std::size_t parameter) const override;

private:
    class Run;

    void TakeInterface();

    QxMachineProgram m_program;
};

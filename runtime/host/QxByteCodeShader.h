#pragma once

#include "host/QxShader.h"

/// A shader of byte-code.
class QxByteCodeShader : public QxShader {
public:
    /// Throws `QxHostError`.
    QxByteCodeShader(std::string_view bytes, const std::string& name,
                     const std::vector<std::string>& shadeopFolders);

    [[nodiscard]] std::unique_ptr<QxShaderRun> NewRun() const override;

protected:
    [[nodiscard]] bool IsDefaultPerPoint(std::size_t parameter) const override;
};

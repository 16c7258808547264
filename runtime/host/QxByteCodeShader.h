#pragma once

#include "host/QxShader.h"

/// A shader of byte-code.
class QxByteCodeShader : public QxShader {
public:
    /// Throws `QxHostError`.
    QxByteCodeShader(std::string_view bytes, const std::string& name,
                     const std::vector<std::string>& shadeopFolders);

    void Initialize(const QxShadingContext& context, const QxFrame3D** spaces,
                    std::vector<QxVar>& variables) const override;
    void Evaluate(const QxGrid& layout, const QxShadingContext& context,
                  const QxHiddenVariables& hidden, std::vector<QxVar>& variables,
                  std::vector<QxLightInput>& lights) const override;

protected:
    [[nodiscard]] bool IsDefaultPerPoint(std::size_t parameter) const override;
};

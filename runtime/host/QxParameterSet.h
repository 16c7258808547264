#pragma once

#include <map>
#include <memory>
#include <string>

#include "host/QxHostValue.h"
#include "host/QxShader.h"
#include "host/QxVersion.h"

/// Values for parameters of a shader, such as those of one object. Instances shade with one set
/// after the other, see `QxShaderInstance::Use`; parameters without a value have their default.
///
/// Sets of one shader may be read in any number of threads, but not changed meanwhile.
class QxParameterSet {
public:
    struct Setting {
        QxHostValue value;
        bool forEachPoint;
    };

    explicit QxParameterSet(std::shared_ptr<const QxShader> shader) : m_shader(std::move(shader)) {}

    [[nodiscard]] const QxShader& Shader() const { return *m_shader; }

    /// One element, or all those of an array. Throws `QxHostError` for an unknown parameter,
    /// another type or another length.
    void Set(QxParameterHandle parameter, const QxHostValue& value);
    void Set(const std::string& name, const QxHostValue& value)
    {
        Set(m_shader->Handle(name), value);
    }
    /// A value for each point of the grids to come, of a varying parameter. Their number is
    /// compared with the grid when the shader runs.
    void SetForEachPoint(QxParameterHandle parameter, const QxHostValue& values);
    void SetForEachPoint(const std::string& name, const QxHostValue& values)
    {
        SetForEachPoint(m_shader->Handle(name), values);
    }
    /// The parameter has its default value again.
    void Reset(QxParameterHandle parameter);
    void Reset(const std::string& name) { Reset(m_shader->Handle(name)); }

    // For instances.

    /// Null for a parameter with its default value.
    [[nodiscard]] const Setting* Find(std::size_t parameter) const;
    /// Another number for each content, of all sets that there ever were.
    [[nodiscard]] unsigned long Version() const { return m_version; }

private:
    [[nodiscard]] const QxShader::Parameter& Fitting(QxParameterHandle parameter,
                                                     const QxHostValue& value) const;

    std::shared_ptr<const QxShader> m_shader;
    std::map<std::size_t, Setting> m_settings;  // by parameter
    unsigned long m_version = QxNextVersion();
};

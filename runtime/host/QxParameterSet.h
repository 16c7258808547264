#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/QxHostValue.h"
#include "host/QxShader.h"
#include "host/QxVersion.h"

/// Values for the parameters of a shader, such as those for one object of a scene. An
/// instance can switch between sets, see `QxShaderInstance::Use`. A parameter without a value here
/// has its default.
///
/// Any number of threads may read a set at a time, but not while one changes it.
class QxParameterSet {
public:
    struct Setting {
        QxHostValue value;
        bool forEachPoint;  // `value` has a value for each point, in place of one for all
    };

    /// All parameters have their default values. The set keeps the shader alive.
    explicit QxParameterSet(std::shared_ptr<const QxShader> shader)
        : m_shader(std::move(shader)),
          m_settings(m_shader->Parameters().size())
    {
    }

    [[nodiscard]] const QxShader& Shader() const { return *m_shader; }

    /// Sets a parameter to one value for all points; an array, to the values of all its elements.
    /// Throws `QxHostError` for an unknown parameter, and for a wrong type or number of elements.
    void Set(QxParameterHandle parameter, const QxHostValue& value);
    void Set(const std::string& name, const QxHostValue& value)
    {
        Set(m_shader->Handle(name), value);
    }
    /// Sets a varying parameter to a value for each point, in the layout of `QxHostValue`. Throws
    /// `QxHostError` for an unknown or uniform parameter or a wrong type. The number of values is
    /// compared with the grid when the shader runs.
    void SetForEachPoint(QxParameterHandle parameter, const QxHostValue& values);
    void SetForEachPoint(const std::string& name, const QxHostValue& values)
    {
        SetForEachPoint(m_shader->Handle(name), values);
    }
    /// Returns a parameter to its default value. Throws `QxHostError` for an unknown parameter.
    void Reset(QxParameterHandle parameter);
    void Reset(const std::string& name) { Reset(m_shader->Handle(name)); }

    // For instances.

    /// Returns the value of a parameter, by its position; null if it has its default.
    [[nodiscard]] const Setting* Find(std::size_t parameter) const
    {
        return m_settings[parameter] ? &*m_settings[parameter] : nullptr;
    }
    /// A number that changes with each change of a value. Sets with different values never have the
    /// same number.
    [[nodiscard]] unsigned long Version() const { return m_version; }

private:
    /// Returns the index of the parameter. Throws `QxHostError` if it does not exist.
    [[nodiscard]] std::size_t CheckHandle(QxParameterHandle parameter) const;
    /// Returns the parameter. Throws `QxHostError` if it does not exist or `value` does not fit its
    /// type.
    [[nodiscard]] const QxShader::Parameter& CheckType(QxParameterHandle parameter,
                                                       const QxHostValue& value) const;

    std::shared_ptr<const QxShader> m_shader;
    std::vector<std::optional<Setting>> m_settings;  // by parameter
    unsigned long m_version = QxNextVersion();
};

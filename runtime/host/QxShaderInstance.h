#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/QxHostGrid.h"
#include "host/QxHostScene.h"
#include "host/QxHostValue.h"
#include "host/QxShaderObject.h"

/// A shader with values for its parameters, which shades grids.
class QxShaderInstance {
public:
    /// All parameters have their default values. The object must outlive the instance.
    explicit QxShaderInstance(const QxShaderObject& object);

    [[nodiscard]] const QxShaderObject& Object() const { return m_object; }

    /// Sets a parameter for this and later runs: one element, or all those of an array. Throws
    /// `QxHostError` for an unknown parameter, another type or another length.
    void Set(const std::string& name, const QxHostValue& value);
    /// The same for a varying parameter with a value for each point of the grids to come. Their
    /// number is compared with the grid when the shader runs.
    void SetForEachPoint(const std::string& name, const QxHostValue& values);

    /// Shades the grid: reads its predefined variables and writes those that the shader writes.
    /// Output parameters start from their default values each time. Throws `QxHostError`.
    void Run(QxHostGrid& grid, QxHostScene& scene);
    /// The same with services of the caller's own and that many lights, which they run.
    void Run(QxHostGrid& grid, QxShaderSupport& support, unsigned int lightCount);

    /// A parameter as the last run left it: one value if it is uniform, else one for each point;
    /// of an array, all of its first element come first. Throws `QxHostError`.
    [[nodiscard]] QxHostValue Get(const std::string& name);

private:
    struct Setting {
        QxHostValue value;
        bool forEachPoint;
    };
    struct LightValues {
        std::vector<QxVector3> L;
        std::vector<QxRGBColor> Cl;
        std::vector<QxRGBColor> Ol;
    };

    [[nodiscard]] std::size_t Find(const std::string& name) const;
    [[nodiscard]] std::size_t FindFitting(const std::string& name, const QxHostValue& value) const;
    void MakeLights(std::size_t points, unsigned int count);
    void PrepareVariables(std::size_t points, const QxShadingContext& context);
    void ApplySetting(std::size_t parameter, std::size_t points);

    const QxShaderObject& m_object;
    std::vector<QxVar> m_variables;             // one for each parameter
    std::map<std::size_t, Setting> m_settings;  // by parameter
    std::size_t m_points = 0;                   // that the variables are made for; 0: anew
    std::vector<LightValues> m_lights;
    std::vector<QxLightInput> m_lightInputs;
};

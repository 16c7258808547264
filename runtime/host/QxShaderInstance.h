#pragma once

#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/QxHostGrid.h"
#include "host/QxHostScene.h"
#include "host/QxHostSpaces.h"
#include "host/QxHostValue.h"
#include "host/QxShader.h"

/// A shader with values for its parameters and spaces of its own, which shades grids.
///
/// Each thread needs instances of its own; they may be of one shader.
class QxShaderInstance {
public:
    /// All parameters have their default values. The shader's spaces are looked up by name among
    /// those of the instance, and then in `spaces`, which must outlive it. Spaces may be defined,
    /// and defined anew, between two runs; default values follow them.
    QxShaderInstance(std::shared_ptr<const QxShader> shader, QxHostSpaces& spaces);

    [[nodiscard]] const QxShader& Shader() const { return *m_shader; }
    /// Those that are this instance's alone, such as "shader".
    [[nodiscard]] QxHostSpaces& Spaces() { return m_spaces; }
    [[nodiscard]] const QxHostSpaces& Spaces() const { return m_spaces; }

    /// Sets a parameter for this and later runs: one element, or all those of an array. Throws
    /// `QxHostError` for an unknown parameter, another type or another length.
    void Set(const std::string& name, const QxHostValue& value);
    /// The same for a varying parameter with a value for each point of the grids to come. Their
    /// number is compared with the grid when the shader runs.
    void SetForEachPoint(const std::string& name, const QxHostValue& values);
    /// Later runs keep a parameter in `values`, which stay the caller's: laid out as `Get` gives
    /// them, and as many as the grids to come need. What they hold is the parameter's value; an
    /// output parameter starts from its value as without them and leaves its result there. Throws
    /// `QxHostError` for an unknown parameter and for strings.
    void SetBuffer(const std::string& name, std::span<float> values);

    /// A run that takes more steps is ended with a `QxHostError`. Only byte-code is watched.
    void SetStepLimit(std::size_t limit) { m_run->SetStepLimit(limit); }
    /// A run asks `test` now and then, every few milliseconds unless the scene takes long to
    /// answer, and ends with a `QxHostStopped` when it says so. None is asked after an empty one.
    /// Only byte-code is watched.
    void SetStopTest(QxStopTest test) { m_run->SetStopTest(std::move(test)); }

    /// Shades the grid: reads its predefined variables and writes those that the shader writes.
    /// Output parameters start from their default values each time. Throws `QxHostError`, also if a
    /// predefined variable that the shader uses is missing; what was written by then stays.
    void Run(const QxHostPoints& points, QxHostScene& scene);
    /// The same with services of the caller's own and that many lights, which they run: whoever
    /// derives from `QxShaderSupport` need not have a `QxHostScene`.
    void Run(const QxHostPoints& points, QxShaderSupport& support, unsigned int lightCount);

    /// A parameter as the last run left it: one value if it is uniform, else one for each point;
    /// of an array, all of its first element come first. A copy. Throws `QxHostError` for an
    /// unknown parameter.
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
    void CheckPoints(const QxHostPoints& points) const;
    void FindSpaces();
    void MakeLights(std::size_t points, unsigned int count);
    void PrepareVariables(std::size_t points, const QxShadingContext& context);
    void MakeRoom(std::size_t parameter, std::size_t points);
    void ApplySetting(std::size_t parameter, std::size_t points);

    std::shared_ptr<const QxShader> m_shader;
    std::unique_ptr<QxShaderRun> m_run;
    QxHostSpaces m_spaces;
    std::vector<const QxFrame3D*> m_spaceList;          // as the shader numbers them
    unsigned long m_spaceChanges = 0;                   // that the list knows of; 0: none
    std::vector<QxVar> m_variables;                     // one for each parameter
    std::map<std::size_t, Setting> m_settings;          // by parameter
    std::map<std::size_t, std::span<float>> m_buffers;  // by parameter
    std::size_t m_points = 0;                           // that the variables are made for; 0: anew
    std::vector<LightValues> m_lights;
    std::vector<QxLightInput> m_lightInputs;
};

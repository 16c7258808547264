#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "QxLights.h"
#include "machine/SqxProgram.h"
#include "machine/SqxStore.h"
#include "sqx/SqxReader.h"

/// Runs a byte-code file over a grid of shading points.
///
/// This simple interpreter trusts neither the file nor the compiler. Forbidden actions end a run
/// with a fault: for example reading a flag that was never set, using a varying value outside the
/// points, a jump within parallel brackets, or an endless loop. It calls the primitives of the run
/// time, and for some elementary functions the standard library.
class SqxMachine {
public:
    SqxMachine();
    ~SqxMachine();

    // Loading and running. These functions return false after a fault, which `Message` describes.

    [[nodiscard]] bool Load(const std::string& path);
    [[nodiscard]] bool LoadText(std::string_view text);
    /// Computes the default values of parameters that were not set, then runs the main block. Each
    /// run starts from the initial state. It is also a fault if a predefined variable or an output
    /// parameter has an element at the end that nothing has written.
    [[nodiscard]] bool Run();
    /// Returns the fault of the last `Load`, `LoadText` or `Run`; empty if there was none.
    [[nodiscard]] const std::string& Message() const { return m_message; }

    // These functions set the inputs of a run, which stay set for later runs.

    /// Sets the grid; 3 by 2 points by default.
    void SetGrid(unsigned int columns, unsigned int rows) { m_grid = {columns, rows}; }
    /// Sets the numbers of a predefined variable or parameter: for the whole grid, or for each
    /// point in turn. Another count of numbers is a fault of `Run`; names that the shader does not
    /// have are ignored. A predefined variable that is not set has the values of
    /// `SqxDefaultValues`, which describe a curved patch.
    void Set(const std::string& name, std::vector<float> numbers);
    /// Sets a text parameter at all points.
    void SetText(const std::string& name, std::string text);
    /// Sets the matrix from the space `name` to the current space. A space that is not set is the
    /// current space.
    void SetSpace(const std::string& name, const QxMatrix44& toCurrent);
    /// Sets the object that answers the queries of the shader; null for a new `SqxScene` in each
    /// run, the default. It must outlive the runs.
    void SetSupport(QxShaderSupport* support) { m_givenSupport = support; }
    /// Sets how many lights the support evaluates; two by default.
    void SetLightCount(std::size_t count) { m_lightCount = count; }
    /// Sets the function that runs for calls of the shadeop whose method in the file is `method`.
    void SetShadeop(const std::string& method, std::function<void(const SqxCall&)> function);
    /// Sets the highest number of `Steps`; a run with more ends with a fault.
    void SetStepLimit(std::size_t limit) { m_stepLimit = limit; }

    // These functions return the loaded shader and the results of the last run.

    [[nodiscard]] const SqxShader& Shader() const { return m_reader.Shader(); }
    /// Returns the numbers of a predefined variable or parameter at a point; empty if there is no
    /// such variable or no run. Throws `SqxFault` if it is a text, or if it is varying and `point`
    /// is `k_uniformPoint`.
    [[nodiscard]] std::vector<float> ValueOf(const std::string& name, std::size_t point);
    /// Returns the text of a parameter at a point; empty if there is no such parameter or no run.
    /// Throws `SqxFault` if it is not a text.
    [[nodiscard]] std::string TextOf(const std::string& name, std::size_t point);
    /// Returns the number of executed instructions. An instruction within parallel brackets counts
    /// once for each point.
    [[nodiscard]] std::size_t Steps() const { return m_steps; }

    // These functions are for the operations of primitives.

    [[nodiscard]] QxShaderSupport& Support() { return *m_support; }
    /// Returns the next random number of a point; for `QxDraws::k_allPoints`, the next number that
    /// all points share.
    [[nodiscard]] float RandomNumber(unsigned int point)
    {
        return m_support->RandomNumber(point, m_draws.Next(point));
    }
    [[nodiscard]] const QxFrame3D& Space(const std::string& name) const;
    [[nodiscard]] const QxFrame3D& SpaceByNumber(int number) const;
    [[nodiscard]] bool IsLight() const;
    /// Returns the lights. Throws `SqxFault` if they are not evaluated for `P`, or if the code has
    /// reset them since then because `P` has changed.
    [[nodiscard]] QxLights Lights() const;
    /// Returns the current light of the innermost light loop. Throws `SqxFault` outside of loops.
    [[nodiscard]] const QxLightInput& CurrentLight() const;
    /// Returns a predefined variable at a point; its value in `SqxDefaultValues` if the file does
    /// not list it.
    [[nodiscard]] QxVector3 PredefinedTriple(const char* name, std::size_t point);

private:
    struct Setting {
        std::vector<float> numbers;
        std::string text;
    };
    struct LightLoop {
        std::size_t begin;  // index of the instruction
        std::size_t light;
    };
    struct LightValues {
        std::vector<QxVector3> L;
        std::vector<QxRGBColor> Cl;
        std::vector<QxRGBColor> Ol;
    };

    void Prepare();
    void Start();
    void RunInitializers();
    void CheckResults();
    void RunProgram(const SqxProgram& program, bool initializer);
    [[nodiscard]] std::size_t RunStep(const SqxProgram& program, std::size_t index);
    void RunPlain(const SqxCode& code);
    void RunSimd(const SqxCode& code);
    void RunParallel(const SqxProgram& program, std::size_t begin, std::size_t end);
    void RunPoint(const SqxProgram& program, std::size_t begin, std::size_t end, std::size_t point);
    void RunAt(const SqxCode& code, std::size_t point);
    [[nodiscard]] bool Flag(const SqxCode& code, std::size_t point);
    [[nodiscard]] bool Enters(const SqxCode& code, std::size_t point);
    /// Ends the doubt that began at an IF, at the end of its bracket.
    void Leaves(const SqxCode& code);
    void CheckIndex(const SqxCall& call);
    void CallShadeop(const SqxCode& code, const SqxCall& call);
    void Count();

    void EvaluateLights(const std::vector<QxVector3>& positions);
    [[nodiscard]] std::size_t BeginLights(const SqxCode& code, std::size_t index);
    [[nodiscard]] std::size_t EndLights(const SqxCode& code, std::size_t index);
    void TakeLight(std::size_t light);

    void ApplySettings();
    void SetVariable(std::size_t number, std::span<const float> numbers);
    void CopyResult(std::size_t parameter, std::size_t result);
    [[nodiscard]] std::optional<std::size_t> FindNamed(const std::string& name) const;
    [[nodiscard]] std::string Place(const SqxCode& code) const;

    SqxReader m_reader;
    std::unique_ptr<SqxProgram> m_main;
    std::vector<SqxProgram> m_initializers;  // by position in the shader's list
    std::unique_ptr<SqxStore> m_store;
    std::string m_message;

    QxGrid m_grid{3, 2};
    std::map<std::string, Setting> m_settings;
    std::map<std::string, QxFrame3D> m_spaces;
    QxFrame3D m_current;
    std::map<std::string, std::function<void(const SqxCall&)>> m_shadeops;
    QxShaderSupport* m_givenSupport = nullptr;
    std::unique_ptr<QxShaderSupport> m_ownSupport;
    QxShaderSupport* m_support = nullptr;
    std::size_t m_lightCount = 2;
    std::size_t m_stepLimit = 10'000'000;

    std::size_t m_steps = 0;
    QxDraws m_draws;
    bool m_inInitializer = false;
    bool m_lightsAreForP = false;
    std::vector<QxVector3> m_litPositions;
    std::vector<LightValues> m_lights;
    std::vector<QxLightInput> m_lightInputs;
    std::vector<LightLoop> m_lightLoops;  // innermost last
    // The outermost IF that was entered although nothing has written its flag; null outside its
    // bracket.
    const SqxCode* m_doubt = nullptr;
    const SqxCode* m_running = nullptr;  // for the message of a fault
};

#include "shaders/SharedRun.h"

#include <algorithm>
#include <cmath>

#include "host/QxByteCodeShader.h"
#include "host/QxHost.h"
#include "machine/SqxDefaults.h"
#include "machine/SqxScene.h"

namespace {

constexpr unsigned int k_lights = 2;

struct Space {
    const char* name;
    QxMatrix44 toCurrent;
};

std::vector<Space> Spaces()
{
    QxMatrix44 world = QxMatrix44::Identity();
    world[3][0] = 4;
    world[1][1] = 2;
    return {{"world", world}, {"shader", QxMatrix44::Scaling(0.5F)}};
}

void SetAsMachine(QxHostGrid& grid)
{
    for (const char* name :
         {"Cs", "Os", "Ci", "Oi", "Cl", "Ol", "P",  "Ps",   "I",    "N",     "Ng",     "L",
          "E",  "u",  "v",  "s",  "t",  "du", "dv", "dPdu", "dPdv", "alpha", "ncomps", "time"})
        grid.Set(name, {grid.Get(name).type, SqxDefaultValues(name, grid.Layout())});
}

/// Returns the parameter of that name; null for a predefined variable.
const QxShader::Parameter* Find(const QxShader& shader, const std::string& name)
{
    const auto found = std::find_if(shader.Parameters().begin(), shader.Parameters().end(),
                                    [&](const auto& parameter) { return parameter.name == name; });
    return found == shader.Parameters().end() ? nullptr : &*found;
}

/// Returns the numbers in the order of the machine of the tests: point by point, the elements of an
/// array together, and a uniform value at each point.
std::vector<float> PointAfterPoint(const QxShader::Parameter& parameter,
                                   const std::vector<float>& numbers, std::size_t points)
{
    const std::size_t width = QxFloatCount(parameter.type);
    std::vector<float> result;
    for (std::size_t point = 0; point < points; ++point)
        for (std::size_t element = 0; element < parameter.length; ++element) {
            const std::size_t place = parameter.varying ? element * points + point : element;
            const float* from = numbers.data() + place * width;
            result.insert(result.end(), from, from + width);
        }
    return result;
}

/// True for variables that, except in light shaders, exist only in a light loop.
bool IsOfLight(const std::string& name)
{
    return name == "L" || name == "Cl" || name == "Ol";
}

/// Runs the shader in the host library, and returns the outputs whose names are in `byteCode`.
RunOutcome RunInHost(const std::shared_ptr<const QxShader>& shader, const RunOutcome& byteCode,
                     const QxGrid& layout)
{
    QxHostSpaces spaces;
    for (const Space& space : Spaces())
        spaces.Define(space.name, QxFrame3D(space.toCurrent));
    QxShaderInstance instance(shader, spaces);
    QxHostGrid grid(layout.columns, layout.rows);
    SetAsMachine(grid);
    SqxScene scene;
    instance.Run(grid, scene, k_lights);

    RunOutcome outcome;
    for (const auto& [name, unused] : byteCode.outputs) {
        const QxShader::Parameter* parameter = Find(*shader, name);
        const std::vector<float> numbers =
            parameter ? instance.Get(name).numbers : grid.Get(name).numbers;
        outcome.outputs.push_back(
            {name, parameter ? PointAfterPoint(*parameter, numbers, layout.Size()) : numbers});
    }
    outcome.text = scene.Printed();
    for (const std::string& report : scene.Reports())
        outcome.text += report + '\n';
    return outcome;
}

template <class Open>
RunOutcome RunOpened(const Open& open, const RunOutcome& byteCode, const QxGrid& layout)
{
    RunOutcome outcome;
    try {
        outcome = RunInHost(open(), byteCode, layout);
    } catch (const QxHostError& error) {
        outcome.fault = error.what();
    }
    return outcome;
}

}  // namespace

RunOutcome RunByteCode(const std::string& byteCode)
{
    SqxMachine machine;
    machine.SetLightCount(k_lights);
    for (const Space& space : Spaces())
        machine.SetSpace(space.name, space.toCurrent);
    RunOutcome outcome = RunShader(machine, byteCode);
    if (!machine.IsLight())
        std::erase_if(outcome.outputs, [](const auto& output) { return IsOfLight(output.name); });
    return outcome;
}

RunOutcome RunShared(const std::string& path, const RunOutcome& byteCode, const QxGrid& layout)
{
    return RunOpened([&] { return QxShader::Open(path); }, byteCode, layout);
}

RunOutcome RunMachine(const std::string& text, QxKernelChoice kernels, const RunOutcome& byteCode,
                      const QxGrid& layout)
{
    const auto open = [&] {
        return std::make_shared<QxByteCodeShader>(text, "shader", std::vector<std::string>(),
                                                  kernels);
    };
    return RunOpened(open, byteCode, layout);
}

std::string BitDifference(const RunOutcome& first, const RunOutcome& second)
{
    if (std::string difference = ShapeDifference(first, second); !difference.empty())
        return difference;
    for (std::size_t i = 0; i < first.outputs.size(); ++i) {
        const std::vector<float>& a = first.outputs[i].numbers;
        const std::vector<float>& b = second.outputs[i].numbers;
        for (std::size_t j = 0; j < a.size(); ++j)
            if (a[j] != b[j] && !(std::isnan(a[j]) && std::isnan(b[j])))
                return first.outputs[i].name + ", number " + std::to_string(j) + ": " +
                       std::to_string(a[j]) + " and " + std::to_string(b[j]);
    }
    return "";
}

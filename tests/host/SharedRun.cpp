#include "host/SharedRun.h"

#include <algorithm>

#include "host/QxHost.h"
#include "machine/SqxDefaults.h"
#include "machine/SqxScene.h"

namespace {

constexpr QxGrid k_grid = {3, 2};
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
        grid.Set(name, {grid.Get(name).type, SqxDefaultValues(name, k_grid)});
}

bool IsPredefined(const QxShader& shader, const std::string& name)
{
    return std::none_of(shader.Parameters().begin(), shader.Parameters().end(),
                        [&](const auto& parameter) { return parameter.name == name; });
}

const QxShader::Parameter& Find(const QxShader& shader, const std::string& name)
{
    return *std::find_if(shader.Parameters().begin(), shader.Parameters().end(),
                         [&](const auto& parameter) { return parameter.name == name; });
}

/// As the machine gives them: the elements of an array together, and a uniform value at each point.
std::vector<float> PointAfterPoint(const QxShader::Parameter& parameter,
                                   const std::vector<float>& numbers)
{
    const std::size_t width = QxFloatCount(parameter.type);
    const std::size_t points = k_grid.Size();
    std::vector<float> result;
    for (std::size_t point = 0; point < points; ++point)
        for (std::size_t element = 0; element < parameter.length; ++element) {
            const std::size_t place = parameter.varying ? element * points + point : element;
            const float* from = numbers.data() + place * width;
            result.insert(result.end(), from, from + width);
        }
    return result;
}

/// What is a light's own elsewhere are the light at hand in a surface, gone behind the loop.
bool IsOfLight(const std::string& name)
{
    return name == "L" || name == "Cl" || name == "Ol";
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

RunOutcome RunShared(const std::string& path, const RunOutcome& byteCode)
{
    RunOutcome outcome;
    try {
        QxSpaceRegistry spaces;
        for (const Space& space : Spaces())
            spaces.Define(space.name, QxFrame3D(space.toCurrent));
        const auto shader = QxShader::Open(path);
        QxShaderInstance instance(shader, spaces);
        QxHostGrid grid(k_grid.columns, k_grid.rows);
        SetAsMachine(grid);
        SqxScene scene;
        instance.Run(grid, scene, k_lights);

        for (const auto& [name, unused] : byteCode.outputs) {
            if (IsPredefined(*shader, name))
                outcome.outputs.push_back({name, grid.Get(name).numbers});
            else
                outcome.outputs.push_back(
                    {name, PointAfterPoint(Find(*shader, name), instance.Get(name).numbers)});
        }
        outcome.text = scene.Printed();
        for (const std::string& report : scene.Reports())
            outcome.text += report + '\n';
    } catch (const QxHostError& error) {
        outcome.fault = error.what();
    }
    return outcome;
}

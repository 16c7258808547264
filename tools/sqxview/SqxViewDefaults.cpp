// Default values in named spaces are transformed when a run begins, because only a scene defines
// the spaces. So this file starts a run and reads the values from it.
//
// Tested by tests/sqxview/SqxViewSessionTest.cpp.

#include "sqxview/SqxViewDefaults.h"

#include "picture/SqxPictureScene.h"

namespace {

[[nodiscard]] bool IsInOwnSpace(const QxShader::Parameter& parameter)
{
    return !parameter.space.empty() && parameter.space != "current" && parameter.space != "rgb";
}

/// Runs the shader at one point, which first transforms the default values. The run is stopped at
/// its first stop test; a short run ends before.
void Prepare(QxShaderInstance& instance, SqxPictureScene& scene)
{
    QxHostGrid grid(1, 1);
    instance.SetStopTest([] { return true; });
    try {
        instance.Run(grid, scene);
    } catch (const QxHostStopped&) {
        return;  // the values have been transformed
    }
}

}  // namespace

std::vector<std::optional<QxHostValue>>
SqxViewDefaults(const std::shared_ptr<const QxShader>& shader, const SqxPictureSettings& settings)
{
    std::vector<std::optional<QxHostValue>> values = shader->Defaults();
    const SqxShape shape(settings.shape);
    SqxPictureScene scene(settings, shape);
    QxShaderInstance instance(shader, scene.Spaces());
    if (shader->Type() == QxShaderInterface::e_typeLight)
        SqxPictureScene::PlaceLight(instance);
    bool isPrepared = false;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const QxShader::Parameter& parameter = shader->Parameters()[i];
        if (!values[i] || !IsInOwnSpace(parameter))
            continue;
        if (!isPrepared)
            Prepare(instance, scene);
        isPrepared = true;
        values[i] = instance.Get(parameter.name);
    }
    return values;
}

#pragma once

#include <memory>
#include <vector>

#include "Geometry.h"
#include "TextureScene.h"

/// A shader with values for its parameters, for any number of instances.
struct ShaderSetting {
    std::shared_ptr<const QxShader> shader;
    QxParameterSet values = QxParameterSet(shader);

    /// Its "shader" and "object" spaces are at `toWorld`. This and `spaces` must outlive it.
    [[nodiscard]] std::unique_ptr<QxShaderInstance> NewInstance(QxHostSpaces& spaces,
                                                                const QxMatrix44& toWorld) const;
};

/// What an object does to the light that would pass it.
enum class ShadowKind {
    Opaque,  // it keeps all light away, whatever its shader computes
    Shader,  // its shader is asked for its opacity
    None,
};

struct PlacedObject {
    std::shared_ptr<const ShaderSetting> surface;
    QxMatrix44 toWorld;
    QxRGBColor color;
    QxRGBColor opacity;
    ShadowKind shadow;
    bool isRound;  // after 1, s goes on with 0
};

struct PlacedLight {
    std::shared_ptr<const ShaderSetting> shader;
    QxMatrix44 toWorld;
};

/// All that a picture is made of. While it is rendered, all threads read it and none changes it.
struct World {
    unsigned int width = 320;
    unsigned int height = 240;
    unsigned int samples = 2;    // along an edge of a pixel
    unsigned int rayLevels = 6;  // of what is seen by mirrors in mirrors and the like
    QxMatrix44 camera = QxMatrix44::Identity();  // to world space; it looks along z, y is up
    float cameraAngle = 45;                      // across the shorter edge of the picture, degrees
    QxRGBColor sky = {0, 0, 0};  // where rays leave the scene; times the map, if there is one
    const SqxTexture* skyMap = nullptr;  // one of `textures`
    Textures textures;
    std::vector<PlacedObject> objects;  // as `geometry` numbers them
    std::vector<PlacedLight> lights;
    Geometry geometry;
};

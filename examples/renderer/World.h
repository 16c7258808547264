#pragma once

#include <memory>
#include <vector>

#include "Geometry.h"
#include "TextureScene.h"

/// A shader with values for its parameters, which any number of instances share.
struct ShaderSetting {
    std::shared_ptr<const QxShader> shader;
    QxParameterSet values = QxParameterSet(shader);

    /// Creates an instance that uses `values`, with `toWorld` as its "shader" and "object" spaces.
    /// This object and `spaces` must outlive it.
    [[nodiscard]] std::unique_ptr<QxShaderInstance> NewInstance(QxHostSpaces& spaces,
                                                                const QxMatrix44& toWorld) const;
};

/// How an object blocks light on its way to a lit point; for `occlusion` each object is opaque.
enum class ShadowKind {
    Opaque,  // blocks all light, whatever its shader computes
    Shader,  // runs its surface shader, and blocks as much light as its `Oi` says
    None,    // blocks no light
};

struct PlacedObject {
    std::shared_ptr<const ShaderSetting> surface;
    QxMatrix44 toWorld;
    QxRGBColor color;
    QxRGBColor opacity;
    ShadowKind shadow;
    bool isRound;  // s is periodic: 1 is followed by 0
};

struct PlacedLight {
    std::shared_ptr<const ShaderSetting> shader;
    QxMatrix44 toWorld;
};

/// Everything that a picture shows. While it is rendered, all threads read it and none changes it.
struct World {
    unsigned int width = 320;
    unsigned int height = 240;
    unsigned int samples = 2;    // along each edge of a pixel
    unsigned int rayLevels = 6;  // maximum depth of `trace`, such as between two mirrors
    QxMatrix44 camera = QxMatrix44::Identity();  // to world space; looks along z, and y is up
    float cameraAngle = 45;                      // across the shorter edge of the picture, degrees
    QxRGBColor sky = {0, 0, 0};  // of rays that hit nothing; multiplied by the map, if there is one
    const SqxTexture* skyMap = nullptr;  // one of `textures`, or null
    Textures textures;
    std::vector<PlacedObject> objects;  // numbered as in `geometry`
    std::vector<PlacedLight> lights;
    Geometry geometry;
};

#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Geometry.h"
#include "host/QxHost.h"
#include "picture/SqxTexture.h"

/// A shader with values for its parameters, for any number of instances.
struct ShaderSetting {
    std::shared_ptr<const QxShader> shader;
    std::vector<std::pair<std::string, QxHostValue>> values;

    /// Its "shader" space is at `toWorld`. `spaces` must outlive the instance.
    [[nodiscard]] std::unique_ptr<QxShaderInstance> NewInstance(QxHostSpaces& spaces,
                                                                const QxMatrix44& toWorld) const;
};

/// What an object does to the light that would pass it.
enum class ShadowKind {
    Opaque,  // it keeps all light away, whatever its shader says
    Shader,  // its shader is asked for its opacity
    None,
};

struct PlacedObject {
    std::shared_ptr<const ShaderSetting> surface;
    QxMatrix44 toWorld;
    QxRGBColor color;
    QxRGBColor opacity;
    ShadowKind shadow;
};

struct PlacedLight {
    std::shared_ptr<const ShaderSetting> shader;
    QxMatrix44 toWorld;
};

struct Camera {
    QxMatrix44 toWorld = QxMatrix44::Identity();  // it looks along z, y is up
    float angle = 45;                             // across the shorter edge of the picture, degrees

    [[nodiscard]] QxVector3 Eye() const { return QxTransformPoint({0, 0, 0}, toWorld); }
};

using Textures = std::map<std::string, std::shared_ptr<const SqxTexture>, std::less<>>;

/// All that a picture is made of. While it is rendered, all threads read it and none changes it.
struct World {
    unsigned int width = 320;
    unsigned int height = 240;
    unsigned int samples = 2;    // along an edge of a pixel
    unsigned int rayLevels = 6;  // of what is seen by mirrors in mirrors and the like
    Camera camera;
    QxRGBColor sky = {0, 0, 0};  // where rays leave the scene; times the map, if there is one
    const SqxTexture* skyMap = nullptr;  // one of `textures`
    Textures textures;                   // by the name that shaders know them by
    std::vector<PlacedObject> objects;
    std::vector<PlacedLight> lights;
    Geometry geometry;
};

#pragma once

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "host/QxShader.h"

class SqxTexture;

enum class SqxShapeKind { Sphere, Square, Torus };

/// Thrown if something that a picture needs is missing or invalid, or if the picture cannot be
/// written. The text is for the user.
class SqxPictureError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A light. Its positions are relative to the middle of the shape.
struct SqxPictureLight {
    enum class Kind { Ambient, Point, Distant };

    Kind kind = Kind::Ambient;
    QxVector3 from = {0, 0, 0};  // position, or start of the direction of a distant light
    QxVector3 to = {0, 0, 0};    // end of the direction of a distant light
    QxRGBColor color = {1, 1, 1};
    float intensity = 1;
};

/// Everything that a picture depends on, and the number of threads, which does not change it.
struct SqxPictureSettings {
    struct Shader {
        std::shared_ptr<const QxShader> shader;
        std::vector<std::pair<std::string, QxHostValue>> values;  // of parameters
    };

    std::vector<Shader> shaders;  // at most one of each type, except lights
    SqxShapeKind shape = SqxShapeKind::Sphere;
    unsigned int width = 256;
    unsigned int height = 256;
    unsigned int samples = 3;                          // along each edge of a pixel
    QxRGBColor background = {0.047F, 0.055F, 0.073F};  // all colors are linear
    QxRGBColor color = {1, 1, 1};                      // of the surface, `Cs`
    QxRGBColor opacity = {1, 1, 1};                    // `Os`
    std::vector<SqxPictureLight> lights;  // if empty and there is no light shader: default lights
    std::map<std::string, std::shared_ptr<const SqxTexture>, std::less<>> textures;  // by name
    unsigned int threads = 0;  // 0: one for each core
};

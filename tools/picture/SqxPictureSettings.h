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

/// Thrown if a picture cannot be rendered or written. The text is for the user.
class SqxPictureError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct SqxPictureLight {
    enum class Kind { Ambient, Point, Distant };

    Kind kind = Kind::Ambient;
    QxVector3 from = {0, 0, 0};  // its position, relative to the middle of the shape
    QxVector3 to = {0, 0, 0};    // where a distant one points
    QxRGBColor color = {1, 1, 1};
    float intensity = 1;
};

/// Everything that a picture depends on.
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

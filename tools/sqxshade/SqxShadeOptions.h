#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "QxValues.h"

/// What ends the program. The text is for the user.
class SqxShadeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct SqxShadeLight {
    enum class Kind { Ambient, Point, Distant };

    Kind kind = Kind::Ambient;
    QxVector3 from = {0, 0, 0};  // where it stands, as seen from the middle of the shape
    QxVector3 to = {0, 0, 0};    // where a distant one points
    QxRGBColor color = {1, 1, 1};
    float intensity = 1;
};

/// What the command line asks for.
struct SqxShadeOptions {
    struct Shader {
        std::string path;
        std::vector<std::pair<std::string, std::string>> parameters;  // names and values, as typed
    };

    std::vector<Shader> shaders;
    std::string output;
    bool square = false;
    unsigned int width = 256;
    unsigned int height = 256;
    unsigned int samples = 3;  // along each edge of a pixel
    QxRGBColor background = {0.24F, 0.26F, 0.3F};
    QxRGBColor color = {1, 1, 1};    // of the surface, `Cs`
    QxRGBColor opacity = {1, 1, 1};  // `Os`
    std::vector<SqxShadeLight> lights;
    std::vector<std::string> folders;  // of included files and shadeop libraries, absolute
    std::vector<std::string> definitions;
    bool help = false;
};

/// Throws `SqxShadeError`.
[[nodiscard]] SqxShadeOptions SqxReadShadeOptions(const std::vector<std::string>& arguments);

/// What `--help` prints.
[[nodiscard]] std::string SqxShadeHelp();

/// The numbers of a list such as `1,0.5,-2`. Throws `SqxShadeError`, which tells of `what`.
[[nodiscard]] std::vector<float> SqxReadNumbers(const std::string& text, const std::string& what);

/// The pieces of a text between separators, also empty ones.
[[nodiscard]] std::vector<std::string> SqxSplit(const std::string& text, char separator);

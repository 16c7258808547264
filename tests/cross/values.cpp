// Prints the results of shaders on a grid, which must be the same on all architectures: the bits of
// numbers, with the same bits for all NaNs, and texts. If a shader cannot be run, prints the error.
// usage: values SHADER.sqx...

#include <bit>
#include <cstdio>
#include <exception>

#include "host/QxHost.h"

namespace {

void Print(const std::string& name, const QxHostValue& value)
{
    std::printf(" %s", name.c_str());
    for (const float number : value.numbers)
        std::printf(" %08x", std::bit_cast<unsigned int>(number == number ? number : 0 / 0.F));
    for (const std::string& text : value.texts)
        std::printf(" '%s'", text.c_str());
    std::puts("");
}

void Shade(const char* path)
{
    QxHostScene scene;
    QxMatrix44 place = QxMatrix44::Scaling(2);
    place[3][0] = place[3][3] = 1;
    scene.Spaces().Define("world", QxFrame3D(place));
    scene.AddPointLight({0, 2, -2}, {1, 0.9F, 0.8F});
    scene.AddAmbientLight({0.1F, 0.1F, 0.1F});

    QxShaderInstance shader(QxShader::Open(path), scene.Spaces());
    QxHostGrid grid(7, 5);
    grid.Set("time", 0.375);
    shader.Run(grid, scene);
    std::puts(shader.Shader().Name().c_str());
    for (const char* name : {"P", "N", "Ci", "Oi", "L", "Cl", "Ol", "alpha"})
        Print(name, grid.Get(name));
    for (const auto& parameter : shader.Shader().Parameters())
        if (parameter.output)
            Print(parameter.name, shader.Get(parameter.name));
}

}  // namespace

int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        try {
            Shade(argv[i]);
        } catch (const std::exception& error) {
            std::printf("%s: %s\n", argv[i], error.what());
        }
    }
}

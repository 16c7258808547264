// Opens, runs and destroys a surface and a light twice, so that sanitizers can check all of it. The
// surface must have the string parameter `name`, the array `names` of two strings, and the string
// output `said`, which is printed. Usage: host_life SURFACE LIGHT

#include <cstdio>

#include "host/QxHost.h"

namespace {

void Lead(const char* surfacePath, const char* lightPath)
{
    QxHostScene scene;
    const auto surface = QxShader::Open(surfacePath);
    QxShaderInstance lamp(QxShader::Open(lightPath), scene.Spaces());
    scene.AddLight(lamp);
    QxShaderInstance first(surface, scene.Spaces());
    QxShaderInstance second(surface, scene.Spaces());
    second.Set("name", "other");
    second.Set("names", std::vector<std::string>{"a", "b"});
    for (const unsigned int columns : {4U, 4U, 1U}) {
        QxHostGrid grid(columns, 3);
        first.Run(grid, scene);
        second.Run(grid, scene);
        std::printf("%s %s\n", first.Get("said").texts.at(0).c_str(),
                    second.Get("said").texts.at(0).c_str());
    }
}

}  // namespace

int main(int count, char** arguments)
{
    try {
        for (int life = 0; life < 2; ++life)
            Lead(arguments[1], arguments[count - 1]);
    } catch (const QxHostError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}

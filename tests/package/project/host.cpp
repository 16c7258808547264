// Shades one point with the file that the argument names, which is compiled from chalk.sl, and
// prints the color of the point.

#include <iostream>

#include "host/QxHost.h"

int main(int, char** argv)
{
    try {
        QxHostScene scene;
        scene.AddAmbientLight({0.5F, 0.5F, 0.5F});
        QxShaderInstance chalk(QxShader::Open(argv[1]), scene.Spaces());
        chalk.Set("gain", 0.5);
        QxHostGrid grid(1, 1);
        chalk.Run(grid, scene);
        const QxRGBColor color = grid.Values<QxRGBColor>("Ci")[0];
        std::cout << color.r << ' ' << color.g << ' ' << color.b << '\n';
    } catch (const QxHostError& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}

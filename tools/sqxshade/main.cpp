// Shades a shape with shaders and writes a picture, so that they can be looked at.

#include <iostream>

#include "sqxshade/SqxShadeJob.h"

int main(int argc, char** argv)
{
    try {
        const SqxShadeOptions options = SqxReadShadeOptions({argv + 1, argv + argc});
        if (options.help) {
            std::cout << SqxShadeHelp() << std::flush;
            return std::cout ? 0 : 1;
        }
        SqxShade(options);
    } catch (const std::runtime_error& error) {
        std::cerr << "sqxshade: " << error.what() << '\n';
        return 1;
    }
    return 0;
}

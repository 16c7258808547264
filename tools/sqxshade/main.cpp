// Shades a shape with shaders and writes a picture, so that they can be looked at.

#include <iostream>

#include "sqxshade/SqxShadeJob.h"

namespace {

/// What to end with if the words make no sense.
constexpr int k_usageStatus = 2;

int Fail(const std::exception& error, int status)
{
    std::cerr << "sqxshade: " << error.what() << '\n';
    return status;
}

int Run(const SqxShadeOptions& options)
{
    if (options.help) {
        std::cout << SqxHelpText(SqxShadeProgram()) << std::flush;
        return std::cout ? 0 : 1;
    }
    try {
        SqxShade(options);
    } catch (const std::runtime_error& error) {
        return Fail(error, 1);
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        return Run(SqxReadShadeOptions({argv + 1, argv + argc}));
    } catch (const SqxPictureError& error) {
        return Fail(error, k_usageStatus);
    }
}

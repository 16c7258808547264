// Shades a shape with shaders and writes a picture of it.

#include <iostream>

#include "sqxshade/SqxShadeJob.h"

namespace {

int Run(const SqxShadeOptions& options)
{
    if (options.information != SqxInformation::None)
        return SqxPrintInformation(SqxShadeProgram(), options.information);
    try {
        SqxShade(options);
    } catch (const std::runtime_error& error) {
        std::cerr << "sqxshade: " << error.what() << '\n';
        return 1;
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        return Run(SqxReadShadeOptions({argv + 1, argv + argc}));
    } catch (const SqxUsageError& error) {
        std::cerr << "sqxshade: " << error.what() << "; '--help' lists all options\n";
        return 2;
    }
}

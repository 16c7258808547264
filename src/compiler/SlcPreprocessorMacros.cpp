#include "compiler/SlcPreprocessorMacros.h"

std::vector<SlcPreprocessorOptions::Macro> SlcPreprocessorMacros()
{
    // Macros of the platform that the first shaders were written on.
    return {{"OMBRIUM"}, {"IRIX"}};
}

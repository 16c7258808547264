#include "compiler/SlcPreprocessorMacros.h"

std::vector<SlcPreprocessorOptions::Macro> SlcPreprocessorMacros()
{
    // Of the platform that the first shaders were written on.
    return {{"OMBRIUM"}, {"IRIX"}};
}

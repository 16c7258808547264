#include "compiler/SlcPreprocessorMacros.h"

std::vector<SlcPreprocessorOptions::Macro> SlcPreprocessorMacros()
{
    // Macros of the platform for which the first shaders were written.
    return {{"OMBRIUM"}, {"IRIX"}};
}

#pragma once

#include "symbols/SlcSymbolTable.h"

/// The symbol tables that are visible in a part of the source.
struct SlcScopes {
    SlcPtr<SlcSymbolTable> global;   // the built-ins, and the functions defined at file level
    SlcPtr<SlcSymbolTable> current;  // for declarations and look-ups
    SlcPtr<SlcSymbolTable> shader;   // predefined variables; null if the type of shader is unknown
    SlcPtr<SlcSymbolTable> illuminance;  // variables of a light loop, for functions of shaders that
                                         // see lights; null elsewhere
};

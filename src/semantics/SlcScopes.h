#pragma once

#include "symbols/SlcSymbolTable.h"

/// The tables that a part of the source sees.
struct SlcScopes {
    SlcPtr<SlcSymbolTable> global;       // the built-ins
    SlcPtr<SlcSymbolTable> current;      // gets declarations, and is searched for names
    SlcPtr<SlcSymbolTable> shader;       // predefined variables; null if the kind is unknown
    SlcPtr<SlcSymbolTable> illuminance;  // variables of a light loop; null outside the functions of
                                         // shaders with light loops
};

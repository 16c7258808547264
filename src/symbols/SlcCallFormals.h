#pragma once

#include <cstddef>
#include <vector>

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcTypeNode.h"

class SlcFuncSymbolEntry;
class SlcFuncVarArgSingle;
class SlcProcCallExprNode;

/// What the declaration of a function requires of one argument of a call.
///
///     occlusion(P, N, 16, "bias", 0.1)       in the tree five arguments: the name of a pair counts
///                                            in the instruction nine: each value of the tail has
///                                            its place, and the 0.1 is at position 4
struct SlcCallFormal {
    SlcTypeNode* type;                         // `AnyType` accepts the argument unchanged
    SlcDetailNode* detail;                     // required detail; may be unknown
    bool isOutput;                             // the function writes the argument
    SlcFuncVarArgSingle* tailValue = nullptr;  // its value in a variable tail; null for the name of
                                               // a pair and for a fixed argument
};

/// For the tree: returns one formal for each argument of a checked call, in source order. The
/// call's overload must have been resolved.
[[nodiscard]] std::vector<SlcCallFormal> SlcFormalsOf(const SlcProcCallExprNode& call);

/// For an instruction: returns the formal of the argument at `position`; the arguments of a
/// variable tail are in their fixed positions. Nothing is required of an argument past the end.
/// Linear in the length of a tail.
[[nodiscard]] SlcCallFormal SlcFormalAt(const SlcFuncSymbolEntry& entry, std::size_t position);

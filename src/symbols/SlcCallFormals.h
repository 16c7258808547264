#pragma once

#include <cstddef>
#include <vector>

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcTypeNode.h"

class SlcFuncSymbolEntry;
class SlcFuncVarArgSingle;
class SlcProcCallExprNode;

/// What the declaration of a function says of one argument of a call.
///
///     occlusion(P, N, 16, "bias", 0.1)       by the tree five: the name of a pair counts
///                                            by the instruction nine: each value of the tail has
///                                            its place, and the 0.1 is at position 4
struct SlcCallFormal {
    SlcTypeNode* type;                         // any type takes the argument as it is
    SlcDetailNode* detail;                     // that the argument must have; may be unknown
    bool isOutput;                             // the function writes the argument
    SlcFuncVarArgSingle* tailValue = nullptr;  // its place in a variable tail; null for the name
                                               // of a pair and for a fixed argument
};

/// By the tree: one for each argument of a checked call, in the order of the source. The call has
/// its overload.
[[nodiscard]] std::vector<SlcCallFormal> SlcFormalsOf(const SlcProcCallExprNode& call);

/// By the instruction: of the argument at `position`, with those of a variable tail in their
/// fixed places. Nothing is asked of an argument behind the end. Linear in the length of a tail.
[[nodiscard]] SlcCallFormal SlcFormalAt(const SlcFuncSymbolEntry& entry, std::size_t position);

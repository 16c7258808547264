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
///     occlusion(P, N, 16, "bias", 0.1)
///
/// In the tree, this call has five arguments, since the name "bias" counts as one. The instruction
/// has nine: names are gone, each possible value of the variable tail has a fixed position, and the
/// 0.1 is at position 4.
struct SlcCallFormal {
    SlcTypeNode* type;                         // `AnyType` accepts the argument unchanged
    SlcDetailNode* detail;                     // required detail; may be unknown
    bool isOutput;                             // the function writes the argument
    SlcFuncVarArgSingle* tailValue = nullptr;  // declaration of a value in a variable tail; null
                                               // for a fixed argument and for a pair's name
};

/// For the tree: returns one formal for each argument of a checked call, in source order. The
/// call's overload must have been resolved.
[[nodiscard]] std::vector<SlcCallFormal> SlcFormalsOf(const SlcProcCallExprNode& call);

/// For an instruction: returns the formal of the argument at `position`, where each value of the
/// variable tail has a fixed position. Past the end, returns a formal that accepts anything.
/// O(n) for a tail of n values.
[[nodiscard]] SlcCallFormal SlcFormalAt(const SlcFuncSymbolEntry& entry, std::size_t position);

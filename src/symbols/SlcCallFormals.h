#pragma once

#include <cstddef>
#include <vector>

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcTypeNode.h"

class SlcFuncSymbolEntry;
class SlcFuncVarArgSingle;
class SlcProcCallExprNode;

/// What a function requires of one argument of a call, and whether it writes the argument.
///
///     occlusion(P, N, 16, "bias", 0.1)
///
/// In the tree, this call has five arguments, since the name "bias" counts as one. The arguments
/// after N are the variable tail: they may be omitted, and a name selects the value after it. The
/// instruction has nine arguments and no names: each possible value of the tail has a fixed
/// position, and the 0.1 is at position 4.
struct SlcCallFormal {
    SlcTypeNode* type;                         // `AnyType` accepts the argument unchanged
    SlcDetailNode* detail;                     // if uniform, the argument must be; any other detail
                                               // accepts an input of any detail
    bool isOutput;                             // the function writes the argument
    SlcFuncVarArgSingle* tailValue = nullptr;  // declaration of a value in a variable tail; null
                                               // for a fixed argument and for a pair's name
};

/// For the tree: returns one formal for each argument of a checked call, in source order. The
/// call's overload must have been resolved.
[[nodiscard]] std::vector<SlcCallFormal> SlcFormalsOf(const SlcProcCallExprNode& call);

/// For an instruction: returns the formal of the argument at `position`, where each value of the
/// variable tail has a fixed position, and a repeated value has all further positions. Past the
/// end, returns a formal that accepts any input. O(n) for a tail of n values.
[[nodiscard]] SlcCallFormal SlcFormalAt(const SlcFuncSymbolEntry& entry, std::size_t position);

#pragma once

#include <cstddef>
#include <vector>

#include "icode/SlcListICode.h"

/// Instructions from `begin` up to `end`, exclusive, which C++ runs as one loop over points:
/// parallel runs, and instructions for the whole grid between them that need nothing but the point.
/// All of them can be computed in vectors, also at points that need no result.
///
/// What the loop reads and writes is then kept in variables of an iteration: loaded at its start,
/// stored at its end. So nothing is written under a condition, which keeps compilers from making
/// loops of vectors.
struct SlcPointLoop {
    std::size_t begin = 0;
    std::size_t end = 0;
    bool hasGuard = false;
    // In the order of the first access:
    std::vector<SlcOperand> constants;    // uniform variables that are read; the same at all points
    std::vector<SlcOperand> loaded;       // varying variables
    std::vector<SlcOperand> stored;       // those of them that are written
    std::vector<SlcOperand> temporaries;  // locals whose values stay within an iteration
    std::vector<SlcOperand> flags;        // uniform flags: whether another is true at some point
};

/// The maximal loops of a list, in order. O(n log n) for n instructions.
[[nodiscard]] std::vector<SlcPointLoop> SlcFindPointLoops(const SlcListICode& list);

/// A loop of the language whose instructions, from `begin` up to `end`, are point loops, labels and
/// jumps, and which C++ may run to its end for one strip of points after the other: no iteration
/// affects points that have left the loop. No jump from elsewhere leads into it.
struct SlcStripLoop {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// The outermost such loops, in order.
[[nodiscard]] std::vector<SlcStripLoop> SlcFindStripLoops(const SlcListICode& list,
                                                          const std::vector<SlcPointLoop>& loops);

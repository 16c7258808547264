#pragma once

#include <cstddef>
#include <vector>

#include "backends/SlcValueSpans.h"
#include "icode/SlcListICode.h"

/// Instructions from `begin` up to `end`, exclusive, that C++ can run as one loop over points:
/// parallel runs, and whole-grid instructions that depend only on the current point or set a
/// uniform flag if another flag is true at any point. All of them can be vectorized, and executed
/// speculatively at points that need no result.
///
/// Varying operands of the loop, unless they may alias, are kept in variables of an iteration. They
/// are loaded at its start and stored at its end, as far as values enter and leave the loop. So
/// memory is not written under a condition, which would prevent vectorization.
struct SlcPointLoop {
    std::size_t begin = 0;
    std::size_t end = 0;
    bool hasGuard = false;
    bool isJoined = false;  // from several parallel runs or whole-grid instructions
    // In the order of the first access:
    std::vector<SlcOperand> constants;  // uniform variables that are only read
    std::vector<SlcOperand> loaded;     // varying variables with a value from before the loop
    std::vector<SlcOperand> computed;   // variables that an iteration writes before it reads them
    std::vector<SlcOperand> stored;     // those of `loaded` and `computed` that are used afterwards
    std::vector<SlcOperand> flags;      // uniform flags, set if another flag is true at any point

    /// True if the loop is faster with variables than as separate instructions. A C++ compiler may
    /// vectorize the stores of a single run without guards less well if constants are kept.
    [[nodiscard]] bool IsWorthVariables() const { return hasGuard || isJoined; }
};

/// Returns the loops of a list in order. Each ends before an instruction that does not qualify,
/// before one that accesses a flag that the loop sets, or at a limit that keeps the C++ compiler
/// fast. `spans` are those of the list. O(n log n) for n instructions.
[[nodiscard]] std::vector<SlcPointLoop> SlcFindPointLoops(const SlcListICode& list,
                                                          const SlcValueSpans& spans);

/// A parallel run, from its start up to `end`, exclusive.
struct SlcParallelRun {
    std::size_t begin = 0;
    std::size_t end = 0;
    /// Locals whose values do not leave an iteration, in the order of the first access.
    std::vector<SlcOperand> temporaries;
    /// True if no iteration accesses storage that another one writes, provided that each has its
    /// own temporaries. False if it binds an array reference or writes another uniform variable.
    bool isApart = true;
};

/// Returns the parallel runs of a list in order. `spans` are those of the list. O(n log n) for n
/// instructions.
[[nodiscard]] std::vector<SlcParallelRun> SlcFindParallelRuns(const SlcListICode& list,
                                                              const SlcValueSpans& spans);

/// A loop of the shader that consists of point loops, labels and jumps, from `begin` up to `end`.
/// C++ may run it to completion for one strip of points after the other, since iterations do not
/// affect points that have left the loop. No jump enters or leaves it.
struct SlcStripLoop {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Returns the outermost loops of this kind, in order. `loops` are the point loops of `list`.
[[nodiscard]] std::vector<SlcStripLoop> SlcFindStripLoops(const SlcListICode& list,
                                                          const std::vector<SlcPointLoop>& loops);

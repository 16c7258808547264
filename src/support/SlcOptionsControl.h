#pragma once

#include <list>
#include <string>

/// Whether the compiler checks itself while it works.
#ifdef NDEBUG
inline constexpr bool k_isDebugBuild = false;
#else
inline constexpr bool k_isDebugBuild = true;
#endif

/// The decisions of the command line, as every subsystem reads them. A compile owns its
/// instance and fills it; the defaults here are those of level 2 without a back end chosen.
/// SlcOptimizationLevel.cpp lists which level turns on what.
struct SlcOptionsControl {
    bool m_useShadeops = true;            // unknown functions are sought in shadeop libraries
    bool m_checkArrayBounds = true;       // array accesses get a run-time index check
    bool m_simdInstructions = true;       // whole-grid assignments and calls
    bool m_regroupParallelBlocks = true;  // neighbouring parallel runs are merged first
    bool m_assignInPlace = true;          // a right side is computed into its target
    bool m_reuseTempVars = true;          // temporaries are recycled after each statement
    bool m_reuseBoolFlags = true;         // flags of varying control flow are recycled
    bool m_deadCodeElimination = true;
    bool m_optimizeBasicBlocks = true;  // the block optimizer is in the sequence
    bool m_convertConstOps = true;      // constant folding
    bool m_copyPropagation = true;
    bool m_codeMotion = false;              // loop invariants move out; loops are rotated for it
    bool m_aggressiveSIMD = false;          // uniform arguments are widened for SIMD calls
    bool m_blockOptimizerEnabled = true;    // the block optimizer does anything at all
    bool m_convertTmpVarDetail = true;      // only for the C++ back end
    bool m_reduceNumberTmps = true;         // temporaries share storage
    bool m_printICode = false;              // dump of the list; no command-line option
    bool m_printBlockICode = false;         // dump of the blocks; no command-line option
    bool m_validateICode = k_isDebugBuild;  // after each pass; no command-line option
    bool m_rebuildEachRound = false;        // graph and liveness; for tests that compare the two
    bool m_strict = false;                  // function bodies do not see the defining scope
    bool m_generateDSO = false;             // C++ back end instead of byte-code
    bool m_createLocalVars = true;          // required, but nothing clears it
    int m_mostOperations = 1'000'000;       // functions expand to no more; no command-line option
    int m_mostLevels = 10'000;              // of functions in functions; no command-line option
    std::list<std::string> m_searchDirs = {"."};  // for shadeop libraries, in order
};

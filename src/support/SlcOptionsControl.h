#pragma once

#include <list>
#include <string>

/// True in a build with assertions, in which the compiler also validates its intermediate code.
#ifdef NDEBUG
inline constexpr bool k_isDebugBuild = false;
#else
inline constexpr bool k_isDebugBuild = true;
#endif

/// The options of a compilation, read by stages after the parser. Each compilation owns an instance
/// and fills it in. The defaults here are those of level 2 before a back end is chosen.
/// SlcOptimizationLevel.cpp lists what each level enables.
struct SlcOptionsControl {
    bool m_useShadeops = true;            // unknown functions are looked up in shadeop libraries
    bool m_checkArrayBounds = true;       // array accesses are checked at run time
    bool m_simdInstructions = true;       // whole-grid assignments and calls
    bool m_regroupParallelBlocks = true;  // adjacent parallel runs are merged first
    bool m_assignInPlace = true;          // a right side is computed into its target
    bool m_reuseTempVars = true;          // temporaries are recycled after each statement
    bool m_reuseBoolFlags = true;         // flags of varying control flow are recycled
    bool m_deadCodeElimination = true;
    bool m_optimizeBasicBlocks = true;  // the block optimizer is in the sequence
    bool m_convertConstOps = true;      // constant folding
    bool m_copyPropagation = true;
    bool m_codeMotion = false;              // loop invariants are hoisted; loops are rotated
    bool m_aggressiveSIMD = false;          // uniform arguments are widened for whole-grid calls
    bool m_blockOptimizerEnabled = true;    // switch for the whole block optimizer
    bool m_convertTmpVarDetail = true;      // only for the C++ back end
    bool m_reduceNumberTmps = true;         // temporaries share storage
    bool m_printICode = false;              // dump the list; no command-line option
    bool m_printBlockICode = false;         // dump the blocks; no command-line option
    bool m_validateICode = k_isDebugBuild;  // before and after passes; no command-line option
    bool m_rebuildEachRound = false;        // rebuild graph and liveness, for tests
    bool m_strict = false;                  // function bodies do not see the variables around them
    bool m_generateDSO = false;             // C++ back end instead of byte-code
    bool m_createLocalVars = true;          // C++ code allocates its variables; never cleared
    int m_mostOperations = 1'000'000;       // limit for the operations in all expanded calls
    int m_mostLevels = 10'000;              // limit for nested expansions; no command-line option
    std::list<std::string> m_searchDirs = {"."};  // for shadeop libraries, in order
};

#pragma once

#include "icode/SlcAllICodeWalker.h"

/// Traits: the properties of an instruction class that passes query, regardless of its operands.
/// They are a column of SlcICodeClasses.def. Each row lists all traits of its class, including
/// those of its base.
namespace SlcICodeTraits {

enum Trait : unsigned {
    None = 0,
    Computes = 1 << 0,          // has no effect except the one value that it writes
    MovesFromLoops = 1 << 1,    // may be hoisted out of a loop that always runs it
    WholeGrid = 1 << 2,         // takes varying operands as arrays: a constant cannot replace them
    PartialWrite = 1 << 3,      // may leave some points or parts of its result unchanged
    PartialIfLimited = 1 << 4,  // the same, but only if it has a condition
    BeginsBlock = 1 << 5,       // control may jump to it
    EndsBlock = 1 << 6,         // control may jump elsewhere after it
    OpensRun = 1 << 7,          // the brackets of a parallel run
    ClosesRun = 1 << 8,
    OpensGuard = 1 << 9,  // the brackets of a guard
    ClosesGuard = 1 << 10,
    NamesLabel = 1 << 11,  // is a label, or refers to one
};

/// The traits of a class.
template <class Code>
inline constexpr unsigned k_of = None;

#define SLC_ICODE_CLASS(name, base, traits)                                                        \
    template <>                                                                                    \
    inline constexpr unsigned k_of<name> = traits;
#include "icode/SlcICodeClasses.def"

// A class has all traits of its base.
#define SLC_ICODE_CLASS(name, base, traits) static_assert((k_of<base> & ~k_of<name>) == 0);
#include "icode/SlcICodeClasses.def"

// Only an instruction without other effects may be hoisted, and not one that writes part of a
// value. An instruction that only computes neither jumps nor is the target of a jump.
#define SLC_ICODE_CLASS(name, base, traits)                                                        \
    static_assert(!(k_of<name> & MovesFromLoops) || (k_of<name> & Computes));                      \
    static_assert(!(k_of<name> & MovesFromLoops) ||                                                \
                  !(k_of<name> & (PartialWrite | PartialIfLimited)));                              \
    static_assert(!(k_of<name> & Computes) || !(k_of<name> & (BeginsBlock | EndsBlock)));
#include "icode/SlcICodeClasses.def"

}  // namespace SlcICodeTraits

#pragma once

#include "icode/SlcAllICodeWalker.h"

/// What an instruction is to the passes, whatever its operands are: a column of
/// SlcICodeClasses.def. Each row tells all traits of its class, also those of its base.
namespace SlcICodeTraits {

enum Trait : unsigned {
    None = 0,
    Computes = 1 << 0,          // does nothing but compute the one value that it writes
    MovesFromLoops = 1 << 1,    // may be done once in front of a loop that it always runs in
    WholeGrid = 1 << 2,         // takes varying operands as arrays: no constant can replace one
    PartialWrite = 1 << 3,      // may leave some points, or parts, of what it writes as they were
    PartialIfLimited = 1 << 4,  // the same, but only under a condition of its own
    BeginsBlock = 1 << 5,       // control may come to it from elsewhere
    EndsBlock = 1 << 6,         // control may go elsewhere behind it
    OpensRun = 1 << 7,          // the brackets of a parallel run
    ClosesRun = 1 << 8,
    OpensGuard = 1 << 9,  // those of code for the points of a flag
    ClosesGuard = 1 << 10,
    NamesLabel = 1 << 11,  // is a label that code can go to, or goes to one by name
};

/// The traits of a class.
template <class Code>
inline constexpr unsigned k_of = None;

#define SLC_ICODE_CLASS(name, base, traits)                                                        \
    template <>                                                                                    \
    inline constexpr unsigned k_of<name> = traits;
#include "icode/SlcICodeClasses.def"
#undef SLC_ICODE_CLASS

// A class is to the passes what its base is.
#define SLC_ICODE_CLASS(name, base, traits) static_assert((k_of<base> & ~k_of<name>) == 0);
#include "icode/SlcICodeClasses.def"
#undef SLC_ICODE_CLASS

// What does more than compute must stay where it is, and a part of a value may not be written
// elsewhere.
#define SLC_ICODE_CLASS(name, base, traits)                                                        \
    static_assert(!(k_of<name> & MovesFromLoops) || (k_of<name> & Computes));                      \
    static_assert(!(k_of<name> & MovesFromLoops) ||                                                \
                  !(k_of<name> & (PartialWrite | PartialIfLimited)));                              \
    static_assert(!(k_of<name> & Computes) || !(k_of<name> & (BeginsBlock | EndsBlock)));
#include "icode/SlcICodeClasses.def"
#undef SLC_ICODE_CLASS

}  // namespace SlcICodeTraits

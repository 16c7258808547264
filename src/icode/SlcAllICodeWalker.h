#pragma once

#include "support/SlcPtr.h"

class SlcICode;
#define SLC_ICODE_CLASS(name, base, traits) class name;
#include "icode/SlcICodeClasses.def"
#undef SLC_ICODE_CLASS

/// The visitor of intermediate code; every pass over instructions derives from it.
///
/// An instruction hands itself to the `Case` of its own class. Each `Case` here passes it on to
/// the `Case` of its base class, and that of `SlcICode` calls `Default`. A pass overrides just the
/// classes that it cares about, at any height, and `Default` for whatever remains.
class SlcAllICodeWalker {
public:
    virtual ~SlcAllICodeWalker() = default;

    /// One for each class. Not called by hand: `SlcICode::ApplyWalker` finds the one of the class.
    /// An override hides the others, so that a walker begins with `using SlcAllICodeWalker::Case;`.
    virtual void Case(SlcPtr<SlcICode> code);
#define SLC_ICODE_CLASS(name, base, traits) virtual void Case(SlcPtr<name> code);
#include "icode/SlcICodeClasses.def"
#undef SLC_ICODE_CLASS
    /// Whatever no overridden `Case` has taken. Who cares about few classes leaves it empty; a
    /// writer reports here what it has no text for.
    virtual void Default(SlcPtr<SlcICode> code) = 0;
};

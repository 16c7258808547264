#pragma once

#include "support/SlcPtr.h"

class SlcICode;
#define SLC_ICODE_CLASS(name, base, traits) class name;
#include "icode/SlcICodeClasses.def"

/// The visitor of intermediate code; every pass over instructions derives from it.
///
/// An instruction passes itself to the `Case` of its own class. By default each `Case` forwards it
/// to the `Case` of the base class, and that of `SlcICode` calls `Default`. A pass overrides only
/// the classes that it handles, at any level of the class tree, and `Default` for the rest.
class SlcAllICodeWalker {
public:
    virtual ~SlcAllICodeWalker() = default;

    /// One overload for each class. Do not call it directly: `SlcICode::ApplyWalker` selects the
    /// overload. An override hides the other overloads, so each walker needs `using
    /// SlcAllICodeWalker::Case;`.
    virtual void Case(SlcPtr<SlcICode> code);
#define SLC_ICODE_CLASS(name, base, traits) virtual void Case(SlcPtr<name> code);
#include "icode/SlcICodeClasses.def"
    /// Called for instructions that no overridden `Case` handles. A pass that handles few classes
    /// leaves it empty; a writer reports the instruction that it cannot write.
    virtual void Default(SlcPtr<SlcICode> code) = 0;
};

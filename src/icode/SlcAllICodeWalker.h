#pragma once

#include "support/SlcPtr.h"

class SlcICode;
#define SLC_ICODE_CLASS(name, base, traits) class name;
#include "icode/SlcICodeClasses.def"

/// The visitor of intermediate code, from which passes over instructions derive.
///
/// An instruction passes itself to the `Case` of its own class. By default each `Case` forwards it
/// to the `Case` of the base class, and that of `SlcICode` calls `Default`. A pass overrides only
/// the classes that it handles, at any level of the class tree, and `Default` for the rest.
class SlcAllICodeWalker {
public:
    virtual ~SlcAllICodeWalker() = default;

    /// One overload for each class. `SlcICode::ApplyWalker` selects the overload; only overrides
    /// call a `Case` directly, for example that of the base class. An override hides the other
    /// overloads, so a walker that overrides some of them needs `using SlcAllICodeWalker::Case;`.
    virtual void Case(SlcPtr<SlcICode> code);
#define SLC_ICODE_CLASS(name, base, traits) virtual void Case(SlcPtr<name> code);
#include "icode/SlcICodeClasses.def"
    /// Called for instructions that no overridden `Case` handles. A pass that handles few classes
    /// leaves it empty; a writer reports the instruction that it cannot write.
    virtual void Default(SlcPtr<SlcICode> code) = 0;
};

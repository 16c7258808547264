// Forwards each instruction class to its base class; generated from the list of classes. If a
// walker does not override `Case` for `SlcAddICode`, its `Case` for `SlcArithExprICode` is called;
// if it does not override that either, the `Case` of `SlcICode`, which calls `Default`. So a single
// override can handle a whole subtree of classes.

#include "icode/SlcAllICodeWalker.h"

#include <utility>

#include "icode/SlcICodes.h"

void SlcAllICodeWalker::Case(SlcPtr<SlcICode> code)
{
    Default(std::move(code));
}

#define SLC_ICODE_CLASS(name, base, traits)                                                        \
    void SlcAllICodeWalker::Case(SlcPtr<name> code)                                                \
    {                                                                                              \
        Case(SlcPtr<base>(std::move(code)));                                                       \
    }
#include "icode/SlcICodeClasses.def"

// The step of each class to its base, from the list of classes: what a walker does not override for
// `SlcAddICode` arrives at its `Case` for `SlcArithExprICode`, and at last at `Default`. So a pass
// says what it does at the highest class for which that holds.

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
#undef SLC_ICODE_CLASS

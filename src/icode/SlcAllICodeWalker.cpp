// The step of each class to its base, from the list of classes.

#include "icode/SlcAllICodeWalker.h"

#include <utility>

#include "icode/SlcICodes.h"

void SlcAllICodeWalker::Case(SlcPtr<SlcICode> code)
{
    Default(std::move(code));
}

#define SLC_ICODE_CLASS(name, base)                                                                \
    void SlcAllICodeWalker::Case(SlcPtr<name> code)                                                \
    {                                                                                              \
        Case(CheckCast<base>(code));                                                               \
    }
#include "icode/SlcICodeClasses.def"
#undef SLC_ICODE_CLASS

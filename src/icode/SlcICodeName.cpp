// The names are generated from the list of classes, so a new instruction needs no change here.

#include "icode/SlcICodeName.h"

#include "icode/SlcICodes.h"

namespace {

class NameWalker : public SlcAllICodeWalker {
public:
    std::string_view m_name = "SlcICode";

private:
#define SLC_ICODE_CLASS(name, base, traits)                                                        \
    void Case(SlcPtr<name>) override                                                               \
    {                                                                                              \
        m_name = #name;                                                                            \
    }
#include "icode/SlcICodeClasses.def"
    void Case(SlcPtr<SlcICode>) override {}
    void Default(SlcPtr<SlcICode>) override {}
};

}  // namespace

std::string_view SlcICodeName(SlcICode& code)
{
    NameWalker walker;
    code.ApplyWalker(&walker);
    return walker.m_name;
}

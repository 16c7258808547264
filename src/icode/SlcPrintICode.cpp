// A short dump for debugging the optimizer: the class of each instruction, one per line.
// `SlcICodeText` prints operands too.

#include "icode/SlcPrintICode.h"

#include <fstream>

#include "icode/SlcICode.h"
#include "icode/SlcICodeName.h"
#include "support/SlcDiagnostics.h"

void SlcPrintICode::Optimize(SlcPtr<SlcListICode>& list)
{
    std::ofstream out("icode.txt");
    m_out = &out;
    for (const auto& code : list->m_icodes)
        code->ApplyWalker(this);
    m_out = nullptr;
    out.close();
    if (!out)
        SevereWarning("shaderqx", "The dump of the intermediate code could not be written");
}

void SlcPrintICode::Default(SlcPtr<SlcICode> code)
{
    *m_out << SlcICodeName(*code) << '\n';
}

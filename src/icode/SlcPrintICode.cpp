// A short dump for debugging the optimizer: the class of each instruction, one per line.
// `SlcICodeText` prints operands too.

#include "icode/SlcPrintICode.h"

#include "icode/SlcICode.h"
#include "icode/SlcICodeName.h"
#include "support/SlcDiagnostics.h"
#include "support/SlcFiles.h"

void SlcPrintICode::Optimize(SlcPtr<SlcListICode>& list)
{
    for (const auto& code : list->m_icodes)
        code->ApplyWalker(this);
    if (!SlcWriteFile("icode.txt", m_text.Take()))
        SevereWarning("shaderqx", "The dump of the intermediate code could not be written");
}

void SlcPrintICode::Default(SlcPtr<SlcICode> code)
{
    m_text << SlcICodeName(*code) << '\n';
}

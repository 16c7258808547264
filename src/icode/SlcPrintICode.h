#pragma once

#include "icode/SlcAllICodeWalker.h"
#include "icode/SlcListICode.h"
#include "support/SlcText.h"

/// Dumps a list to the file "icode.txt" in the current directory: the class name of each
/// instruction, one per line. The list is not changed.
class SlcPrintICode : public SlcAllICodeWalker {
public:
    /// Writes the dump of `list`. Warns the user if the file cannot be written.
    void Optimize(SlcPtr<SlcListICode>& list);

private:
    using SlcAllICodeWalker::Case;
    void Default(SlcPtr<SlcICode> code) override;

    SlcText m_text;
};

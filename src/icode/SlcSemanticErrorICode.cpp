// Reports at the source position that a comment instruction holds. They are defined here, since the
// folder of `SlcSemanticError` must not depend on instructions.

#include <cstdlib>

#include "icode/SlcBlockICode.h"
#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"

void SlcSemanticError::ErrorICode(const SlcPtr<SlcCommentICode>& comment, std::string_view message)
{
    CountError();
    PrintAt({*comment->m_file, comment->m_line, {}}, "ERROR", message);
}

void SlcSemanticError::FatalErrorICode(const SlcPtr<SlcCommentICode>& comment,
                                       std::string_view message)
{
    CountError();
    PrintAt({*comment->m_file, comment->m_line, {}}, "FATAL ERROR", message);
    PrintReport(
        std::string("***** Please contact '").append(SlcContactAddress()).append("' !!!\n"));
    EndCompilation(1);
}

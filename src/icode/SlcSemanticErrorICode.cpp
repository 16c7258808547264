// The reports at an instruction: only the folder of the instructions can read its position, while
// the class of the reports stands below it.

#include <cstdlib>
#include <ostream>

#include "icode/SlcBlockICode.h"
#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"

void SlcSemanticError::ErrorICode(const SlcPtr<SlcCommentICode>& comment, std::string_view message)
{
    CountError();
    PrintAt(*comment->m_file, comment->m_line, "ERROR", message);
}

void SlcSemanticError::FatalErrorICode(const SlcPtr<SlcCommentICode>& comment,
                                       std::string_view message)
{
    CountError();
    PrintAt(*comment->m_file, comment->m_line, "FATAL ERROR", message);
    SlcReports() << "***** Please contact '" << SlcContactAddress() << "' !!!\n";
    EndCompilation(1);
}

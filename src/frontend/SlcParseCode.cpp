// One parse. The generated parser goes on behind a fault to find others, so that a tree may come
// out of a faulty source: the count of errors decides. The second parameter, whether functions see
// the scope around them, is told, unused: the checks look at the option.

#include "frontend/SlcParseCode.h"

#include "frontend/SlcParseActions.h"
#include "frontend/SlcScanner.h"
#include "support/SlcDiagnostics.h"

std::string g_ccFilename;

int yyparse();

std::unique_ptr<SlcDefinitionsNode> ParseCode(std::FILE* file, bool)
{
    ResetNbErrorsAndWarnings();
    SlcParseActions::Begin();
    SlcScanner::Begin(file);
    // Every way of failing has counted an error, so that the result adds nothing.
    static_cast<void>(yyparse());
    auto root = SlcParseActions::TakeRoot();
    if (NbErrors() != 0)
        throw SlcCompilationError();
    return root;
}

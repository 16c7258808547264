// One parse. The generated parser goes on behind a fault to find others, so that a tree may come
// out of a faulty source: the count of errors decides. The second parameter, whether functions see
// the scope around them, is told, unused: the checks look at the option.

#include "frontend/SlcParseCode.h"

#include "frontend/SlcParseActions.h"
#include "frontend/SlcScanner.h"
#include "support/SlcCompilation.h"
#include "support/SlcDiagnostics.h"

namespace {

struct ShaderName {
    std::string name;
};

}  // namespace

std::string& SlcShaderName()
{
    return SlcPartOfCompilation<ShaderName>().name;
}

int yyparse();

namespace {

std::unique_ptr<SlcDefinitionsNode> Parse(std::FILE* file, std::string_view text,
                                          bool keepsBlocks = false)
{
    ResetNbErrorsAndWarnings();
    SlcParseActions::Begin();
    if (keepsBlocks)
        SlcParseActions::Advice().KeepBlocks();
    SlcScanner::Begin(file, text);
    // Every way of failing has counted an error, so that the result adds nothing.
    static_cast<void>(yyparse());
    return SlcParseActions::TakeRoot();
}

std::unique_ptr<SlcDefinitionsNode> RefuseFaults(std::unique_ptr<SlcDefinitionsNode> root)
{
    if (NbErrors() != 0)
        throw SlcCompilationError();
    return root;
}

}  // namespace

std::unique_ptr<SlcDefinitionsNode> ParseCode(std::FILE* file, bool)
{
    return RefuseFaults(Parse(file, {}));
}

std::unique_ptr<SlcDefinitionsNode> ParseCode(std::string_view text, bool)
{
    return RefuseFaults(Parse(nullptr, text));
}

std::unique_ptr<SlcDefinitionsNode> ParseFaultyCode(std::string_view text)
{
    return Parse(nullptr, text);
}

std::unique_ptr<SlcDefinitionsNode> ParseForIndex(std::string_view text)
{
    return Parse(nullptr, text, true);
}

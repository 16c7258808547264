// The generated parser continues after a fault in a body to find others, so a faulty source may
// yield a tree; the count of errors decides whether ParseCode returns it. The second parameter of
// ParseCode is part of the interface but unused, since the checks read the option.

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

int yyparse(SlcParseAdvice& advice);

namespace {

using Repairs = std::vector<SlcParseAdvice::Repair>;

constexpr std::size_t k_mostRepairs = 12;  // each needs another parse

struct Parsed {
    std::unique_ptr<SlcDefinitionsNode> root;
    bool isWhole = false;  // the parser reached the end of the source
};

Parsed Parse(std::FILE* file, std::string_view text, const Repairs* repairs = nullptr)
{
    ResetNbErrorsAndWarnings();
    SlcParseActions::Begin();
    if (repairs)
        SlcParseActions::Advice().KeepBlocks(*repairs);
    SlcScanner::Begin(file, text);
    const bool isWhole = yyparse(SlcParseActions::Advice()) == 0;
    SlcParseActions::EndAfterFatalReport();
    return {SlcParseActions::TakeRoot(), isWhole};
}

/// Returns the tree. Throws if there were errors; every kind of failure counts at least one error.
std::unique_ptr<SlcDefinitionsNode> RejectFaults(Parsed parsed)
{
    if (NbErrors() != 0)
        throw SlcCompilationError();
    return std::move(parsed.root);
}

}  // namespace

std::unique_ptr<SlcDefinitionsNode> ParseCode(std::FILE* file, bool)
{
    return RejectFaults(Parse(file, {}));
}

std::unique_ptr<SlcDefinitionsNode> ParseCode(std::string_view text, bool)
{
    return RejectFaults(Parse(nullptr, text));
}

std::unique_ptr<SlcDefinitionsNode> ParseFaultyCode(std::string_view text)
{
    return Parse(nullptr, text).root;
}

std::unique_ptr<SlcDefinitionsNode> ParseForIndex(std::string_view text)
{
    Repairs repairs;
    for (;;) {
        Parsed parsed = Parse(nullptr, text, &repairs);
        const auto repair = SlcParseActions::Advice().NextRepair();
        if (parsed.isWhole || !repair || repairs.size() == k_mostRepairs)
            return std::move(parsed.root);
        repairs.push_back(*repair);
    }
}

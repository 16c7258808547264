// The inline rules, for calls in a body that is being evaluated, of the built-ins whose cards have
// `@writes`: the written variables get the combined detail of all inputs, and also that of the
// conditions around the call (SlcCheckInlineDetail::Written).
//
//     setxcomp(p, x)                   p gets the combined detail of p and x, and keeps y and z
//     fresnel(I, N, eta, kr, kt)       kr and kt get the combined detail of I, N and eta
//
// SlcCheckInlineOutputProc, the rule for `@writes(outputs)`, is in the table of rules, but no card
// uses it.
//
// Tested by tests/semantics/SlcCheckDetailTest.cpp.

#include <string>

#include "frontend/SlcCallNodes.h"
#include "semantics/SlcBuiltInDetailRules.h"
#include "semantics/SlcCheckInlineDetail.h"
#include "semantics/SlcInlineDetails.h"

namespace {

/// Which arguments of a built-in are read and written, and the texts of its reports.
struct OutputRule {
    std::size_t inputs;       // number of arguments that are read, from the first on
    std::size_t firstOutput;  // positions count from 0
    std::size_t lastOutput;
    const char* wrongCount;   // internal error
    const char* noVariable;   // the warning, or its part before the argument's number
    const char* afterNumber;  // the part after the number; null if the warning has no number
    const char* unknown;      // internal error
};

constexpr OutputRule k_setPointComp = {
    2,
    0,
    0,
    "Maybe not 'setxcomp', 'setycomp' or setzcomp' treated by 'SlcCheckInlineSetPointCompProc'",
    "The first argument of 'setxcomp', 'setycomp' and 'setzcomp' isn't an identifier",
    nullptr,
    "Id not in symbol table (SlcCheckInlineSetPointCompProc)"};

constexpr OutputRule k_setColorComp = {
    3,
    0,
    0,
    "Maybe not 'setcomp' treated by 'SlcCheckInlineSetPointCompProc'",
    "The first argument of 'setcomp isn't an identifier",
    nullptr,
    "Id not in symbol table (SlcCheckInlineSetPointCompProc)"};

constexpr OutputRule k_setMatrixComp = {
    4,
    0,
    0,
    "Functions 'setcomp' may not be treated by 'SlcCheckInlineSetPointCompProc'",
    "The first argument of 'setcomp' isn't an identifier",
    nullptr,
    "Id not in symbol table (SlcCheckInlineSetPointCompProc)"};

constexpr OutputRule k_fresnel = {3,
                                  3,
                                  6,
                                  "Maybe not inline 'fresnel'",
                                  "Argument ",
                                  "of 'fresnel' isn't an identifier",
                                  "Id not in symbol table (SlcCheckInlineFresnelProc)"};

constexpr OutputRule k_unpack = {1,
                                 1,
                                 4,
                                 "Maybe not 'unpack' by 'SlcCheckInlineUnpackProc'",
                                 "Argument ",
                                 "of 'unpack' isn't an identifier",
                                 "Id not in symbol table (SlcCheckInlineUnpackProc)"};

void SetOutput(SlcCheckInlineDetail& walker, const OutputRule& rule, std::size_t position,
               SlcExprNode* argument, SlcDetailNode* detail)
{
    SlcSemanticError& errors = *walker.Errors();
    const bool isOpen = SlcFirstDetailOf(argument)->IsUnknownDetail();
    if (isOpen && !dynamic_cast<const SlcIdentExprNode*>(argument))
        errors.Warning(argument,
                       rule.afterNumber
                           ? rule.noVariable + std::to_string(position) + rule.afterNumber
                           : std::string(rule.noVariable),
                       2);
    if (!argument->IsReferenceExpr())
        return;
    if (static_cast<const SlcReferenceExprNode*>(argument)->GetSymbolEntry().Null())
        errors.FatalError(argument, rule.unknown);
    walker.Written(argument, detail);
}

SlcDetailNode* Apply(const OutputRule& rule, SlcCheckInlineDetail& walker,
                     SlcProcCallExprNode* call, bool rightCount)
{
    if (!rightCount)
        walker.Errors()->FatalError(call, rule.wrongCount);
    const auto& arguments = call->GetArguments()->GetArgs();
    SlcDetailNode* detail = SlcDetailNode::AUniform();
    for (std::size_t i = 0; i < rule.inputs; ++i)
        detail = SlcDetailNode::Combine(detail, SlcInlineDetailOf(arguments[i].get()));
    for (std::size_t i = rule.firstOutput; i <= rule.lastOutput && i < arguments.size(); ++i)
        SetOutput(walker, rule, i, arguments[i].get(), detail);
    return detail;
}

std::size_t CountOf(const SlcProcCallExprNode* call)
{
    return call->GetArguments()->GetArgs().size();
}

}  // namespace

SlcDetailNode* SlcCheckInlineSetPointCompProc(SlcCheckInlineDetail* walker, SlcFuncEntry,
                                              SlcProcCallExprNode* call)
{
    return Apply(k_setPointComp, *walker, call, CountOf(call) == 2);
}

SlcDetailNode* SlcCheckInlineSetColorCompProc(SlcCheckInlineDetail* walker, SlcFuncEntry,
                                              SlcProcCallExprNode* call)
{
    return Apply(k_setColorComp, *walker, call, CountOf(call) == 3);
}

SlcDetailNode* SlcCheckInlineSetMatrixCompProc(SlcCheckInlineDetail* walker, SlcFuncEntry,
                                               SlcProcCallExprNode* call)
{
    return Apply(k_setMatrixComp, *walker, call, CountOf(call) == 4);
}

SlcDetailNode* SlcCheckInlineFresnelProc(SlcCheckInlineDetail* walker, SlcFuncEntry,
                                         SlcProcCallExprNode* call)
{
    return Apply(k_fresnel, *walker, call, CountOf(call) == 5 || CountOf(call) == 7);
}

SlcDetailNode* SlcCheckInlineUnpackProc(SlcCheckInlineDetail* walker, SlcFuncEntry,
                                        SlcProcCallExprNode* call)
{
    return Apply(k_unpack, *walker, call, CountOf(call) == 5);
}

SlcDetailNode* SlcCheckInlineOutputProc(SlcCheckInlineDetail*, SlcFuncEntry entry,
                                        SlcProcCallExprNode* call)
{
    const auto& arguments = call->GetArguments()->GetArgs();
    SlcDetailNode* detail = SlcDetailNode::AUniform();
    for (const auto& argument : arguments)
        detail = SlcDetailNode::Combine(detail, SlcInlineDetailOf(argument.get()));
    if (detail->IsUnknownDetail())
        return detail;
    const auto& storages = entry->GetArgStorages();
    for (std::size_t i = 0; i < arguments.size() && i < storages.size(); ++i)
        if (storages[i]->IsOutput())
            SlcSetInlineDetail(arguments[i].get(), detail);
    return detail;
}

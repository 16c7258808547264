// The rules for the detail of a call's result, which cards select. Each card has two: one for the
// statement as it is written, one for a body that is being evaluated. Most calls combine the
// details of their arguments or, without arguments, have the detail that the context requests
// (random()). Some are always varying, most of them because they read a predefined variable
// (faceforward(v, I) reads Ng), and some are always uniform.
//
// Tested by tests/semantics/SlcCheckDetailTest.cpp.

#include "semantics/SlcBuiltInDetailRules.h"

#include <string>

#include "frontend/SlcCallNodes.h"
#include "semantics/SlcArgumentChecks.h"
#include "semantics/SlcCheckDetail.h"
#include "semantics/SlcCheckInlineDetail.h"
#include "semantics/SlcInlineDetails.h"
#include "symbols/SlcCallFormals.h"

namespace {

void CheckParamDetail(SlcSemanticError& errors, const std::string& name, std::size_t position,
                      const SlcExprNode* argument, const SlcCallFormal& formal)
{
    const SlcDetailNode* detail = SlcFirstDetailOf(argument);
    const std::string number = std::to_string(position);
    if (formal.detail->IsUniform() && !detail->IsUniform())
        errors.Error(argument,
                     "Detail mismatch for argument " + number + " of function '" + name + "'");
    if (!formal.isOutput || !SlcCheckOutputArgument(errors, argument, position, name))
        return;
    if (!formal.detail->IsUniform() && detail->IsUniform())
        errors.Error(argument,
                     "Argument " + number + " of function '" + name + "' cannot be uniform");
}

void SlcCheckParamDetails(SlcCheckDetail& walker, SlcFuncSymbolEntry& entry,
                          SlcProcCallExprNode* call)
{
    const auto& arguments = call->GetArguments()->GetArgs();
    const std::vector<SlcCallFormal> formals = SlcFormalsOf(*call);
    for (std::size_t i = 0; i < formals.size(); ++i)
        CheckParamDetail(*walker.Errors(), entry.GetName(), i, arguments[i].get(), formals[i]);
}

/// Checks a call whose arguments may have any detail: it must still be possible to write its output
/// arguments.
void CheckOutputs(SlcCheckDetail& walker, SlcFuncSymbolEntry& entry, SlcProcCallExprNode* call)
{
    const auto& arguments = call->GetArguments()->GetArgs();
    const std::vector<SlcCallFormal> formals = SlcFormalsOf(*call);
    for (std::size_t i = 0; i < formals.size(); ++i)
        if (formals[i].isOutput)
            (void)SlcCheckOutputArgument(*walker.Errors(), arguments[i].get(), i, entry.GetName());
}

/// Records that the call writes varying values to its output arguments, whatever the details of the
/// other arguments.
void WriteOutputs(SlcCheckInlineDetail& walker, SlcProcCallExprNode* call)
{
    const auto& arguments = call->GetArguments()->GetArgs();
    const std::vector<SlcCallFormal> formals = SlcFormalsOf(*call);
    for (std::size_t i = 0; i < formals.size(); ++i)
        if (formals[i].isOutput)
            walker.Written(arguments[i].get(), SlcDetailNode::AVarying());
}

/// Returns the combined detail of the arguments; without any, the detail that the context requests,
/// or unknown if it requests none.
template <class DetailOf>
SlcDetailNode* CombineArguments(const SlcProcCallExprNode* call, SlcDetailNode* expected,
                                DetailOf detailOf)
{
    const auto& arguments = call->GetArguments()->GetArgs();
    if (arguments.empty())
        return expected ? expected : SlcDetailNode::AUnknown();
    SlcDetailNode* detail = SlcDetailNode::AUniform();
    for (const auto& argument : arguments)
        detail = SlcDetailNode::Combine(detail, detailOf(argument.get()));
    return detail;
}

}  // namespace

SlcDetailNode* SlcAllArgsUniformReturnUniform(SlcCheckDetail* walker, SlcFuncEntry entry,
                                              SlcProcCallExprNode* call)
{
    SlcCheckParamDetails(*walker, *entry, call);
    return CombineArguments(call, walker->Place().wanted,
                            [](const SlcExprNode* expr) { return SlcFirstDetailOf(expr); });
}

SlcDetailNode* SlcAllArgsUniformReturnUniformInline(SlcCheckInlineDetail* walker, SlcFuncEntry,
                                                    SlcProcCallExprNode* call)
{
    SlcDetailNode* const detail =
        CombineArguments(call, walker->Place().wanted,
                         [](const SlcExprNode* expr) { return SlcInlineDetailOf(expr); });
    WriteOutputs(*walker, call);
    return detail;
}

SlcDetailNode* SlcAlwaysReturnVarying(SlcCheckDetail* walker, SlcFuncEntry entry,
                                      SlcProcCallExprNode* call)
{
    CheckOutputs(*walker, *entry, call);
    return SlcDetailNode::AVarying();
}

SlcDetailNode* SlcAlwaysReturnVaryingInline(SlcCheckInlineDetail* walker, SlcFuncEntry,
                                            SlcProcCallExprNode* call)
{
    WriteOutputs(*walker, call);
    return SlcDetailNode::AVarying();
}

SlcDetailNode* SlcAlwaysReturnUniform(SlcCheckDetail* walker, SlcFuncEntry entry,
                                      SlcProcCallExprNode* call)
{
    CheckOutputs(*walker, *entry, call);
    return SlcDetailNode::AUniform();
}

SlcDetailNode* SlcAlwaysReturnUniformInline(SlcCheckInlineDetail* walker, SlcFuncEntry,
                                            SlcProcCallExprNode* call)
{
    WriteOutputs(*walker, call);
    return SlcDetailNode::AUniform();
}

const SlcDetailRules& SlcBuiltInDetailRules()
{
    static const SlcDetailRules rules = {
        {&SlcAllArgsUniformReturnUniform, &SlcAlwaysReturnVarying, &SlcAlwaysReturnUniform},
        {&SlcAllArgsUniformReturnUniformInline, &SlcAlwaysReturnVaryingInline,
         &SlcCheckInlineSetPointCompProc, &SlcCheckInlineSetColorCompProc,
         &SlcCheckInlineFresnelProc, &SlcCheckInlineUnpackProc, &SlcCheckInlineSetMatrixCompProc,
         &SlcAlwaysReturnUniformInline, &SlcCheckInlineOutputProc}};
    return rules;
}

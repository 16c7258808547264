#include "semantics/SlcBuiltInDetailRules.h"

#include <string>

#include "frontend/SlcCallNodes.h"
#include "semantics/SlcArgumentChecks.h"
#include "semantics/SlcCheckDetail.h"
#include "semantics/SlcCheckInlineDetail.h"
#include "semantics/SlcInlineDetails.h"

namespace {

void CheckParamDetail(SlcSemanticError& errors, const std::string& name, std::size_t position,
                      const SlcDeclaredArgument& argument)
{
    const SlcDetailNode* detail = SlcFirstDetailOf(argument.expr);
    const std::string number = std::to_string(position);
    if (argument.detail->IsUniform() && !detail->IsUniform())
        errors.Error(argument.expr,
                     "Detail mismatch for argument " + number + " of function '" + name + "'");
    if (!argument.storage->IsOutput() ||
        !SlcCheckOutputArgument(errors, argument.expr, position, name))
        return;
    if (!argument.detail->IsUniform() && detail->IsUniform())
        errors.Error(argument.expr,
                     "Argument " + number + " of function '" + name + "' cannot be uniform");
}

void SlcCheckParamDetails(SlcCheckDetail& walker, SlcFuncSymbolEntry& entry,
                          SlcProcCallExprNode* call)
{
    std::size_t position = 0;
    for (const auto& argument : SlcDeclaredArguments(entry, call))
        CheckParamDetail(*walker.Errors(), entry.GetName(), position++, argument);
}

/// Of functions that take any detail: what they write to must be a variable all the same.
void CheckOutputs(SlcCheckDetail& walker, SlcFuncSymbolEntry& entry, SlcProcCallExprNode* call)
{
    std::size_t position = 0;
    for (const auto& argument : SlcDeclaredArguments(entry, call)) {
        if (argument.storage->IsOutput())
            (void)SlcCheckOutputArgument(*walker.Errors(), argument.expr, position,
                                         entry.GetName());
        ++position;
    }
}

/// The combination of the arguments; without any, what the context wants.
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
    return CombineArguments(call, walker->ExpectedDetail(),
                            [](const SlcExprNode* expr) { return SlcFirstDetailOf(expr); });
}

SlcDetailNode* SlcAllArgsUniformReturnUniformInline(SlcCheckInlineDetail* walker, SlcFuncEntry,
                                                    SlcProcCallExprNode* call)
{
    return CombineArguments(call, walker->ExpectedDetail(),
                            [](const SlcExprNode* expr) { return SlcInlineDetailOf(expr); });
}

SlcDetailNode* SlcAlwaysReturnVarying(SlcCheckDetail* walker, SlcFuncEntry entry,
                                      SlcProcCallExprNode* call)
{
    CheckOutputs(*walker, *entry, call);
    return SlcDetailNode::AVarying();
}

SlcDetailNode* SlcAlwaysReturnVaryingInline(SlcCheckInlineDetail*, SlcFuncEntry,
                                            SlcProcCallExprNode*)
{
    return SlcDetailNode::AVarying();
}

SlcDetailNode* SlcAlwaysReturnUniform(SlcCheckDetail* walker, SlcFuncEntry entry,
                                      SlcProcCallExprNode* call)
{
    CheckOutputs(*walker, *entry, call);
    return SlcDetailNode::AUniform();
}

SlcDetailNode* SlcAlwaysReturnUniformInline(SlcCheckInlineDetail*, SlcFuncEntry,
                                            SlcProcCallExprNode*)
{
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

#include "semantics/SlcBuiltInDetailRules.h"

#include <string>

#include "frontend/SlcCallNodes.h"
#include "semantics/SlcArgumentChecks.h"
#include "semantics/SlcCheckDetail.h"
#include "semantics/SlcCheckInlineDetail.h"
#include "semantics/SlcInlineDetails.h"

namespace {

/// What a function declares of one of its arguments.
struct Formal {
    SlcDetailNode* detail;
    SlcStorageSpecNode* storage;
};

/// The row of `unpack` calls them inputs, though it writes them.
bool IsUnpackResult(const SlcFuncSymbolEntry& entry, std::size_t position)
{
    return position > 0 && entry.GetOrigin() == SlcFuncOrigin::BuiltIn &&
           entry.GetName() == "unpack";
}

Formal FixedFormal(const SlcFuncSymbolEntry& entry, std::size_t position)
{
    SlcStorageSpecNode* storage = IsUnpackResult(entry, position)
                                      ? SlcStorageSpecNode::AOutput()
                                      : entry.GetArgStorages()[position];
    return {entry.GetArgDetails()[position], storage};
}

/// Calls `visit(position, argument, formal)` for each argument; a tail is followed as far as its
/// arguments match.
template <class Visit>
void ForEachArgument(SlcFuncSymbolEntry& entry, SlcProcCallExprNode* call, Visit visit)
{
    const auto& arguments = call->GetArguments()->GetArgs();
    const std::size_t fixed = entry.GetArgTypes().size();
    if (arguments.size() > fixed)
        entry.VarArgBegin();
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        SlcExprNode* argument = arguments[i].get();
        if (i < fixed) {
            visit(i, argument, FixedFormal(entry, i));
            continue;
        }
        const SlcFuncVarArgLeaf* leaf = entry.VarArgFindNextMatch(argument);
        if (!leaf)
            return;
        visit(i, argument, Formal{leaf->GetDetail(), leaf->GetStorage()});
    }
}

void CheckParamDetail(SlcSemanticError& errors, const std::string& name, std::size_t position,
                      const SlcExprNode* argument, const Formal& formal)
{
    const SlcDetailNode* detail = SlcFirstDetailOf(argument);
    const std::string number = std::to_string(position);
    if (formal.detail->IsUniform() && !detail->IsUniform())
        errors.Error(argument,
                     "Detail mismatch for argument " + number + " of function '" + name + "'");
    if (!formal.storage->IsOutput() || !SlcCheckOutputArgument(errors, argument, position, name))
        return;
    if (!formal.detail->IsUniform() && detail->IsUniform())
        errors.Error(argument,
                     "Argument " + number + " of function '" + name + "' cannot be uniform");
}

void SlcCheckParamDetails(SlcCheckDetail& walker, SlcFuncSymbolEntry& entry,
                          SlcProcCallExprNode* call)
{
    ForEachArgument(entry, call, [&](std::size_t i, SlcExprNode* argument, const Formal& formal) {
        CheckParamDetail(*walker.Errors(), entry.GetName(), i, argument, formal);
    });
}

/// Of functions that take any detail: what they write to must be a variable all the same.
void CheckOutputs(SlcCheckDetail& walker, SlcFuncSymbolEntry& entry, SlcProcCallExprNode* call)
{
    ForEachArgument(entry, call, [&](std::size_t i, SlcExprNode* argument, const Formal& formal) {
        if (formal.storage->IsOutput())
            (void)SlcCheckOutputArgument(*walker.Errors(), argument, i, entry.GetName());
    });
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

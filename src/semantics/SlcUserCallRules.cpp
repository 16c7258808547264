// A call of a user function has the detail of its body with this call's arguments. Most rules are
// the same for a call in a statement and for a call in a body that is being evaluated: both walkers
// pass the place of the call (SlcCallPlace).
//
//     shader code      f(s)      formals get the details of the arguments, the body is evaluated
//     in f             g(x)      the same, one level deeper, with the detail of x in this
//                                evaluation of f
//
// Calls with equal inputs share an evaluation (SlcInlineResults), unless the body accesses outer
// variables, whose details may have changed in between. Evaluations that cannot be shared are
// counted, and rejected if there are too many. A chain of calls is also rejected if it is too deep
// or the stack does not suffice.
//
// Tested by tests/semantics/SlcCheckDetailTest.cpp and SlcCheckLightStatementsTest.cpp.

#include "semantics/SlcUserCallRules.h"

#include <cassert>
#include <map>
#include <string>
#include <vector>

#include "frontend/SlcCallNodes.h"
#include "frontend/SlcDefinitionNodes.h"
#include "frontend/SlcStmtNodes.h"
#include "semantics/SlcArgumentChecks.h"
#include "semantics/SlcCheckDetail.h"
#include "semantics/SlcCheckInlineDetail.h"
#include "semantics/SlcFuncInfo.h"
#include "semantics/SlcInlineDetails.h"
#include "support/QxStack.h"

namespace {

// The stack that the walk of one body may need; a call is rejected if less is left.
constexpr std::size_t k_stackReserve = std::size_t{2} << 20;

/// Returns the detail of a call that has been reported: uniform, so that no later rule reports it.
SlcDetailNode* DetailOfRejectedCall()
{
    return SlcDetailNode::AUniform();
}

/// A formal and the argument that a call passes to it.
struct Passed {
    SlcPtr<SlcVarSymbolEntry> formal;
    SlcStorageSpecNode* storage;
    SlcExprNode* argument;
};

/// If shader code reaches the call, marks the function as called, and returns false, after a
/// report, if this kind of shader must not contain the function's light statements.
template <class Walker>
bool MayBeReached(Walker& walker, SlcFuncInfo& info, SlcProcCallExprNode* call)
{
    if (!walker.Place().inShader)
        return true;
    info.SetCalled();
    const SlcShaderTypeNode* shader = walker.Place().shaderType;
    const std::string& name = call->GetIdent()->GetName();
    if (info.HasIlluminate() && !(shader && shader->IsLight())) {
        walker.Errors()->Error(call,
                               "Cannot call a function containing a 'illuminate' or 'solar' "
                               "statement from this type of shader",
                               name);
        return false;
    }
    if (info.HasIlluminance() && !(shader && shader->SeesLights())) {
        walker.Errors()->Error(call,
                               "Cannot call a function containing a 'illuminance' statement from "
                               "this type of shader",
                               name);
        return false;
    }
    return true;
}

/// Pairs the formals with the arguments of the call, in order. `stage` ends the text of an internal
/// error.
std::vector<Passed> PairArguments(SlcSemanticError& errors, const SlcFuncInfo& info,
                                  SlcProcCallExprNode* call, const char* stage)
{
    const auto& arguments = call->GetArguments()->GetArgs();
    std::vector<Passed> passed;
    passed.reserve(arguments.size());
    std::size_t formals = 0;
    for (const auto& group : info.GetDefinition()->GetFormals()->GetVarDefs()) {
        for (const auto& definition : group->GetDefExprs()->GetDefExprs()) {
            if (formals++ >= arguments.size())
                continue;
            // Look up the name, so that a formal that repeats the name of another shares the entry
            // of the first.
            auto entry = info.GetScope()->FindVarEntry(definition->GetIdent(), true);
            if (entry.Null())
                errors.FatalError(call, "Cannot find " + definition->GetIdent()->GetName() +
                                            " in the symbol table during arguments detail " +
                                            stage);
            passed.push_back({std::move(entry), group->GetTypeSpec()->GetStorage(),
                              arguments[passed.size()].get()});
        }
    }
    if (formals != arguments.size())
        errors.FatalError(call, "Cannot continue inlining checks, invalid number of args");
    return passed;
}

/// True if an argument of this detail must not be passed to a uniform formal. An unknown detail is
/// rejected only if shader code reaches the call; if not, the calls of the enclosing function
/// decide later.
template <class Walker>
bool IsKnownNotUniform(const Walker& walker, const SlcDetailNode* argument)
{
    return argument->IsVarying() || (argument->IsUnknownDetail() && walker.Place().inShader);
}

void AdviseOnDetailOfArgument(SlcCheckDetail& walker, const Passed& passed,
                              const SlcDetailNode& argument)
{
    const std::string& formal = passed.formal->GetName();
    if (argument.IsUniform())
        walker.Errors()->Advise(passed.argument,
                                "the variable is uniform: declare it 'varying', or "
                                "formal '" +
                                    formal + "' 'output uniform'");
    else if (argument.IsVarying())
        walker.Errors()->Advise(passed.argument, "formal '" + formal +
                                                     "' is uniform, and this "
                                                     "argument differs from point to point");
    else
        SlcAdviseOnOpenDetail(*walker.Errors(), passed.argument, argument, walker.Place());
}

bool PassArgument(SlcCheckDetail& walker, const Passed& passed, std::size_t position,
                  const std::string& function)
{
    SlcSemanticError& errors = *walker.Errors();
    SlcDetailNode* argument = SlcFirstDetailOf(passed.argument);
    const bool wantsUniform = passed.formal->GetDetail()->IsUniform();
    const bool isOutput = passed.storage->IsOutput();
    // For an argument that cannot be written, do not also report its detail.
    if (isOutput && !SlcCheckOutputArgument(errors, passed.argument, position, function))
        return false;
    if ((wantsUniform && IsKnownNotUniform(walker, argument)) ||
        (isOutput && !wantsUniform && argument->IsUniform())) {
        errors.Error(passed.argument, "Detail mismatch for argument " + std::to_string(position) +
                                          " of function '" + function + "'");
        AdviseOnDetailOfArgument(walker, passed, *argument);
        return false;
    }
    passed.formal->SetInlineDetail(argument);
    return true;
}

bool PassArgumentInline(SlcCheckInlineDetail& walker, const Passed& passed, std::size_t position,
                        const std::string& function)
{
    SlcDetailNode* argument = SlcInlineDetailOf(passed.argument);
    if (passed.formal->GetDetail()->IsUniform() && IsKnownNotUniform(walker, argument)) {
        walker.Errors()->Error(passed.argument, "Detail mismatch for argument " +
                                                    std::to_string(position) + " of function '" +
                                                    function + "' during inlining");
        return false;
    }
    walker.Defined(*passed.formal, argument);
    return true;
}

/// Returns the variable if the argument is just its name, with `extern` aliases resolved; otherwise
/// null.
SlcPtr<SlcVarSymbolEntry> VariableOf(const SlcExprNode* argument)
{
    const auto* named = dynamic_cast<const SlcIdentExprNode*>(argument);
    return named ? SlcOutermost(named->GetSymbolEntry()) : nullptr;
}

/// Warns if an input and an output are the same variable, since both formals then share its
/// storage.
void WarnOfSharedVariables(SlcSemanticError& errors, const std::vector<Passed>& arguments,
                           const std::string& function)
{
    std::map<const SlcVarSymbolEntry*, const Passed*> outputs;
    for (const Passed& passed : arguments)
        if (const auto variable = VariableOf(passed.argument);
            variable && passed.storage->IsOutput())
            outputs.emplace(&*variable, &passed);
    for (const Passed& passed : arguments) {
        const auto variable = VariableOf(passed.argument);
        const auto output = outputs.find(variable ? &*variable : nullptr);
        if (passed.storage->IsOutput() || output == outputs.end())
            continue;
        const std::string& formal = output->second->formal->GetName();
        errors.Warning(passed.argument,
                       "Variable '" + variable->GetName() + "' is both input '" +
                           passed.formal->GetName() + "' and output '" + formal + "' of '" +
                           function + "': what is written to '" + formal + "' is read from '" +
                           passed.formal->GetName() + "'",
                       2);
    }
}

template <class Walker>
void ReportTooLarge(Walker& walker, SlcFuncInfo& info, SlcProcCallExprNode* call)
{
    if (!walker.Errors()->IsQuiet() && info.GetInlineBudget().IsFirstReport())
        walker.Errors()->Error(call, "Expansion of function '" + call->GetIdent()->GetName() +
                                         "' is too large");
}

/// Returns the evaluation that encloses a call; null if `SlcCheckDetail` checks the call.
const SlcCheckInlineDetail* AroundCall(const SlcCheckDetail&)
{
    return nullptr;
}

const SlcCheckInlineDetail* AroundCall(const SlcCheckInlineDetail& walker)
{
    return &walker;
}

/// Evaluates the body with the current details of the formals.
template <class Walker>
SlcInlineResults::Result EvaluateBody(Walker& walker, const SlcFuncInfo& info,
                                      const std::vector<Passed>& arguments)
{
    SlcCheckInlineDetail evaluate(walker.Errors(), AroundCall(walker));
    for (const Passed& passed : arguments)
        evaluate.Owns(*passed.formal);
    SlcInlineResults::Result result;
    try {
        SlcCallPlace place = walker.Place();
        ++place.level;
        result.detail = evaluate(info.GetDefinition()->GetBody(), place);
    } catch (const SlcAlreadyInLightControlStmt&) {
        result.detail = nullptr;
    }
    for (const Passed& passed : arguments)
        result.formals.push_back(passed.formal->GetInlineDetail());
    return result;
}

/// Returns the detail of the call, after the inline details of the formals have been set to those
/// of the arguments; null if the call would nest light statements. Sets the inline details of the
/// formals to those at the end of the body. If the chain of calls is too deep, the stack too small
/// or the budget used up, reports the first such call of the compile and returns the detail of a
/// rejected call.
template <class Walker>
SlcDetailNode* DetailOfCall(Walker& walker, SlcFuncInfo& info, SlcProcCallExprNode* call,
                            const std::vector<Passed>& arguments)
{
    const bool shared = !info.GetBodyFacts().accessesOuterVariables;
    if (walker.Place().level >= SlcCheckInlineDetail::k_maxLevels ||
        QxStack::Left() < k_stackReserve || (!shared && !info.GetInlineBudget().Take())) {
        ReportTooLarge(walker, info, call);
        return DetailOfRejectedCall();
    }
    if (!shared)
        return EvaluateBody(walker, info, arguments).detail;

    SlcInlineResults::Circumstances circumstances(walker.Place(), walker.Errors()->IsQuiet());
    for (const Passed& passed : arguments)
        circumstances.AddArgument(passed.formal->GetInlineDetail());
    SlcInlineResults& results = info.GetInlineResults();
    const SlcInlineResults::Result* result = results.Find(circumstances);
    if (!result)
        result = &results.Keep(circumstances, EvaluateBody(walker, info, arguments));
    for (std::size_t i = 0; i < arguments.size(); ++i)
        arguments[i].formal->SetInlineDetail(result->formals[i]);
    return result->detail;
}

}  // namespace

SlcDetailNode* SlcCheckArgsDetail(SlcCheckDetail* walker, SlcPtr<SlcFuncSymbolEntry> entry,
                                  SlcProcCallExprNode* call)
{
    const auto info = CheckCast<SlcFuncInfo>(entry->GetFuncInfo());
    assert(info);  // only user functions have these rules
    const std::string& name = call->GetIdent()->GetName();
    SlcSemanticError& errors = *walker->Errors();
    if (!MayBeReached(*walker, *info, call))
        return DetailOfRejectedCall();
    if (walker->Place().inLightStatement && (info->HasIlluminate() || info->HasIlluminance())) {
        errors.Error(call,
                     "Cannot call a function containing a 'solar', 'illuminate' or 'illuminance' "
                     "statement from inside of one of these statements (this will result in "
                     "nesting those statements)",
                     name);
        return DetailOfRejectedCall();
    }
    if (walker->Place().inShader && !walker->Place().inLightStatement &&
        info->GetBodyFacts().needsLightLoop) {
        errors.Error(call, "Function '" + name +
                               "' uses the light of an 'illuminance' statement, "
                               "and cannot be called outside of one");
        return DetailOfRejectedCall();
    }
    const auto arguments = PairArguments(errors, *info, call, "checking");
    bool fits = true;
    for (std::size_t i = 0; i < arguments.size(); ++i)
        fits = PassArgument(*walker, arguments[i], i, name) && fits;
    // Do not evaluate the body: some formal did not get the detail of its argument.
    if (!fits)
        return DetailOfRejectedCall();
    WarnOfSharedVariables(errors, arguments, name);
    SlcDetailNode* const detail = DetailOfCall(*walker, *info, call, arguments);
    if (detail)
        return detail;
    errors.Error(call,
                 "Cannot call a function that calls another function containing a 'solar', "
                 "'illuminate' or 'illuminance' statement from inside of one of these statements "
                 "(this will result in nesting those statements)",
                 name);
    return DetailOfRejectedCall();
}

SlcDetailNode* SlcCheckArgsDetailInline(SlcCheckInlineDetail* walker,
                                        SlcPtr<SlcFuncSymbolEntry> entry, SlcProcCallExprNode* call)
{
    const auto info = CheckCast<SlcFuncInfo>(entry->GetFuncInfo());
    assert(info);  // only user functions have these rules
    SlcSemanticError& errors = *walker->Errors();
    if (!MayBeReached(*walker, *info, call))
        return DetailOfRejectedCall();
    if (walker->Place().inLightStatement && (info->HasIlluminate() || info->HasIlluminance()))
        throw SlcAlreadyInLightControlStmt();
    const auto arguments = PairArguments(errors, *info, call, "checking inlining");
    bool fits = true;
    for (std::size_t i = 0; i < arguments.size(); ++i)
        fits = PassArgumentInline(*walker, arguments[i], i, call->GetIdent()->GetName()) && fits;
    if (!fits)
        return DetailOfRejectedCall();
    SlcDetailNode* const detail = DetailOfCall(*walker, *info, call, arguments);
    if (!detail)
        throw SlcAlreadyInLightControlStmt();
    // The detail of an output formal becomes that of the caller's variable.
    for (const Passed& passed : arguments)
        if (passed.storage->IsOutput() && passed.argument->IsReferenceExpr())
            walker->Written(passed.argument, passed.formal->GetInlineDetail());
    return detail;
}

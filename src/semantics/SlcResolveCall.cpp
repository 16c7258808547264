// Selects the overload of a call in steps:
//
//     1. find the overloads of that name that return the requested type and match the arguments
//        exactly, or, if there is none, by promotion
//     2. collect the types that these overloads expect of each argument; report an argument of
//        which they expect different types
//     3. if there are several overloads, look up the one for these types in the scope, or prefer
//        one whose arrays have the lengths of the arguments
//
//     float x = noise(P)      a float is requested: of the overloads of noise with that result,
//                             one takes a point; a triple as the argument would become a point
//
// Tested by tests/semantics/SlcResolveUniqueTypeTest.cpp.

#include "semantics/SlcResolveCall.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "semantics/SlcConstantArguments.h"
#include "semantics/SlcFilterstepArgs.h"
#include "semantics/SlcTypedExpr.h"

using namespace SlcTypedExpr;

namespace {

/// A function that exists only in some types of shaders: `in` returns true for them. If `arguments`
/// is not 0, this concerns only calls with that number of arguments.
struct Availability {
    std::string_view name;
    bool (*in)(const SlcShaderTypeNode& shader);
    std::size_t arguments = 0;
};

bool InSurface(const SlcShaderTypeNode& shader)
{
    return shader.IsSurface();
}

bool WhereRaysStart(const SlcShaderTypeNode& shader)
{
    return shader.IsSurface() || shader.IsDisplacement() || shader.IsLight();
}

bool NotInImager(const SlcShaderTypeNode& shader)
{
    return !shader.IsImager();
}

//   name           in, arguments
constexpr Availability k_restricted[] = {
    {"ambient", InSurface},          {"diffuse", InSurface},
    {"specular", InSurface},         {"phong", InSurface},
    {"specularstd", InSurface},      {"trace", WhereRaysStart},
    {"incident", NotInImager},       {"opposite", NotInImager},
    {"faceforward", NotInImager, 2},  // reads `Ng`
};

bool IsFilterstep(const SlcFuncSymbolEntry& entry)
{
    return entry.GetOrigin() == SlcFuncOrigin::BuiltIn && entry.GetName() == "filterstep";
}

/// Returns the type that the argument must have: for a formal of type any, the first type of the
/// argument.
SlcTypeNode* ExpectedBy(SlcTypeNode* formal, const SlcExprNode* argument)
{
    return formal->IsAnyType() ? FirstType(argument) : formal;
}

/// Returns advice that a cast of the argument selects the overload: "float noise(...)".
std::string AdviceOnAmbiguity(const SlcExprNode* argument, const std::vector<SlcTypeNode*>& types)
{
    const auto* call = dynamic_cast<const SlcProcCallExprNode*>(argument);
    const std::string operand = call ? " " + call->GetIdent()->GetName() + "(...)'" : " (...)'";
    std::string choices;
    for (const SlcTypeNode* type : types)
        choices += (choices.empty() ? "'" : " or '") + type->ToString() + operand;
    return "write " + choices;
}

}  // namespace

SlcResolveCall::SlcResolveCall(SlcPtr<SlcSemanticError> errors, SlcPtr<SlcSymbolTable> scope,
                               const SlcShaderTypeNode* shaderType)
    : m_errors(std::move(errors)),
      m_scope(std::move(scope)),
      m_shaderType(shaderType)
{
}

void SlcResolveCall::Resolve(SlcProcCallExprNode* call)
{
    m_call = call;
    m_leaves.clear();
    m_args = SlcArgsOf(call->GetArguments());
    SlcTypeNode* wanted = ResolveRequestedType(call);
    const Entry entry = ResolveArgs(wanted);
    if (!CheckShaderType(entry) || !entry)
        return;
    call->SetSymbolEntry(entry);
    SlcCheckConstantArguments(*m_errors, *call);
    if (m_args.size() == entry->GetArgTypes().size())
        return;
    const auto leaves = m_leaves.find(&*entry);
    call->SetTailLeaves(leaves != m_leaves.end() ? std::move(leaves->second) : LeavesOfTail(entry));
}

SlcResolveCall::Entry SlcResolveCall::ResolveArgs(SlcTypeNode* wanted)
{
    if (wanted->IsErrorType()) {
        for (const SlcExprNode* argument : m_args)
            SelectFirst(argument);
        return nullptr;
    }
    std::vector<Types> expected(m_args.size());
    const auto candidates = FindCandidates(wanted);
    for (const Entry& entry : candidates)
        AddExpected(entry, expected);
    if (!ChooseArgTypes(expected) || candidates.empty())
        return nullptr;
    return Choose(candidates, wanted);
}

SlcResolveCall::Entry SlcResolveCall::Choose(const std::vector<Entry>& candidates,
                                             SlcTypeNode* wanted) const
{
    // The arguments now have the types of formals, and arrays of different lengths count as the
    // same type. So a look-up by these types could find an overload that did not match.
    if (candidates.size() == 1)
        return candidates.front();
    const auto exact = std::find_if(candidates.begin(), candidates.end(),
                                    [&](const Entry& entry) { return HasLengths(entry); });
    Entry found = m_scope->FindUniqueFuncEntry(m_call->GetIdent(), wanted, m_args);
    const bool fits = std::find(candidates.begin(), candidates.end(), found) != candidates.end();
    if (exact != candidates.end() && !(fits && HasLengths(found)))
        return *exact;
    return fits ? found : candidates.front();
}

bool SlcResolveCall::HasLengths(const Entry& entry) const
{
    const auto& formals = entry->GetArgTypes();
    for (std::size_t i = 0; i < formals.size(); ++i) {
        const auto* formal = dynamic_cast<const SlcArrayTypeNode*>(formals[i]);
        const auto* argument = dynamic_cast<const SlcArrayTypeNode*>(FirstType(m_args[i]));
        if (formal && argument && formal->GetLength() != argument->GetLength())
            return false;
    }
    return true;
}

std::vector<SlcResolveCall::Entry> SlcResolveCall::FindCandidates(SlcTypeNode* wanted)
{
    const auto entries = m_scope->GetFuncEntrys(m_call->GetIdent(), wanted);
    std::vector<Entry> fitting;
    for (const bool promote : {false, true}) {
        m_promoted = promote;
        std::copy_if(entries.begin(), entries.end(), std::back_inserter(fitting),
                     [&](const Entry& entry) { return Matches(entry, promote); });
        if (!fitting.empty())
            break;
    }
    return fitting;
}

bool SlcResolveCall::Matches(const Entry& entry, bool promote)
{
    if (!entry->CheckNumberArgs(m_args) || !entry->CheckTypeArgs(m_args, nullptr, promote))
        return false;
    if (!IsFilterstep(*entry))
        return true;
    if (!std::exchange(m_filterstepChecked, true))
        m_filterstepTypes = SlcFilterstepArgs(m_errors).CheckFilterstepArgs(m_args);
    return m_filterstepTypes.has_value();
}

void SlcResolveCall::AddExpected(const Entry& entry, std::vector<Types>& expected)
{
    const auto& formals = entry->GetArgTypes();
    for (std::size_t i = 0; i < formals.size(); ++i)
        SlcAddTypeIfNotPresent(expected[i], ExpectedBy(formals[i], m_args[i]));
    if (m_args.size() == formals.size())
        return;
    const auto& leaves = m_leaves[&*entry] = LeavesOfTail(entry);
    for (std::size_t i = 0; i < leaves.size(); ++i) {
        const std::size_t place = formals.size() + i;
        SlcAddTypeIfNotPresent(expected[place],
                               IsFilterstep(*entry)
                                   ? (*m_filterstepTypes)[i]
                                   : ExpectedBy(leaves[i]->GetType(), m_args[place]));
    }
}

std::vector<SlcFuncVarArgLeaf*> SlcResolveCall::LeavesOfTail(const Entry& entry) const
{
    // One walk over the tail for all arguments, since `min` may have thousands.
    SlcFuncVarArgExpr* tail = entry->GetTail();
    std::vector<SlcFuncVarArgLeaf*> leaves;
    tail->Begin();
    for (std::size_t i = entry->GetArgTypes().size(); i < m_args.size(); ++i)
        leaves.push_back(tail->FindNextMatch(m_args[i], m_promoted));
    return leaves;
}

bool SlcResolveCall::ChooseArgTypes(const std::vector<Types>& expected)
{
    bool unambiguous = true;
    for (std::size_t i = 0; i < m_args.size(); ++i) {
        if (expected[i].size() == 1) {
            SetUnique(m_args[i], expected[i].front());
            continue;
        }
        SetUnique(m_args[i], SlcTypeNode::AError());
        if (expected[i].empty())
            continue;
        m_errors->Error(m_args[i], "Ambiguous type for argument " + std::to_string(i + 1) +
                                       " of '" + m_call->GetIdent()->GetName() + "'");
        m_errors->Advise(m_args[i], AdviceOnAmbiguity(m_args[i], expected[i]));
        unambiguous = false;
    }
    return unambiguous;
}

bool SlcResolveCall::CheckShaderType(const Entry& entry)
{
    // A function of the source may have the name of a restricted built-in.
    if (entry && entry->GetOrigin() != SlcFuncOrigin::BuiltIn)
        return true;
    const std::string& name = m_call->GetIdent()->GetName();
    for (const Availability& restricted : k_restricted) {
        if (restricted.name != name || !m_shaderType || restricted.in(*m_shaderType))
            continue;
        if (restricted.arguments != 0 && restricted.arguments != m_args.size())
            continue;
        m_errors->Error(m_call, "Function '" + name + "' is unavailable in " +
                                    m_shaderType->ToString() + " shader");
        return false;
    }
    return true;
}

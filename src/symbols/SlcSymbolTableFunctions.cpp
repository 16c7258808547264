// Look-up of functions. All scopes are searched, nearest first, and an exact match in an outer
// scope is better than a match with promotion in an inner one:
//
//     float f(color c)       in the body         f(1)      outer f(float): an exact match
//     float f(float x)       before the shader   f(Cs)     inner f(color)
//     float f(float x, y)    before the shader   f("a")    none: the report is about f(float), the
//                                                          closest in the outermost table
//
// Each scope is searched by groups, each with the entries of one name in one table. So the cost
// does not depend on the number of tables: a scope with a thousand declarations costs one search.
//
// Tested by tests/symbols/SlcSymbolTableTest.cpp.

#include "symbols/SlcSymbolTable.h"

#include <algorithm>
#include <utility>

#include "frontend/SlcCallNodes.h"
#include "frontend/SlcDefinitionNodes.h"
#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncDSOSymbolEntry.h"
#include "symbols/SlcPossibleTypes.h"
#include "symbols/SlcSymbolScope.h"

struct SlcSymbolTable::Group {
    std::vector<SlcPtr<SlcSymbolEntry>> entries;
};

namespace {

SlcTypeNode* TypeOf(const SlcDefExprNode& definition, SlcTypeNode* declared)
{
    return definition.IsArray() ? SlcTypeNode::CreateArrayType(declared, definition.GetArraySize())
                                : declared;
}

/// Calls `visit(definition, typeSpec)` for each name of the formals.
template <class Visit>
void ForEachFormal(const SlcFormalsNode& formals, Visit visit)
{
    for (const auto& group : formals.GetVarDefs())
        for (const auto& definition : group->GetDefExprs()->GetDefExprs())
            visit(*definition, *group->GetTypeSpec());
}

std::vector<SlcTypeNode*> TypesOf(const SlcFormalsNode& formals)
{
    std::vector<SlcTypeNode*> types;
    ForEachFormal(formals, [&](const SlcDefExprNode& definition, const SlcTypeSpecNode& spec) {
        types.push_back(TypeOf(definition, spec.GetType()));
    });
    return types;
}

/// True if the arguments, which must have their unique types, match the fixed formals. Further
/// arguments are accepted if there is a variable tail, but not compared with it.
bool MatchesUniqueTypes(const SlcFuncSymbolEntry& entry, const SlcCallArgs& args, bool promote)
{
    const auto& formals = entry.GetArgTypes();
    if (args.size() < formals.size() || (args.size() > formals.size() && !entry.IsVarNbArgs()))
        return false;
    for (std::size_t i = 0; i < formals.size(); ++i) {
        const SlcTypeNode* type = SlcPossibleTypes::Of(args[i])->GetUniqueType();
        const bool fits = promote && !entry.GetArgStorages()[i]->IsOutput()
                              ? type->IsPromotableAs(formals[i])
                              : formals[i]->IsSameType(type);
        if (!fits)
            return false;
    }
    return true;
}

bool HasFormals(const SlcFuncSymbolEntry& entry, const std::vector<SlcTypeNode*>& types)
{
    const auto& formals = entry.GetArgTypes();
    return std::equal(formals.begin(), formals.end(), types.begin(), types.end(),
                      [](const SlcTypeNode* formal, const SlcTypeNode* type) {
                          return formal->IsSameType(type);
                      });
}

/// Compares types including array lengths; an unspecified length equals only another such length.
bool IsOfShape(const SlcTypeNode* one, const SlcTypeNode* other)
{
    return one->IsSameType(other) &&
           (!one->IsArrayType() || static_cast<const SlcArrayTypeNode*>(one)->GetLength() ==
                                       static_cast<const SlcArrayTypeNode*>(other)->GetLength());
}

bool HasShape(const SlcFuncSymbolEntry& entry, const SlcTypeNode* returnType,
              const std::vector<SlcTypeNode*>& types)
{
    const auto& formals = entry.GetArgTypes();
    return IsOfShape(entry.GetReturnType(), returnType) &&
           std::equal(formals.begin(), formals.end(), types.begin(), types.end(), IsOfShape);
}

SlcPtr<SlcFuncSymbolEntry> AsFunction(const SlcPtr<SlcSymbolEntry>& entry)
{
    return entry->IsFunction() ? CheckCast<SlcFuncSymbolEntry>(entry) : nullptr;
}

/// A call whose overloads are being tried.
struct TriedCall {
    const SlcCallArgs& args;
    SlcPtr<SlcSemanticError> sink;  // null once a fault has been reported
    bool noVoid;
};

/// The matches in one table for a call.
struct TableMatches {
    std::vector<SlcTypeNode*> types;       // return types of the matching overloads
    SlcPtr<SlcFuncSymbolEntry> function;   // the last overload of the name
    SlcPtr<SlcFuncSymbolEntry> withCount;  // the last overload with the right number of arguments
};

TableMatches MatchesIn(TriedCall& call, const std::vector<SlcPtr<SlcSymbolEntry>>& entries,
                       bool promote)
{
    TableMatches matches;
    for (const auto& entry : entries) {
        const auto candidate = AsFunction(entry);
        if (candidate.Null())
            continue;
        matches.function = candidate;
        if (!candidate->CheckNumberArgs(call.args))
            continue;
        matches.withCount = candidate;
        const int errorsBefore = NbErrors();
        const bool fits = candidate->CheckTypeArgs(call.args, call.sink, promote);
        // A fault in an argument is reported once, however many overloads are tried.
        if (NbErrors() != errorsBefore)
            call.sink = nullptr;
        if (fits && !(call.noVoid && candidate->GetReturnType()->IsVoidType()))
            SlcAddTypeIfNotPresent(matches.types, candidate->GetReturnType());
    }
    return matches;
}

/// Returns the overload to report when none matches: among those with the right number of
/// arguments, the one with the fewest mismatches; among equals the last.
SlcPtr<SlcFuncSymbolEntry> ClosestOf(const std::vector<SlcPtr<SlcSymbolEntry>>& entries,
                                     const SlcCallArgs& args)
{
    SlcPtr<SlcFuncSymbolEntry> closest;
    std::size_t fewest = args.size();
    for (const auto& entry : entries) {
        const auto candidate = AsFunction(entry);
        if (candidate.Null() || !candidate->CheckNumberArgs(args))
            continue;
        if (const std::size_t mismatches = candidate->CountMismatches(args); mismatches <= fewest) {
            closest = candidate;
            fewest = mismatches;
        }
    }
    return closest;
}

}  // namespace

SlcPtr<SlcFuncSymbolEntry>
SlcSymbolTable::AddFuncEntry(SlcIdentNode* ident, SlcTypeNode* returnType, SlcFormalsNode* formals,
                             SlcPtr<SlcAnnotation> info, SlcCheckDetailProc checkDetail,
                             SlcCheckInlineDetailProc checkInlineDetail)
{
    SlcFuncSignature signature;
    signature.ident = ident;
    signature.returnType = returnType;
    signature.checkDetail = checkDetail;
    signature.checkInlineDetail = checkInlineDetail;
    signature.origin = SlcFuncOrigin::User;
    ForEachFormal(*formals, [&](const SlcDefExprNode& definition, const SlcTypeSpecNode& spec) {
        signature.argTypes.push_back(TypeOf(definition, spec.GetType()));
        signature.argDetails.push_back(spec.GetDetail());
        signature.argStorages.push_back(spec.GetStorage());
    });
    auto entry = MakeShared<SlcFuncSymbolEntry>(std::move(signature));
    entry->SetFuncInfo(std::move(info));
    AddEntry(entry);
    return entry;
}

SlcPtr<SlcFuncDSOSymbolEntry> SlcSymbolTable::AddFuncEntryDSO(SlcIdentNode* ident,
                                                              const std::string& libraryPath,
                                                              SlcShadeopDeclaration declaration,
                                                              const SlcShadeopRules& rules)
{
    auto entry =
        MakeShared<SlcFuncDSOSymbolEntry>(ident, libraryPath, std::move(declaration), rules);
    AddEntry(entry);
    return entry;
}

std::vector<SlcSymbolTable::Group> SlcSymbolTable::GroupsOf(SlcIdentNode* ident) const
{
    std::vector<Group> groups;
    for (const SlcSymbolTable* table = this; table; table = table->NextScope()) {
        const auto* named = table->m_scope->Find(ident->GetName());
        if (!named)
            continue;
        auto end = std::upper_bound(
            named->begin(), named->end(), table->m_position,
            [](int position, const SlcSymbolScope::Named& n) { return position < n.table; });
        while (end != named->begin()) {
            auto begin = end;
            while (begin != named->begin() && (begin - 1)->table == (end - 1)->table)
                --begin;
            Group group;
            for (auto entry = begin; entry != end; ++entry)
                group.entries.push_back(entry->entry);
            groups.push_back(std::move(group));
            end = begin;
        }
    }
    return groups;
}

SlcOverloads SlcSymbolTable::FindOverloads(const SlcLookup& lookup,
                                           const SlcPtr<SlcSemanticError>& sink) const
{
    using Outcome = SlcOverloads::Outcome;
    const SlcCallArgs args = SlcArgsOf(lookup.arguments);
    const std::vector<Group> groups = GroupsOf(lookup.ident);
    TriedCall call{args, sink, lookup.functions == SlcLookup::Functions::WithValue};
    TableMatches outermost;  // of the last table tried that has a function; determines the error
    const Group* outermostGroup = nullptr;  // the group of `outermost`
    const auto searchPass = [&](bool promoted) {
        for (const Group& group : groups) {
            if (TableMatches matches = MatchesIn(call, group.entries, promoted); matches.function) {
                outermost = std::move(matches);
                outermostGroup = &group;
            }
            if (!outermost.types.empty())
                return;
        }
    };

    searchPass(false);
    // Promotion cannot fix a wrong number of arguments.
    const bool wrongCount = outermost.function && outermost.withCount.Null();
    if (outermost.types.empty() && !wrongCount)
        searchPass(true);
    if (!outermost.types.empty())
        return {Outcome::Found, std::move(outermost.types), nullptr};
    if (outermost.function.Null())
        return {Outcome::UnknownName, {}, nullptr};
    if (outermost.withCount.Null())
        return {Outcome::WrongCount, {}, nullptr};
    return {Outcome::WrongTypes, {}, ClosestOf(outermostGroup->entries, args)};
}

std::deque<SlcPtr<SlcFuncSymbolEntry>> SlcSymbolTable::GetFuncEntrys(SlcIdentNode* ident,
                                                                     SlcTypeNode* returnType) const
{
    std::deque<SlcPtr<SlcFuncSymbolEntry>> entries;
    for (const Group& group : GroupsOf(ident))
        for (const auto& entry : group.entries)
            if (auto function = AsFunction(entry);
                function && returnType->IsSameType(function->GetReturnType()))
                entries.push_back(function);
    return entries;
}

SlcPtr<SlcFuncSymbolEntry> SlcSymbolTable::FindUniqueFuncEntry(SlcIdentNode* ident,
                                                               SlcTypeNode* returnType,
                                                               const SlcCallArgs& args) const
{
    const std::vector<Group> groups = GroupsOf(ident);
    const auto searchPass = [&](bool promoted) {
        SlcPtr<SlcFuncSymbolEntry> kept;
        for (const Group& group : groups) {
            for (const auto& entry : group.entries) {
                const auto function = AsFunction(entry);
                if (function && returnType->IsSameType(function->GetReturnType()) &&
                    MatchesUniqueTypes(*function, args, promoted))
                    kept = function;
            }
            if (kept)
                break;
        }
        return kept;
    };
    auto entry = searchPass(false);
    return entry ? entry : searchPass(true);
}

SlcPtr<SlcFuncSymbolEntry> SlcSymbolTable::FindUniqueFuncEntry(SlcIdentNode* ident,
                                                               SlcTypeNode* returnType,
                                                               SlcFormalsNode* formals) const
{
    const auto types = TypesOf(*formals);
    for (const auto& function : GetFuncEntrys(ident, returnType))
        if (HasFormals(*function, types))
            return function;
    return nullptr;
}

SlcPtr<SlcFuncSymbolEntry> SlcSymbolTable::FindUserFunction(SlcIdentNode* ident,
                                                            const SlcTypeNode* returnType,
                                                            const SlcFormalsNode* formals) const
{
    const auto types = TypesOf(*formals);
    if (const auto* named = m_scope->Find(ident->GetName())) {
        for (auto entry = named->rbegin(); entry != named->rend(); ++entry) {
            const auto function = AsFunction(entry->entry);
            if (entry->table <= m_position && function &&
                function->GetOrigin() == SlcFuncOrigin::User &&
                HasShape(*function, returnType, types))
                return function;
        }
    }
    const auto& previous = m_scope->m_previous;
    return previous ? previous->FindUserFunction(ident, returnType, formals) : nullptr;
}

SlcCallArgs SlcArgsOf(const SlcProcArgsNode* arguments)
{
    SlcCallArgs args;
    args.reserve(arguments->GetArgs().size());
    for (const auto& argument : arguments->GetArgs())
        args.push_back(argument.get());
    return args;
}

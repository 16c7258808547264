// Checks whether a call matches a function. The fixed arguments are compared one by one; further
// arguments are passed in order to the function's variable tail, which keeps its state from one to
// the next. With promotion, a formal also accepts types that promote to its type. An output formal
// never does, since the result would have to be converted back.
//
// Tested by tests/symbols/SlcSymbolTableTest.cpp and SlcFuncVarArgExprTest.cpp.

#include "symbols/SlcFuncSymbolEntry.h"

#include <string>
#include <utility>

#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncTail.h"
#include "symbols/SlcFuncVarArgExpr.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

/// Returns advice for an argument that the variable tail rejects; empty for a tail without names.
/// `previous` is the leaf that accepted the preceding argument; null for the first argument of the
/// tail.
std::string AdviceOnTail(const SlcFuncVarArgLeaf* previous, const SlcExprNode* arg,
                         SlcFuncVarArgExpr* tail)
{
    if (const auto* pair = dynamic_cast<const SlcFuncVarArgPair*>(previous))
        return "the value of \"" + pair->GetName() + "\" is a " +
               pair->GetValue()->GetType()->ToString();
    std::string names;
    for (const SlcFuncVarArgPair* pair : SlcTailPairs(tail))
        names += (names.empty() ? "\"" : ", \"") + pair->GetName() + "\"";
    if (names.empty())
        return {};
    const auto* constant = dynamic_cast<const SlcConstExprNode*>(arg);
    if (constant && constant->GetStringConst())
        return "unknown argument " + constant->GetStringConst()->GetText() + ", known are " + names;
    return "the name of an argument is expected: " + names;
}

}  // namespace

SlcFuncSymbolEntry::SlcFuncSymbolEntry(SlcFuncSignature signature)
    : SlcSymbolEntry(signature.ident),
      m_signature(std::move(signature))
{
}

SlcFuncSymbolEntry::~SlcFuncSymbolEntry() = default;

bool SlcFuncSymbolEntry::CheckNumberArgs(const SlcCallArgs& args) const
{
    return args.size() == m_signature.argTypes.size();
}

bool SlcFuncSymbolEntry::CheckTypeArgs(const SlcCallArgs& args, const SlcPtr<SlcSemanticError>&,
                                       bool promote)
{
    for (std::size_t i = 0; i < m_signature.argTypes.size() && i < args.size(); ++i)
        if (!MatchesFormal(args[i], i, promote))
            return false;
    return true;
}

bool SlcFuncSymbolEntry::MatchesFormal(const SlcExprNode* arg, std::size_t position,
                                       bool promote) const
{
    SlcTypeNode* formal = m_signature.argTypes[position];
    const bool mayPromote = promote && !m_signature.argStorages[position]->IsOutput();
    const SlcTypeNode* type = SlcPossibleTypes::Of(arg)->IsInTypes(formal, mayPromote);
    return type && (formal->IsAnyType() || type->IsPromotableAs(formal));
}

std::size_t SlcFuncSymbolEntry::CountMismatches(const SlcCallArgs& args) const
{
    std::size_t mismatches = 0;
    for (std::size_t i = 0; i < m_signature.argTypes.size() && i < args.size(); ++i)
        mismatches += MatchesFormal(args[i], i, true) ? 0 : 1;
    return mismatches;
}

void SlcFuncSymbolEntry::ErrorsTypeArgs(const SlcCallArgs& args,
                                        const SlcPtr<SlcSemanticError>& sink, std::string_view name)
{
    bool reported = false;
    std::size_t i = 0;
    const auto messageFor = [&] {
        return "Invalid type for argument " + std::to_string(i + 1) + " of '" + std::string(name) +
               "' function ";
    };
    for (; i < m_signature.argTypes.size() && i < args.size(); ++i) {
        if (MatchesFormal(args[i], i, true))
            continue;
        reported = true;
        // An argument without a type has already been reported.
        if (!SlcPossibleTypes::Of(args[i])->GetTypes().empty())
            sink->Error(args[i],
                        messageFor() + "(" + m_signature.argTypes[i]->ToString() + " expected)");
    }
    // A fixed argument often does not match because an argument is missing or misplaced. All later
    // arguments are then shifted, so reports about the tail would only follow from that fault.
    if (reported || !VarArgBegin())
        return;
    const SlcFuncVarArgLeaf* leaf = nullptr;
    for (; i < args.size(); ++i) {
        const SlcFuncVarArgLeaf* previous = leaf;
        leaf = VarArgFindNextMatch(args[i], true);
        if (leaf)
            continue;
        if (SlcPossibleTypes::Of(args[i])->GetTypes().empty())
            return;
        sink->Error(args[i], messageFor());
        if (const std::string advice = AdviceOnTail(previous, args[i], GetTail()); !advice.empty())
            sink->Advise(args[i], advice);
        return;
    }
    if (leaf && leaf->IsPairName())
        sink->Error(args.back(),
                    "Argument missing for a name-value pair in " + std::string(name) + "(...)");
}

SlcDetailNode* SlcFuncSymbolEntry::CheckDetail(SlcCheckDetail* walker, SlcProcCallExprNode* call)
{
    return m_signature.checkDetail(walker, this, call);
}

SlcDetailNode* SlcFuncSymbolEntry::CheckInlineDetail(SlcCheckInlineDetail* walker,
                                                     SlcProcCallExprNode* call)
{
    return m_signature.checkInlineDetail(walker, this, call);
}

const std::vector<SlcTypeNode*>& SlcFuncSymbolEntry::GetArgTypes() const
{
    return m_signature.argTypes;
}

const std::vector<SlcDetailNode*>& SlcFuncSymbolEntry::GetArgDetails() const
{
    return m_signature.argDetails;
}

const std::vector<SlcStorageSpecNode*>& SlcFuncSymbolEntry::GetArgStorages() const
{
    return m_signature.argStorages;
}

const std::vector<SlcDetailNode*>& SlcFuncSymbolEntry::GetSIMDDetails() const
{
    return m_signature.simdDetails;
}

void SlcFuncSymbolEntry::SetFuncInfo(SlcPtr<SlcAnnotation> info)
{
    m_funcInfo = std::move(info);
}

SlcFuncVarListSymbolEntry::SlcFuncVarListSymbolEntry(SlcFuncSignature signature,
                                                     std::unique_ptr<SlcFuncVarArgExpr> tail)
    : SlcFuncSymbolEntry(std::move(signature)),
      m_tail(std::move(tail))
{
}

SlcFuncVarListSymbolEntry::~SlcFuncVarListSymbolEntry() = default;

bool SlcFuncVarListSymbolEntry::CheckNumberArgs(const SlcCallArgs& args) const
{
    const std::size_t fixed = GetArgTypes().size();
    if (args.size() <= fixed)
        return args.size() == fixed;
    const int most = m_tail->GetMaxSize(true);
    return most < 0 || args.size() - fixed <= static_cast<std::size_t>(most);
}

bool SlcFuncVarListSymbolEntry::CheckTypeArgs(const SlcCallArgs& args,
                                              const SlcPtr<SlcSemanticError>& sink, bool promote)
{
    if (!SlcFuncSymbolEntry::CheckTypeArgs(args, sink, promote))
        return false;
    if (args.size() == GetArgTypes().size())
        return true;
    m_tail->Begin();
    const SlcFuncVarArgLeaf* leaf = nullptr;
    for (std::size_t i = GetArgTypes().size(); i < args.size(); ++i) {
        if (SlcPossibleTypes::Of(args[i])->IsInTypes(SlcTypeNode::AVoid(), false)) {
            if (sink)
                sink->Error(args[i], "Void calls may not be used as parameters");
            return false;
        }
        leaf = m_tail->FindNextMatch(args[i], promote);
        if (!leaf)
            return false;
    }
    // A name at the end lacks its value.
    return !leaf || !leaf->IsPairName();
}

SlcFuncVarArgExpr* SlcFuncVarListSymbolEntry::VarArgBegin()
{
    return m_tail->Begin();
}

SlcFuncVarArgLeaf* SlcFuncVarListSymbolEntry::VarArgFindNextMatch(SlcExprNode* expr, bool promote)
{
    return m_tail->FindNextMatch(expr, promote);
}

SlcFuncVarArgExpr* SlcFuncVarListSymbolEntry::VarArgNext()
{
    return m_tail->Next(true);
}

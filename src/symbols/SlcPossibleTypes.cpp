// The set of types of an expression. If promotion is allowed, it works in both directions: a float
// in the set matches a required color, and a color in the set matches a required float.
//
//     {point, color}   color required   color
//     {float}          color required   color, promoted
//     {error}          any but void     error: a report has been made, so it matches
//
// Tested by tests/semantics/SlcCalculateTypesSetsTest.cpp.

#include "symbols/SlcPossibleTypes.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <set>

#include "support/SlcCompilation.h"

namespace {

using TypeSet = std::vector<SlcTypeNode*>;

struct SharedSets {
    std::set<TypeSet> sets;
    std::array<const TypeSet*, 16> recent = {};  // sets with one type, by the type's address
};

/// Returns the shared set with these members in this order. It lives until the compilation ends.
const TypeSet* SharedSet(TypeSet types)
{
    return &*SlcPartOfCompilation<SharedSets>().sets.insert(std::move(types)).first;
}

/// Does the same for one type, usually without an allocation or a search.
const TypeSet* SharedSet(SlcTypeNode* type)
{
    auto& recent = SlcPartOfCompilation<SharedSets>().recent;
    const auto place = reinterpret_cast<std::uintptr_t>(type) / sizeof(SlcTypeNode);
    const TypeSet*& set = recent[place % recent.size()];
    if (!set || set->front() != type)
        set = SharedSet(TypeSet{type});
    return set;
}

}  // namespace

void SlcAddTypeIfNotPresent(std::vector<SlcTypeNode*>& types, SlcTypeNode* type)
{
    if (std::none_of(types.begin(), types.end(),
                     [type](const SlcTypeNode* member) { return member->IsSameType(type); }))
        types.push_back(type);
}

SlcPossibleTypes::SlcPossibleTypes(std::vector<SlcTypeNode*> types)
    : m_types(SharedSet(std::move(types)))
{
}

SlcPossibleTypes::SlcPossibleTypes(SlcTypeNode* type) : m_types(SharedSet(type)) {}

SlcPtr<SlcPossibleTypes> SlcPossibleTypes::Of(const SlcExprNode* expr)
{
    return CheckCast<SlcPossibleTypes>(expr->GetAnnotation());
}

SlcTypeNode* SlcPossibleTypes::IsInTypes(SlcTypeNode* type, bool promote) const
{
    SlcTypeNode* candidate = nullptr;
    for (SlcTypeNode* member : *m_types) {
        // A reported expression may have type error, which matches any type except void.
        if (type->IsSameType(member) || (member->IsErrorType() && !type->IsVoidType()))
            return member;
        if (!promote || candidate)
            continue;
        if (type->IsPromotableAs(member))
            candidate = member;
        else if (member->IsPromotableAs(type))
            candidate = type;
    }
    return candidate;
}

void SlcPossibleTypes::SetOperandHint(SlcPtr<SlcLexType> operand)
{
    m_operandHint = std::move(operand);
}

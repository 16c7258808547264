#include "symbols/SlcPossibleTypes.h"

#include <algorithm>

void SlcAddTypeIfNotPresent(std::vector<SlcTypeNode*>& types, SlcTypeNode* type)
{
    if (std::none_of(types.begin(), types.end(),
                     [type](const SlcTypeNode* member) { return member->IsSameType(type); }))
        types.push_back(type);
}

SlcPtr<SlcPossibleTypes> SlcPossibleTypes::Of(const SlcExprNode* expr)
{
    return CheckCast<SlcPossibleTypes>(expr->GetAnnotation());
}

SlcTypeNode* SlcPossibleTypes::IsInTypes(SlcTypeNode* type, bool promote) const
{
    SlcTypeNode* candidate = nullptr;
    for (SlcTypeNode* member : m_types) {
        // What has been reported suits whoever wants a value.
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

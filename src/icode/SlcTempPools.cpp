#include "icode/SlcTempPools.h"

#include <algorithm>

SlcTempPools::Kind* SlcTempPools::KindOf(const SlcTypeNode* type, const SlcDetailNode* detail)
{
    if (type->IsArrayRefType() || type->IsArrayType())
        return nullptr;
    const std::size_t first = detail->IsUniform() ? 3 : 0;
    if (type->IsFloatType())
        return &m_kinds[first];
    if (type->IsPointType())
        return &m_kinds[first + 1];
    if (type->IsColorType())
        return &m_kinds[first + 2];
    return nullptr;
}

SlcOperand SlcTempPools::Take(const SlcTypeNode* type, const SlcDetailNode* detail)
{
    Kind* kind = KindOf(type, detail);
    if (!kind || kind->free.empty())
        return nullptr;
    SlcOperand temporary = kind->free.back();
    kind->free.pop_back();
    kind->used.push_back(temporary);
    return temporary;
}

void SlcTempPools::AddUsed(const SlcOperand& temporary)
{
    if (Kind* kind = KindOf(temporary->GetType(), temporary->GetDetail()))
        kind->used.push_back(temporary);
}

void SlcTempPools::ReleaseUsed()
{
    for (Kind& kind : m_kinds) {
        kind.free.insert(kind.free.end(), kind.used.begin(), kind.used.end());
        kind.used.clear();
    }
}

void SlcTempPools::ForgetUsed()
{
    for (Kind& kind : m_kinds)
        kind.used.clear();
}

void SlcTempPools::Reclaim(const SlcOperand& operand)
{
    Kind* kind = KindOf(operand->GetType(), operand->GetDetail());
    if (!kind)
        return;
    const auto found = std::find(kind->free.begin(), kind->free.end(), operand);
    if (found == kind->free.end())
        return;
    kind->free.erase(found);
    kind->used.push_back(operand);
}

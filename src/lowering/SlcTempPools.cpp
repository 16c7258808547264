// Temporaries are reused from statement to statement. A function body that is expanded in the
// middle of a statement must not free temporaries that the statement still needs:
//
//     statement       T0, T1 in use;  T2, T3 free
//     EnterBody       T0, T1 set aside; the body may take T3, T2 and new ones
//     LeaveBody       T0, T1 in use;  T2, T3 free, except that one of them is in use if it is the
//                     body's result; the new ones are not reused
//
// To restore the free list without copying it at each entry, the saved state records only how many
// entries at the bottom the body never took (`untouched`), and which ones it took from the top
// (`taken`). If the result is a taken one, the enclosing body has lost a free temporary without
// taking it itself. `NoteTaken` then records for the enclosing body what the inner one took.
//
// Tested by tests/lowering/SlcTempPoolsTest.cpp.

#include "lowering/SlcTempPools.h"

#include <utility>

std::size_t SlcTempPools::PlaceOf(const SlcTypeNode* type, const SlcDetailNode* detail)
{
    if (type->IsArrayRefType() || type->IsArrayType())
        return k_noPool;
    const std::size_t first = detail->IsUniform() ? 3 : 0;
    if (type->IsFloatType())
        return first;
    if (type->IsPointType())
        return first + 1;
    if (type->IsColorType())
        return first + 2;
    return k_noPool;
}

SlcOperand SlcTempPools::Acquire(const SlcTypeNode* type, const SlcDetailNode* detail)
{
    const std::size_t place = PlaceOf(type, detail);
    if (place == k_noPool || m_kinds[place].free.empty())
        return nullptr;
    Kind& kind = m_kinds[place];
    SlcOperand temporary = std::move(kind.free.back());
    kind.free.pop_back();
    kind.used.push_back(temporary);
    if (!m_bodies.empty()) {
        SavedKind& saved = m_bodies.back()[place];
        if (kind.free.size() < saved.untouched) {
            saved.untouched = kind.free.size();
            saved.taken.push_back(temporary);
        }
    }
    return temporary;
}

void SlcTempPools::AddUsed(const SlcOperand& temporary)
{
    const std::size_t place = PlaceOf(temporary->GetType(), temporary->GetDetail());
    if (place != k_noPool)
        m_kinds[place].used.push_back(temporary);
}

void SlcTempPools::ReleaseUsed()
{
    for (Kind& kind : m_kinds) {
        kind.free.insert(kind.free.end(), kind.used.begin(), kind.used.end());
        kind.used.clear();
    }
}

void SlcTempPools::EnterBody()
{
    SavedKinds& saved = m_bodies.emplace_back();
    for (std::size_t place = 0; place < m_kinds.size(); ++place) {
        saved[place].used.swap(m_kinds[place].used);
        saved[place].untouched = m_kinds[place].free.size();
    }
}

void SlcTempPools::LeaveBody(const SlcOperand& result)
{
    SavedKinds body = std::move(m_bodies.back());
    m_bodies.pop_back();
    for (std::size_t place = 0; place < m_kinds.size(); ++place) {
        SavedKind& saved = body[place];
        Kind& kind = m_kinds[place];
        kind.free.resize(saved.untouched);
        kind.used = std::move(saved.used);
        bool resultWasFree = false;
        for (auto taken = saved.taken.rbegin(); taken != saved.taken.rend(); ++taken) {
            const bool isResult = *taken == result;
            (isResult ? kind.used : kind.free).push_back(*taken);
            resultWasFree = resultWasFree || isResult;
        }
        if (resultWasFree && !m_bodies.empty())
            NoteTaken(m_bodies.back()[place], saved);
    }
}

/// The enclosing body has lost one of its free temporaries to the result of the inner body.
void SlcTempPools::NoteTaken(SavedKind& outer, const SavedKind& inner)
{
    if (inner.untouched >= outer.untouched)
        return;
    const std::size_t freeAtEntry = inner.untouched + inner.taken.size();
    const auto known = static_cast<std::ptrdiff_t>(freeAtEntry - outer.untouched);
    outer.taken.insert(outer.taken.end(), inner.taken.begin() + known, inner.taken.end());
    outer.untouched = inner.untouched;
}

// Loops and conditions compute flags by several instructions, each of which reads and writes the
// flags of all points:
//
//     t = a < b;  t = t and f                     becomes    t = a < b and f
//     t = t and f;  f = f and not t               becomes    f = f and not t
//     t = a < b;  f = f and not t                 becomes    f = f and not a < b
//     u = f is true somewhere;  if not u goto A   becomes    if not f goto A
//
// if `t` and `u` are not live afterwards. A jump within parallel brackets tests a varying flag for
// the points of the strip.
//
// A loop has two flags, of the points that are still in the loop and of those that have not reached
// its `continue`. In a loop without `continue` they are always equal while both are live, and one
// of them replaces the other (see QxJoinFlags.cpp).
//
// Tested by tests/machine/DraftPassesTest.cpp, and with whole shaders by
// tests/host/AgreementTest.cpp.

#include "machine/translate/QxFuseFlags.h"

#include <algorithm>
#include <vector>

#include "machine/translate/QxJoinFlags.h"
#include "machine/translate/QxRemovedDrafts.h"

namespace {

/// A comparison of numbers, and the primitives that combine it with a flag.
struct Comparison {
    SqxPrimitive primitive;
    SqxPrimitive andFlag;     // flag and comparison
    SqxPrimitive notAndFlag;  // flag and not comparison
    bool swapped;             // of the operands: a > b is b < a
};

constexpr Comparison k_comparisons[] = {
    {SqxPrimitive::BOOL_LESS_THEN_FLOAT_FLOAT, SqxPrimitive::MACHINE_LESS_AND,
     SqxPrimitive::MACHINE_NOT_LESS_AND, false},
    {SqxPrimitive::BOOL_GREATER_THEN_FLOAT_FLOAT, SqxPrimitive::MACHINE_LESS_AND,
     SqxPrimitive::MACHINE_NOT_LESS_AND, true},
    {SqxPrimitive::BOOL_LESS_EQUAL_FLOAT_FLOAT, SqxPrimitive::MACHINE_LESS_EQUAL_AND,
     SqxPrimitive::MACHINE_NOT_LESS_EQUAL_AND, false},
    {SqxPrimitive::BOOL_GREATER_EQUAL_FLOAT_FLOAT, SqxPrimitive::MACHINE_LESS_EQUAL_AND,
     SqxPrimitive::MACHINE_NOT_LESS_EQUAL_AND, true},
};

/// Returns the row whose member is the primitive of the draft, or null.
const Comparison* Find(const QxDraft& draft, SqxPrimitive Comparison::*member)
{
    if (draft.code.step != QxCodeStep::Kernel)
        return nullptr;
    const auto* const found = std::find_if(
        std::begin(k_comparisons), std::end(k_comparisons),
        [&](const Comparison& comparison) { return comparison.*member == draft.row->primitive; });
    return found == std::end(k_comparisons) ? nullptr : found;
}

const Comparison* FindComparison(const QxDraft& draft)
{
    return Find(draft, &Comparison::primitive);
}

bool Is(const QxDraft& draft, SqxPrimitive primitive)
{
    return draft.code.step == QxCodeStep::Kernel && draft.row->primitive == primitive;
}

class FlagFuser {
public:
    FlagFuser(QxDraftWriter& writer, QxLiveness& liveness)
        : m_writer(writer),
          m_block(writer.Block()),
          m_liveness(liveness),
          m_removed(m_block)
    {
    }
    void MoveComparisonsOut();
    void FusePairs();

private:
    void MoveOut(std::size_t begin, std::size_t end);
    void FuseWithEarlier(std::size_t index, std::size_t begin);
    [[nodiscard]] bool Fuse(std::size_t before, std::size_t index);
    [[nodiscard]] bool FuseJump(const QxDraft& before, QxDraft& jump);
    [[nodiscard]] bool FuseAnd(const QxDraft& before, QxDraft& draft);
    [[nodiscard]] bool FuseAndNot(const QxDraft& before, QxDraft& draft);
    void Combine(QxDraft& draft, const QxDraft& comparison, SqxPrimitive primitive, bool swapped);
    [[nodiscard]] const QxOperand* OperandsOf(const QxDraft& draft) const
    {
        return m_block.operands.data() + draft.first;
    }

    QxDraftWriter& m_writer;
    QxDraftBlock& m_block;
    QxLiveness& m_liveness;
    QxRemovedDrafts m_removed;
};

/// Moves comparisons that ignore the mask out of the end of brackets, if an `and` follows there.
void FlagFuser::MoveComparisonsOut()
{
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < m_block.drafts.size(); ++i) {
        const QxCodeStep step = m_block.drafts[i].code.step;
        if (QxIsCondition(step)) {
            open.push_back(i);
        } else if (step == QxCodeStep::EndIf) {
            MoveOut(open.back(), i);
            open.pop_back();
        }
    }
    m_removed.Apply(m_liveness);
}

void FlagFuser::MoveOut(std::size_t begin, std::size_t end)
{
    QxDraft& last = m_block.drafts[end - 1];
    const QxDraft& next = m_block.drafts[end + 1];
    if (!FindComparison(last) || last.code.masked != last.code.all ||
        !Is(next, SqxPrimitive::MACHINE_AND) ||
        OperandsOf(next)[0].variable != OperandsOf(last)[0].variable)
        return;
    std::swap(last, m_block.drafts[end]);
    --m_block.drafts[begin].code.target;
    if (begin + 2 == end) {
        m_removed.Remove(begin);
        m_removed.Remove(begin + 1);
    }
}

void FlagFuser::FusePairs()
{
    m_liveness.WalkBack([this](std::size_t index, std::size_t begin) {
        if (m_removed.IsKept(index))
            FuseWithEarlier(index, begin);
    });
    m_removed.Apply(m_liveness);
}

void FlagFuser::FuseWithEarlier(std::size_t index, std::size_t begin)
{
    std::size_t before = m_removed.Before(index, begin);
    while (before != QxRemovedDrafts::k_none && Fuse(before, index)) {
        m_removed.Remove(before);
        before = m_removed.Before(before, begin);
    }
}

bool FlagFuser::Fuse(std::size_t before, std::size_t index)
{
    const QxDraft& first = m_block.drafts[before];
    QxDraft& draft = m_block.drafts[index];
    if (first.code.step != QxCodeStep::Kernel || first.code.count == 0)
        return false;
    if (QxIsConditionalJump(draft.code.step))
        return FuseJump(first, draft);
    if (Is(draft, SqxPrimitive::MACHINE_AND))
        return FuseAnd(first, draft);
    return Is(draft, SqxPrimitive::MACHINE_AND_NOT) && FuseAndNot(first, draft);
}

bool FlagFuser::FuseJump(const QxDraft& before, QxDraft& jump)
{
    const QxOperand* const operands = OperandsOf(before);
    if (!Is(before, SqxPrimitive::SET_UNIFORM_BOOL_FLAG) ||
        operands[0].variable != jump.code.flag.variable || m_liveness.IsLive(operands[0]))
        return false;
    jump.code.flag = operands[1];
    return true;
}

bool FlagFuser::FuseAnd(const QxDraft& before, QxDraft& draft)
{
    const Comparison* const comparison = FindComparison(before);
    const QxOperand result = OperandsOf(draft)[0];
    if (!comparison || OperandsOf(before)[0].variable != result.variable ||
        OperandsOf(draft)[1].variable == result.variable || result.step == 0)
        return false;
    Combine(draft, before, comparison->andFlag, comparison->swapped);
    return true;
}

bool FlagFuser::FuseAndNot(const QxDraft& before, QxDraft& draft)
{
    const QxOperand flag = OperandsOf(draft)[0];
    const QxOperand other = OperandsOf(draft)[1];
    if (OperandsOf(before)[0].variable != other.variable || other.variable == flag.variable ||
        flag.step == 0 || m_liveness.IsLive(other))
        return false;
    // For f and not (t and f), `t` alone suffices.
    if (Is(before, SqxPrimitive::MACHINE_AND))
        return OperandsOf(before)[1].variable == flag.variable;
    const Comparison* const comparison = FindComparison(before);
    const Comparison* const combined = Find(before, &Comparison::andFlag);
    if (!comparison && !(combined && OperandsOf(before)[3].variable == flag.variable))
        return false;
    m_block.operands[draft.first + 1] = flag;
    if (comparison)
        Combine(draft, before, comparison->notAndFlag, comparison->swapped);
    else
        Combine(draft, before, combined->notAndFlag, false);
    return true;
}

/// Replaces `draft`, an operation on two flags, by one that computes the first of them from the
/// operands of the comparison and the second.
void FlagFuser::Combine(QxDraft& draft, const QxDraft& comparison, SqxPrimitive primitive,
                        bool swapped)
{
    const QxOperand result = OperandsOf(draft)[0];
    const QxOperand flag = OperandsOf(draft)[1];
    const QxOperand left = OperandsOf(comparison)[swapped ? 2 : 1];
    const QxOperand right = OperandsOf(comparison)[swapped ? 1 : 2];
    draft.row = &m_writer.RowOf(primitive);
    draft.first = m_block.operands.size();
    draft.code.count = 4;
    m_block.operands.insert(m_block.operands.end(), {result, left, right, flag});
    m_block.letters += "wrrr";
    m_writer.ChooseKernels(draft);
}

}  // namespace

void QxFuseFlags(QxDraftWriter& writer, QxLiveness& liveness, std::size_t variables)
{
    FlagFuser fuser(writer, liveness);
    fuser.MoveComparisonsOut();
    fuser.FusePairs();
    if (QxJoinFlags(writer.Block(), liveness, variables))
        FlagFuser(writer, liveness).FusePairs();
}

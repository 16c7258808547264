// Removes masks where liveness shows that they are not needed.
//
//     IfTrue f;  t = x * x;  y = t + 1;  EndIf
// becomes
//     IfTrue f;  t = x * x (for all points);  y = t + 1;  EndIf
//
// since `t` is not live after the brackets: its value at other points does not matter, and a loop
// without a mask is faster. Brackets of at most two instructions that all ignore the mask are
// removed. Only cheap functions are computed for points that do not need them: they cannot fault.
//
// Tested by tests/machine/DraftPassesTest.cpp, and with whole shaders by
// tests/host/AgreementTest.cpp.

#include "machine/translate/QxSimplifyMasks.h"

#include <algorithm>

namespace {

constexpr std::size_t k_shortBrackets = 2;
// The most vectors of results that brackets without a test compute, for each vector of numbers.
constexpr std::size_t k_mostVectors = 2;

/// True if all instructions in the brackets that begin at `begin` are cheap and ignore the mask.
bool AllIgnoreTheMask(const QxDraftBlock& block, std::size_t begin)
{
    const auto first = block.drafts.begin();
    const QxCode& guard = block.drafts[begin].code;
    return std::all_of(first + static_cast<std::ptrdiff_t>(begin) + 1,
                       first + static_cast<std::ptrdiff_t>(guard.target) - 1,
                       [](const QxDraft& inner) {
                           return inner.code.step == QxCodeStep::Kernel &&
                                  inner.code.masked == inner.code.all && inner.row->shaped;
                       });
}

/// True if the brackets that begin at `begin` have a varying flag that they do not change, and
/// contain only cheap instructions with varying results.
bool IsCheap(const QxDraftBlock& block, std::size_t begin)
{
    const QxCode& guard = block.drafts[begin].code;
    if (guard.step != QxCodeStep::IfTrue || guard.copyFlag || guard.flag.step == 0)
        return false;
    const auto first = block.drafts.begin();
    return std::all_of(first + static_cast<std::ptrdiff_t>(begin) + 1,
                       first + static_cast<std::ptrdiff_t>(guard.target) - 1,
                       [&](const QxDraft& inner) {
                           return inner.code.step == QxCodeStep::Kernel && inner.row->shaped &&
                                  block.operands[inner.first].step != 0;
                       });
}

/// Returns the number of vectors that the brackets compute for each vector of numbers.
std::size_t VectorsIn(const QxDraftBlock& block, std::size_t begin)
{
    std::size_t vectors = 0;
    for (std::size_t i = begin + 1; i + 1 < block.drafts[begin].code.target; ++i)
        vectors += block.operands[block.drafts[i].first].stored == QxStored::Triple ? 2 : 1;
    return vectors;
}

/// True if the draft before the brackets is a jump that is taken if the flag is not set anywhere.
bool IsTestedBefore(const QxDraftBlock& block, std::size_t begin)
{
    const QxCode& before = block.drafts[begin - 1].code;
    return before.step == QxCodeStep::GotoIfFalse &&
           before.flag.variable == block.drafts[begin].code.flag.variable;
}

}  // namespace

/// Replaces masked kernels of cheap functions by those for all points if other points do not need
/// their old value.
void QxIgnoreMasks(QxDraftBlock& block, QxLiveness& liveness)
{
    liveness.WalkBack([&](std::size_t index, std::size_t) {
        QxDraft& draft = block.drafts[index];
        if (!liveness.IsWithinCondition() || !draft.row || !draft.row->shaped)
            return;
        const QxOperand& result = block.operands[draft.first];
        if (result.step != 0 && block.letters[draft.first] == 'w' &&
            !liveness.IsLiveElsewhere(result))
            draft.code.masked = draft.code.all;
    });
}

void QxDropShortBrackets(QxDraftBlock& block)
{
    std::vector<char> kept(block.drafts.size(), 1);
    for (std::size_t i = 0; i < block.drafts.size(); ++i) {
        const QxCode& code = block.drafts[i].code;
        if (QxIsCondition(code.step) && code.target - i <= k_shortBrackets + 2 &&
            AllIgnoreTheMask(block, i))
            kept[i] = kept[code.target - 1] = 0;
    }
    block.Keep(kept);
}

void QxOmitTests(QxDraftBlock& block)
{
    std::vector<char> kept(block.drafts.size(), 1);
    std::size_t depth = 0;
    for (std::size_t i = 0; i < block.drafts.size(); ++i) {
        QxCode& code = block.drafts[i].code;
        if (code.step == QxCodeStep::EndIf)
            --depth;
        if (!QxIsCondition(code.step))
            continue;
        if (depth == 0 && IsCheap(block, i) &&
            (IsTestedBefore(block, i) || VectorsIn(block, i) <= k_mostVectors)) {
            code.step = QxCodeStep::Where;
            kept[code.target - 1] = 0;
            i = code.target - 1;
        } else {
            ++depth;
        }
    }
    block.Keep(kept);
}

// Merges adjacent conditions on the same flag:
//
//     if f ( x = noise(t) )  if f ( y = x * 2 )     becomes     if f ( x = noise(t);  y = x * 2 )
//
// The compiler takes a whole-grid instruction out of its condition and gives it the flag as an
// operand. When runs are joined, each such instruction gets brackets again. Each pair of brackets
// tests the flags of all points of a strip, which costs as much as two cheap instructions, and
// prevents fusion of instructions in it with those before and after it. Brackets that write their
// own flag are not merged with the next ones, which may run for other points.
//
// Tested by tests/machine/DraftPassesTest.cpp, and with whole shaders by
// tests/host/AgreementTest.cpp.

#include "machine/translate/QxMergeConditions.h"

#include <algorithm>

void QxMergeConditions(QxDraftBlock& block)
{
    std::vector<QxDraft>& drafts = block.drafts;
    std::vector<char> targets(drafts.size() + 1, 0);
    for (const QxDraft& draft : drafts)
        if (QxIsJump(draft.code.step))
            targets[draft.code.target] = 1;
    std::vector<char> kept(drafts.size(), 1);
    // Goes backwards, so that the following brackets are already merged with those after them.
    for (std::size_t i = drafts.size(); i-- > 0;) {
        QxCode& first = drafts[i].code;
        if (!QxIsCondition(first.step) || first.copyFlag || targets[first.target])
            continue;
        const QxCode& second = drafts[first.target].code;
        if (second.step != first.step || second.flag.variable != first.flag.variable)
            continue;
        kept[first.target - 1] = kept[first.target] = 0;
        first.copyFlag = second.copyFlag;
        first.target = second.target;
    }
    if (std::find(kept.begin(), kept.end(), 0) != kept.end())
        block.Keep(kept);
}

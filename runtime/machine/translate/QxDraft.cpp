// Passes mark the drafts to drop and remove them in one sweep, so that a pass stays linear and
// jumps are adjusted once. A jump to a dropped draft then leads to the next one that is kept: the
// dropped one had no effect there, or the next one has taken it over.

#include "machine/translate/QxDraft.h"

std::vector<std::uint32_t> QxDraftBlock::Keep(const std::vector<char>& kept)
{
    std::vector<std::uint32_t> newIndexes;
    newIndexes.reserve(drafts.size() + 1);
    std::uint32_t count = 0;
    for (std::size_t i = 0; i < drafts.size(); ++i) {
        newIndexes.push_back(count);
        if (kept[i])
            drafts[count++] = drafts[i];
    }
    newIndexes.push_back(count);
    drafts.resize(count);
    for (QxDraft& draft : drafts)
        draft.code.target = newIndexes[draft.code.target];
    return newIndexes;
}

void QxDraftBlock::MarkWrittenFlags(std::size_t variables)
{
    std::vector<std::size_t> lastWrites(variables, 0);  // by variable: last draft that writes it
    std::vector<std::size_t> open;                      // first drafts of open conditions
    for (std::size_t i = 0; i < drafts.size(); ++i) {
        const QxDraft& draft = drafts[i];
        for (std::size_t k = draft.first; k < draft.first + draft.code.count; ++k)
            if (SqxIsWritten(letters[k]))
                lastWrites[operands[k].variable] = i;
        if (QxIsCondition(draft.code.step)) {
            open.push_back(i);
        } else if (draft.code.step == QxCodeStep::EndIf) {
            QxCode& begin = drafts[open.back()].code;
            begin.copyFlag = lastWrites[begin.flag.variable] > open.back();
            open.pop_back();
        }
    }
}

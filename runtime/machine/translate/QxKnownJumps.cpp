// Removes jumps that are never taken, since the value of their flag is known:
//
//     if not f goto end;  if not f goto 1;  u = 2;  1: ...  if not f goto 2;  w = u;  2: ...
// becomes
//     if not f goto end;  u = 2;  ...  w = u;  ...
//
// Inside a loop with a varying condition, each uniform instruction is guarded by the flag that says
// whether any point is active. The jump that leaves the loop has already tested this flag. After a
// jump that was not taken, its flag is known until the flag is written or until another path joins.
// A dropped jump no longer joins at its target, so flags may stay known there.
//
// Tested by tests/machine/DraftPassesTest.cpp.

#include "machine/translate/QxKnownJumps.h"

#include <algorithm>
#include <vector>

namespace {

// The number of flags that are known at a time, enough for nested loops; a larger limit would make
// the search slow.
constexpr std::size_t k_mostKnown = 8;

class KnownJumps {
public:
    KnownJumps(QxDraftBlock& block, const QxMachineVariables& variables)
        : m_block(block),
          m_variables(variables),
          m_jumpsTo(block.drafts.size(), 0)
    {
    }
    void Run();

private:
    struct Known {
        std::uint32_t flag;
        bool value;
    };
    [[nodiscard]] bool IsNeverTaken(const QxCode& code) const;
    [[nodiscard]] bool CanBeFollowed(std::uint32_t variable) const;
    void ForgetWritten(const QxDraft& draft);

    QxDraftBlock& m_block;
    const QxMachineVariables& m_variables;
    std::vector<std::uint32_t> m_jumpsTo;  // by draft: number of jumps to it
    std::vector<Known> m_known;
};

void KnownJumps::Run()
{
    std::vector<QxDraft>& drafts = m_block.drafts;
    for (const QxDraft& draft : drafts)
        if (QxIsJump(draft.code.step))
            ++m_jumpsTo[draft.code.target];
    std::vector<char> kept(drafts.size(), 1);
    for (std::size_t i = 0; i < drafts.size(); ++i) {
        const QxCode& code = drafts[i].code;
        if (m_jumpsTo[i] > 0)
            m_known.clear();
        if (!QxIsConditionalJump(code.step)) {
            ForgetWritten(drafts[i]);
        } else if (IsNeverTaken(code)) {
            kept[i] = 0;
            --m_jumpsTo[code.target];
        } else if (CanBeFollowed(code.flag.variable)) {
            if (m_known.size() == k_mostKnown)
                m_known.erase(m_known.begin());
            m_known.push_back({code.flag.variable, code.step == QxCodeStep::GotoIfFalse});
        }
    }
    if (std::find(kept.begin(), kept.end(), 0) != kept.end())
        m_block.Keep(kept);
}

bool KnownJumps::IsNeverTaken(const QxCode& code) const
{
    return std::any_of(m_known.begin(), m_known.end(), [&](const Known& known) {
        return known.flag == code.flag.variable &&
               known.value == (code.step == QxCodeStep::GotoIfFalse);
    });
}

/// True for a uniform local that is not an array: only instructions that name it can write it.
bool KnownJumps::CanBeFollowed(std::uint32_t variable) const
{
    const QxStorage& storage = m_variables[variable];
    return storage.kind == QxStorage::Kind::Local && !storage.varying && storage.size == 1;
}

void KnownJumps::ForgetWritten(const QxDraft& draft)
{
    if (m_known.empty())
        return;
    for (std::size_t k = draft.first; k < draft.first + draft.code.count; ++k)
        if (SqxIsWritten(m_block.letters[k]))
            std::erase_if(m_known, [&](const Known& known) {
                return known.flag == m_block.operands[k].variable;
            });
}

}  // namespace

void QxDropKnownJumps(QxDraftBlock& block, const QxMachineVariables& variables)
{
    KnownJumps(block, variables).Run();
}

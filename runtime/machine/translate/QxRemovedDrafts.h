#pragma once

#include <cstddef>
#include <vector>

#include "machine/translate/QxLiveness.h"

/// The drafts that a pass over a block removes. They stay in place until `Apply`, so that indexes
/// stay valid.
class QxRemovedDrafts {
public:
    static constexpr std::size_t k_none = static_cast<std::size_t>(-1);

    /// `block` must outlive this object, and must not change its number of drafts before `Apply`.
    explicit QxRemovedDrafts(QxDraftBlock& block) : m_block(block), m_kept(block.drafts.size(), 1)
    {
    }

    [[nodiscard]] bool IsKept(std::size_t index) const { return m_kept[index] != 0; }
    /// Returns the index of the last draft before `index` in the basic block, which starts at
    /// `begin`, that has not been removed; `k_none` if there is none.
    [[nodiscard]] std::size_t Before(std::size_t index, std::size_t begin) const
    {
        while (index-- > begin)
            if (IsKept(index))
                return index;
        return k_none;
    }
    /// Removes a draft, which then has no operands: it reads and writes nothing.
    void Remove(std::size_t index)
    {
        m_kept[index] = 0;
        m_block.drafts[index].code.count = 0;
    }
    /// Removes the drafts from the block and renumbers `liveness`; then nothing is removed yet.
    void Apply(QxLiveness& liveness)
    {
        liveness.Renumber(m_block.Keep(m_kept));
        m_kept.assign(m_block.drafts.size(), 1);
    }

private:
    QxDraftBlock& m_block;
    std::vector<char> m_kept;  // by draft
};

#pragma once

#include <array>
#include <deque>

#include "icode/SlcLexType.h"

/// Temporaries for reuse by kind: detail (varying or uniform) with type (float, point family,
/// color). Each kind has those that are free and those in use; other types have no pool.
class SlcTempPools {
public:
    /// A free temporary, which is then in use; null if there is none or the type has no pool.
    [[nodiscard]] SlcOperand Take(const SlcTypeNode* type, const SlcDetailNode* detail);
    /// Enters a new temporary as in use; does nothing for a type without a pool.
    void AddUsed(const SlcOperand& temporary);
    /// Ends the life of all temporaries in use.
    void ReleaseUsed();
    /// Takes the temporaries in use out of reach, as if there were none.
    void ForgetUsed();
    /// If `operand` is one of the free temporaries it is in use from here on.
    void Reclaim(const SlcOperand& operand);

private:
    struct Kind {
        std::deque<SlcOperand> free;
        std::deque<SlcOperand> used;
    };
    [[nodiscard]] Kind* KindOf(const SlcTypeNode* type, const SlcDetailNode* detail);

    std::array<Kind, 6> m_kinds;  // varying then uniform, each float, point, color
};

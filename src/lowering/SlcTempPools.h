#pragma once

#include <array>
#include <vector>

#include "icode/SlcLexType.h"

/// Temporaries for reuse by kind: detail (varying or uniform) with type (float, point family,
/// color). Each kind has those that are free and those in use; other types have no pool: matrices,
/// strings, references, and flags, of which `SlcConditions` has lists.
///
/// Who makes a temporary enters it here; this class makes none.
class SlcTempPools {
public:
    /// A free temporary, which is then in use; null if there is none or the type has no pool.
    [[nodiscard]] SlcOperand Take(const SlcTypeNode* type, const SlcDetailNode* detail);
    /// Enters a new temporary as in use; does nothing for a type without a pool.
    void AddUsed(const SlcOperand& temporary);
    /// Ends the life of all temporaries in use.
    void ReleaseUsed();

    /// Before a function body: puts the temporaries in use out of its reach.
    void EnterBody();
    /// Behind the body: the pools are as they were when it was entered, and `result` is in use if
    /// it was one of the free ones. Costs what the body has taken, whatever the pools hold.
    void LeaveBody(const SlcOperand& result);

private:
    struct Kind {
        std::vector<SlcOperand> free;
        std::vector<SlcOperand> used;
    };
    /// What brings a kind back to its state at the entry of a body.
    struct SavedKind {
        std::vector<SlcOperand> used;
        std::size_t untouched = 0;      // so many of the free ones have never been taken
        std::vector<SlcOperand> taken;  // the other free ones, the first taken first
    };
    using SavedKinds = std::array<SavedKind, 6>;

    /// What `inner` has lost to its result, `outer` has lost too.
    static void NoteTaken(SavedKind& outer, const SavedKind& inner);
    /// Of the kind among `m_kinds`; `k_noPool` for a type without a pool.
    [[nodiscard]] static std::size_t PlaceOf(const SlcTypeNode* type, const SlcDetailNode* detail);

    static constexpr std::size_t k_noPool = 6;

    std::array<Kind, 6> m_kinds;  // varying then uniform, each float, point, color
    std::vector<SavedKinds> m_bodies;
};

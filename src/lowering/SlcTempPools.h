#pragma once

#include <array>
#include <vector>

#include "icode/SlcLexType.h"

/// Pools of temporaries for reuse, one for each combination of detail (varying or uniform) and type
/// (float, point family, color). Each pool lists the free temporaries and those in use. Other types
/// have no pool: matrices, strings, arrays, references to elements, and flags, which
/// `SlcConditions` recycles.
///
/// This class does not make temporaries; the code that makes one for reuse registers it here.
class SlcTempPools {
public:
    /// Returns a free temporary and marks it as in use; null if there is none or the type has no
    /// pool.
    [[nodiscard]] SlcOperand Acquire(const SlcTypeNode* type, const SlcDetailNode* detail);
    /// Registers a new temporary as in use; does nothing for a type without a pool.
    void AddUsed(const SlcOperand& temporary);
    /// Frees all temporaries in use, except those that `EnterBody` has set aside.
    void ReleaseUsed();

    /// Call it before a function body: sets aside the temporaries in use, so that `ReleaseUsed` in
    /// the body does not free them.
    void EnterBody();
    /// Call it after the body: restores the pools to their state at `EnterBody`, except that
    /// `result`, which may be null, is in use if it was free then. The cost depends only on how
    /// many temporaries the body used.
    void LeaveBody(const SlcOperand& result);

private:
    struct Kind {
        std::vector<SlcOperand> free;
        std::vector<SlcOperand> used;
    };
    /// What is needed to restore a pool to its state at `EnterBody`.
    struct SavedKind {
        std::vector<SlcOperand> used;
        std::size_t untouched = 0;      // how many of the free ones the body never took
        std::vector<SlcOperand> taken;  // the free ones that it took, in order
    };
    using SavedKinds = std::array<SavedKind, 6>;

    /// Records in `outer` the temporaries of its free list that `inner` took and `outer` has not
    /// recorded yet. One of those that `inner` took is now the result.
    static void NoteTaken(SavedKind& outer, const SavedKind& inner);
    /// Returns the index in `m_kinds`; `k_noPool` for a type without a pool.
    [[nodiscard]] static std::size_t PlaceOf(const SlcTypeNode* type, const SlcDetailNode* detail);

    static constexpr std::size_t k_noPool = 6;

    std::array<Kind, 6> m_kinds;  // varying then uniform, each float, point, color
    std::vector<SavedKinds> m_bodies;
};

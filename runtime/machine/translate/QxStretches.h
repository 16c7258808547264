#pragma once

#include <vector>

#include "machine/translate/QxDraft.h"
#include "machine/translate/QxMachineVariables.h"

/// Drafts from `begin` up to `end`, exclusive. They can run strip by strip, except for those to
/// hoist, which can run before the stretch.
struct QxStretch {
    std::size_t begin;
    std::size_t end;
};

/// True for a uniform instruction and for one that lights the whole grid: within a stretch they are
/// to be hoisted.
[[nodiscard]] bool QxIsToHoist(const QxDraft& draft);

/// Returns the maximal stretches of a block, in order, without those that contain at most one pair
/// of brackets or one instruction for the grid. They begin and end outside brackets, and jumps do
/// not leave a stretch, except to its end, or enter its middle. `block` must be whole; targets of
/// codes are indexes of drafts. `variables` are those of the program. O(n) for n drafts, except for
/// jumps that cross each other: after a limited number of rounds the result is empty.
[[nodiscard]] std::vector<QxStretch> QxFindStretches(const QxDraftBlock& block,
                                                     const QxMachineVariables& variables);

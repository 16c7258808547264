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

/// Returns the maximal stretches of a block, in order, without those that contain fewer than two
/// pairs of brackets or instructions for the grid. Stretches begin and end outside brackets. A jump
/// in a stretch leads into it or to its end; no other jump enters its middle. `block` must be
/// whole; targets of codes are indexes of drafts. `variables` are those of the program. O(n) for n
/// drafts, except for jumps that cross each other: after a limited number of rounds the result is
/// empty.
[[nodiscard]] std::vector<QxStretch> QxFindStretches(const QxDraftBlock& block,
                                                     const QxMachineVariables& variables);

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

/// True for an instruction outside parallel brackets whose operands are all uniform, and for
/// `EVAL_LIGHTS_FOR_P` and `ambient()` for the whole grid: if it is in a stretch, it is to be
/// hoisted.
[[nodiscard]] bool QxIsToHoist(const QxDraft& draft);

/// Returns the maximal stretches of a block, in order, without those that would join fewer than two
/// parts: pairs of parallel brackets or instructions for the grid. Stretches begin and end outside
/// brackets. A jump in a stretch leads into it or to its end; no other jump enters its middle.
/// `block` must end with a stop; targets of codes are indexes of drafts. `variables` are those of
/// the program. O(n) for n drafts: jumps that cross each other may need several rounds, and if too
/// many are needed, the result is empty.
[[nodiscard]] std::vector<QxStretch> QxFindStretches(const QxDraftBlock& block,
                                                     const QxMachineVariables& variables);

#pragma once

#include <vector>

#include "machine/translate/QxDraft.h"
#include "machine/translate/QxMachineVariables.h"

/// Drafts from `begin` to before `end` that may run strip by strip, one strip after the other. The
/// uniform instructions among them may run before all of them, once.
struct QxStretch {
    std::size_t begin;
    std::size_t end;
};

/// The longest stretches of a block, in their order, that are more than brackets which stand there
/// already. They begin and end outside of brackets, and jumps neither leave one nor enter its
/// middle. `block`: of a whole block; the targets of the codes are indexes among the drafts.
/// `variables`: of the program that it belongs to. O(n) for n drafts, but for jumps that cross each
/// other: after some rounds of those, none is found.
[[nodiscard]] std::vector<QxStretch> QxFindStretches(const QxDraftBlock& block,
                                                     const QxMachineVariables& variables);

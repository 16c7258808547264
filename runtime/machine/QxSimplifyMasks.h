#pragma once

#include <cstdint>
#include <vector>

#include "machine/QxDraft.h"
#include "machine/QxMachineCode.h"

/// Rewrites that make masks cheap, and which locals are read before they are written. Leaves the
/// targets of the codes as indexes among the drafts.
void QxSimplifyMasks(QxDraftBlock& block, const std::vector<QxStorage>& variables,
                     std::vector<std::uint32_t>& clears);

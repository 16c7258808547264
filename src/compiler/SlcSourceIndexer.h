#pragma once

#include <memory>
#include <string_view>

#include "compiler/QxSourceIndex.h"
#include "preprocessor/SlcPreprocessorTrace.h"

class SlcDefinitionsNode;

/// The index of a source, of which `text` has been made. `tree` may be null, and may have faults.
[[nodiscard]] std::shared_ptr<const QxSourceIndex> SlcMakeIndex(const SlcPreprocessorTrace& trace,
                                                                std::string_view text,
                                                                SlcDefinitionsNode* tree,
                                                                bool isStrict);

#pragma once

#include <memory>
#include <string_view>

#include "compiler/QxSourceIndex.h"
#include "preprocessor/SlcPreprocessorTrace.h"

class SlcDefinitionsNode;

/// Makes the index of a source, which was preprocessed to `text` with the trace `trace`. `tree` is
/// the checked tree; it may be null or have faults. With `isStrict`, functions do not see enclosing
/// variables.
[[nodiscard]] std::shared_ptr<const QxSourceIndex> SlcMakeIndex(const SlcPreprocessorTrace& trace,
                                                                std::string_view text,
                                                                SlcDefinitionsNode* tree,
                                                                bool isStrict);

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "symbols/SlcFuncSymbolEntry.h"
#include "symbols/SlcFuncVarArgExpr.h"

// Formats functions of the library as declarations, for documentation and messages.

/// Formats a formal without its name: "output uniform float". Detail and storage may be null.
[[nodiscard]] std::string SlcFormalText(const SlcTypeNode* type, const SlcDetailNode* detail,
                                        const SlcStorageSpecNode* storage);

/// The parts of a declaration.
struct SlcFuncShape {
    std::string_view name;
    const SlcTypeNode* returnType;
    const std::vector<SlcTypeNode*>& argTypes;
    const std::vector<SlcDetailNode*>& argDetails;
    const std::vector<SlcStorageSpecNode*>& argStorages;
    const SlcFuncVarArgExpr* tail;  // may be null
};

/// Formats a declaration such as "float min(float, float, float ...)".
[[nodiscard]] std::string SlcDeclarationText(const SlcFuncShape& function);

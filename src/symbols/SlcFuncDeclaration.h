#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "symbols/SlcFuncSymbolEntry.h"
#include "symbols/SlcFuncVarArgExpr.h"

// Functions of the library as declarations, for people to read.

/// A formal without a name: "output uniform float". Detail and storage may be null.
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

/// Such as "float min(float, float, float ...)".
[[nodiscard]] std::string SlcDeclarationText(const SlcFuncShape& function);

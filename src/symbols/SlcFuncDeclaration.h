#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "symbols/SlcFuncSymbolEntry.h"
#include "symbols/SlcFuncVarArgExpr.h"

// Formats functions as declarations, for the reference pages and the index of names for editors.

/// Formats a formal without its name: "output uniform float". Of the details and storages, only
/// uniform and output are shown. Detail and storage may be null.
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

/// Formats a declaration such as "float min(float, float, float, float ...)". A variable tail that
/// is not repeated is shown in brackets, since its arguments may be omitted.
[[nodiscard]] std::string SlcDeclarationText(const SlcFuncShape& function);

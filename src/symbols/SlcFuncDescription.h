#pragma once

#include <memory>
#include <string>
#include <vector>

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcStorageSpecNode.h"
#include "frontend/SlcTypeNode.h"
#include "sqx/SqxCard.h"
#include "symbols/SlcFuncSymbolEntry.h"
#include "symbols/SlcFuncVarArgExpr.h"

/// One overload of a built-in function as the compiler uses it, derived from its card.
struct SlcFuncDescription {
    /// `card` must have a name in the language, and must outlive this object.
    explicit SlcFuncDescription(const SqxCard& card);

    /// Returns all overloads of all built-ins, in the order of the cards.
    [[nodiscard]] static std::vector<SlcFuncDescription> All();

    const SqxCard& card;
    std::string name;
    SlcTypeNode* returnType;
    std::vector<SlcTypeNode*> argTypes;
    std::vector<SlcDetailNode*> argDetails;        // uniform or unknown
    std::vector<SlcStorageSpecNode*> argStorages;  // input or output
    SlcCallSIMD simd;
    /// The detail that the whole-grid form requires of each argument, including the values of a
    /// tail that is not repeated; empty if a call cannot use a whole-grid form.
    std::vector<SlcDetailNode*> simdDetails;
    std::unique_ptr<SlcFuncVarArgExpr> tail;  // null for a fixed number of arguments
};

#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "support/SlcPtr.h"

class SlcDetailNode;
class SlcExprNode;
class SlcFuncSymbolEntry;
class SlcProcCallExprNode;
class SlcSemanticError;
class SlcStorageSpecNode;

/// An argument of a call, with what the function declares of it.
struct SlcDeclaredArgument {
    SlcExprNode* expr;
    SlcDetailNode* detail;
    SlcStorageSpecNode* storage;
};

/// The arguments of a checked call of `entry`, in order, up to the first that only the function
/// itself can judge.
[[nodiscard]] std::vector<SlcDeclaredArgument> SlcDeclaredArguments(SlcFuncSymbolEntry& entry,
                                                                    SlcProcCallExprNode* call);

/// The variable that an argument in an output position writes to may be written to. Reports
/// where it may not, at the argument; `position` counts from 0.
[[nodiscard]] bool SlcCheckOutputArgument(SlcSemanticError& errors, const SlcExprNode* argument,
                                          std::size_t position, const std::string& function);

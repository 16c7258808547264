#pragma once

#include <optional>
#include <vector>

#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcSymbolTable.h"

/// Checks the arguments of `filterstep` after the first two: the second end of the interval, if the
/// third argument can be a float, then names with values.
///
///     filterstep(e, s, s + ds, "filter", "box")      float, string, string
class SlcFilterstepArgs {
public:
    explicit SlcFilterstepArgs(SlcPtr<SlcSemanticError> errors) : m_errors(std::move(errors)) {}

    /// Returns the type of each argument from the third on; `nullopt` after an error. Warns of an
    /// unknown name, if it is constant. `args` are all arguments of the call, with their sets of
    /// types.
    [[nodiscard]] std::optional<std::vector<SlcTypeNode*>>
    CheckFilterstepArgs(const SlcCallArgs& args);

private:
    /// Returns the type of `value`, the argument after `name`; null after an error.
    [[nodiscard]] SlcTypeNode* TypeOfValue(SlcExprNode* name, SlcExprNode* value);

    SlcPtr<SlcSemanticError> m_errors;
};

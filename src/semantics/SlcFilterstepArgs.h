#pragma once

#include <optional>
#include <vector>

#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcSymbolTable.h"

/// The arguments of `filterstep` after the first two: the second end of the interval, if the third
/// argument can be a float, then names with values.
///
///     filterstep(e, s, s + ds, "filter", "box")      float, string, string
class SlcFilterstepArgs {
public:
    explicit SlcFilterstepArgs(SlcPtr<SlcSemanticError> errors) : m_errors(std::move(errors)) {}

    /// The type that each argument from the third on is to take; none after a report. Warns of a
    /// name that means nothing. `args` are all of the call, with their sets of types.
    [[nodiscard]] std::optional<std::vector<SlcTypeNode*>>
    CheckFilterstepArgs(const SlcCallArgs& args);

private:
    /// Null after a report.
    [[nodiscard]] SlcTypeNode* TypeOfValue(SlcExprNode* name, SlcExprNode* value);

    SlcPtr<SlcSemanticError> m_errors;
};

#pragma once

#include <map>
#include <optional>
#include <vector>

#include "frontend/SlcCallNodes.h"
#include "frontend/SlcShaderTypeNode.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcSymbolTable.h"

/// Selects the overload of one call by the requested type, and the types of its arguments by the
/// overload. The arguments must have their sets of types; the caller resolves their operands.
///
///     color c = mix(Cs, 1, 0.5)      requested color: mix(color, color, float), the 1 promoted
class SlcResolveCall {
public:
    /// Resolves calls in `scope`, where names are looked up. With a null `shaderType`, no function
    /// is rejected because of the type of shader.
    SlcResolveCall(SlcPtr<SlcSemanticError> errors, SlcPtr<SlcSymbolTable> scope,
                   const SlcShaderTypeNode* shaderType);

    /// Stores the overload in the call, and for each argument after the fixed ones the part of the
    /// overload's variable tail that it matches; stores nothing if no overload is selected. The
    /// requested type is the unique type of the call; if it is not in the call's set, it is
    /// replaced by one that is.
    void Resolve(SlcProcCallExprNode* call);

private:
    using Types = std::vector<SlcTypeNode*>;
    using Entry = SlcPtr<SlcFuncSymbolEntry>;

    /// Selects the types of the arguments for a call that returns `wanted`, and then the overload.
    /// Returns null after a report.
    [[nodiscard]] Entry ResolveArgs(SlcTypeNode* wanted);
    /// Returns the overload that is called, out of at least one candidate.
    [[nodiscard]] Entry Choose(const std::vector<Entry>& candidates, SlcTypeNode* wanted) const;
    /// True if each array argument has the length of its formal, or neither length is known.
    [[nodiscard]] bool HasLengths(const Entry& entry) const;
    /// Returns the overloads that match exactly or, if there is none, those that match by
    /// promotion.
    [[nodiscard]] std::vector<Entry> FindCandidates(SlcTypeNode* wanted);
    [[nodiscard]] bool Matches(const Entry& entry, bool promote);
    /// Adds the type that the overload expects to the list of each argument.
    void AddExpected(const Entry& entry, std::vector<Types>& expected);
    /// Returns the part of the overload's tail for each argument after the fixed ones.
    [[nodiscard]] std::vector<SlcFuncVarArgLeaf*> LeavesOfTail(const Entry& entry) const;
    /// Sets the expected type of each argument. Returns false after a report.
    [[nodiscard]] bool ChooseArgTypes(const std::vector<Types>& expected);
    /// Checks that the function exists in this type of shader. Returns false after a report.
    [[nodiscard]] bool CheckShaderType();

    SlcPtr<SlcSemanticError> m_errors;
    SlcPtr<SlcSymbolTable> m_scope;
    const SlcShaderTypeNode* m_shaderType;
    SlcProcCallExprNode* m_call = nullptr;
    SlcCallArgs m_args;
    bool m_promoted = false;  // the candidates match only by promotion
    // For each candidate with a tail: the parts that the arguments match. Computed before the types
    // of the arguments are chosen, since they match differently afterwards.
    std::map<const SlcFuncSymbolEntry*, std::vector<SlcFuncVarArgLeaf*>> m_leaves;
    // The types that filterstep requires for its names and values; computed once, since the
    // computation reports faults.
    bool m_filterstepChecked = false;
    std::optional<std::vector<SlcTypeNode*>> m_filterstepTypes;
};

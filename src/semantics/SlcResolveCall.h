#pragma once

#include <map>
#include <optional>
#include <vector>

#include "frontend/SlcCallNodes.h"
#include "frontend/SlcShaderTypeNode.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcSymbolTable.h"

/// Picks the overload of one call from the wanted type, and the types of its arguments from the
/// overload. The arguments have their sets of types; their own operands are left to the caller.
///
///     color c = mix(Cs, 1, 0.5)      wanted color: mix(color, color, float), by promotion of the 1
class SlcResolveCall {
public:
    /// For calls in `scope`, which is searched for the name. `shaderType` is null where it does not
    /// matter: then no function is refused for it.
    SlcResolveCall(SlcPtr<SlcSemanticError> errors, SlcPtr<SlcSymbolTable> scope,
                   const SlcShaderTypeNode* shaderType);

    /// Leaves the overload in the call, with what its tail takes each further argument for; none
    /// after a report. The type that is wanted is the unique type of the call, which becomes one of
    /// its set.
    void Resolve(SlcProcCallExprNode* call);

private:
    using Types = std::vector<SlcTypeNode*>;
    using Entry = SlcPtr<SlcFuncSymbolEntry>;

    /// Picks the types of the arguments for a call that gives `wanted`, and then the overload.
    /// Null after a report.
    [[nodiscard]] Entry ResolveArgs(SlcTypeNode* wanted);
    /// The one that is called, of at least one.
    [[nodiscard]] Entry Choose(const std::vector<Entry>& candidates, SlcTypeNode* wanted) const;
    /// Each array argument is as long as its formal, or of both it is unknown how long they are.
    [[nodiscard]] bool HasLengths(const Entry& entry) const;
    /// The overloads that match without promotion, or else those that fit by promotion.
    [[nodiscard]] std::vector<Entry> FindCandidates(SlcTypeNode* wanted);
    [[nodiscard]] bool Fits(const Entry& entry, bool promote);
    /// Adds what the overload expects of each argument to the lists of the arguments.
    void AddExpected(const Entry& entry, std::vector<Types>& expected);
    /// The parts of the overload's tail that take the arguments; one for each after the fixed ones.
    [[nodiscard]] std::vector<SlcFuncVarArgLeaf*> LeavesOfTail(const Entry& entry) const;
    /// Each argument gets the one type that is expected of it. False after a report.
    [[nodiscard]] bool ChooseArgTypes(const std::vector<Types>& expected);
    /// Some functions exist in some kinds of shaders only. False after a report.
    [[nodiscard]] bool CheckShaderType();

    SlcPtr<SlcSemanticError> m_errors;
    SlcPtr<SlcSymbolTable> m_scope;
    const SlcShaderTypeNode* m_shaderType;
    SlcProcCallExprNode* m_call = nullptr;
    SlcCallArgs m_args;
    bool m_promoted = false;  // the candidates fit by promotion only
    // Stored by candidate with a tail, since types that have been chosen match differently.
    std::map<const SlcFuncSymbolEntry*, std::vector<SlcFuncVarArgLeaf*>> m_leaves;
    // The types that filterstep requires of its names and values; computed once, since that reports
    // faults.
    bool m_filterstepChecked = false;
    std::optional<std::vector<SlcTypeNode*>> m_filterstepTypes;
};

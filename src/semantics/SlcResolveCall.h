#pragma once

#include <map>
#include <optional>
#include <vector>

#include "frontend/SlcCallNodes.h"
#include "frontend/SlcShaderTypeNode.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcSymbolTable.h"

/// Selects the overload of one call and the types of its arguments, by the requested type and the
/// sets of types that the arguments have. The caller then resolves the parts of the arguments.
///
///     color c = mix(Cs, 1, 0.5)      requested color: mix(color, color, float), the 1 promoted
class SlcResolveCall {
public:
    /// Resolves calls in `scope`, where names are looked up. With a null `shaderType`, no function
    /// is rejected because of the type of shader.
    SlcResolveCall(SlcPtr<SlcSemanticError> errors, SlcPtr<SlcSymbolTable> scope,
                   const SlcShaderTypeNode* shaderType);

    /// Stores the overload in the call, and for each argument after the fixed ones the part of the
    /// overload's variable tail that it matches; then checks constant arguments. Stores neither if
    /// no overload is selected or the type of shader does not have the function; this is reported,
    /// unless an earlier pass has reported the call. Sets the unique type of each argument in any
    /// case. The requested type is the unique type of the call; if it is not in the call's set, it
    /// is replaced by one that is.
    void Resolve(SlcProcCallExprNode* call);

private:
    using Types = std::vector<SlcTypeNode*>;
    using Entry = SlcPtr<SlcFuncSymbolEntry>;

    /// Selects the types of the arguments for a call that returns `wanted`, and then the overload.
    /// Returns null if there is none, which is or has been reported.
    [[nodiscard]] Entry ResolveArgs(SlcTypeNode* wanted);
    /// Returns the overload that is called, out of at least one candidate.
    [[nodiscard]] Entry Choose(const std::vector<Entry>& candidates, SlcTypeNode* wanted) const;
    /// True if each array argument has the length of its formal, or neither length is known.
    [[nodiscard]] bool HasLengths(const Entry& entry) const;
    /// Returns the overloads that return `wanted` and match exactly or, if there is none, those
    /// that match by promotion. Sets `m_promoted`.
    [[nodiscard]] std::vector<Entry> FindCandidates(SlcTypeNode* wanted);
    [[nodiscard]] bool Matches(const Entry& entry, bool promote);
    /// Adds the type that the overload expects to the list of each argument, and stores the parts
    /// of the tail that the arguments match.
    void AddExpected(const Entry& entry, std::vector<Types>& expected);
    /// Returns the part of the overload's tail for each argument after the fixed ones.
    [[nodiscard]] std::vector<SlcFuncVarArgLeaf*> LeavesOfTail(const Entry& entry) const;
    /// Sets the type of each argument to the expected one, or to error if there is none. Reports an
    /// argument with several expected types, sets its type to error, and returns false.
    [[nodiscard]] bool ChooseArgTypes(const std::vector<Types>& expected);
    /// Reports a built-in that does not exist in this type of shader, and returns false. `entry` is
    /// the called function, or null if none matches: then only the name and the number of arguments
    /// are compared with those of the restricted built-ins.
    [[nodiscard]] bool CheckShaderType(const Entry& entry);

    SlcPtr<SlcSemanticError> m_errors;
    SlcPtr<SlcSymbolTable> m_scope;
    const SlcShaderTypeNode* m_shaderType;
    SlcProcCallExprNode* m_call = nullptr;
    SlcCallArgs m_args;
    bool m_promoted = false;  // the candidates match only by promotion
    // For each candidate that gets more arguments than its fixed ones: the parts of its tail that
    // these match. `Resolve` stores those of the selected overload in the call.
    std::map<const SlcFuncSymbolEntry*, std::vector<SlcFuncVarArgLeaf*>> m_leaves;
    // The types that filterstep requires of its arguments from the third on; computed once, since
    // the computation reports faults.
    bool m_filterstepChecked = false;
    std::optional<std::vector<SlcTypeNode*>> m_filterstepTypes;
};

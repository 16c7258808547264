#pragma once

#include <memory>

#include "frontend/SlcDefinitionNodes.h"
#include "semantics/SlcCheckUsage.h"
#include "semantics/SlcGetBodyFacts.h"
#include "semantics/SlcInlineResults.h"
#include "symbols/SlcSymbolTable.h"

/// The facts about a user function whose body has been checked; stored in its symbol entry.
class SlcFuncInfo : public SlcAnnotation {
public:
    /// `usage` may be null; `scope` is the table of the function's formals. The definition, a node
    /// of the tree, must outlive the object.
    SlcFuncInfo(SlcFuncDefNode* definition, std::unique_ptr<SlcCheckUsage> usage,
                SlcPtr<SlcSymbolTable> scope, bool hasIlluminate, bool hasIlluminance,
                const SlcBodyFacts& bodyFacts, SlcPtr<SlcInlineBudget> inlineBudget)
        : m_definition(definition),
          m_usage(std::move(usage)),
          m_scope(std::move(scope)),
          m_hasIlluminate(hasIlluminate),
          m_hasIlluminance(hasIlluminance),
          m_bodyFacts(bodyFacts),
          m_inlineBudget(std::move(inlineBudget))
    {
    }

    [[nodiscard]] SlcFuncDefNode* GetDefinition() const { return m_definition; }
    /// Returns the usage record of the body, whose accesses to outer variables each call replays;
    /// null without usage checks.
    [[nodiscard]] SlcCheckUsage* GetUsage() const { return m_usage.get(); }
    /// Returns the table of the function's formals; null after `ClearScope`.
    [[nodiscard]] const SlcPtr<SlcSymbolTable>& GetScope() const { return m_scope; }
    /// Breaks the cycle of tables, entries and annotations.
    void ClearScope() { m_scope = nullptr; }
    /// True if the body contains `illuminate` or `solar`.
    [[nodiscard]] bool HasIlluminate() const { return m_hasIlluminate; }
    /// True if the body contains `illuminance`.
    [[nodiscard]] bool HasIlluminance() const { return m_hasIlluminance; }
    /// True if checked shader code calls the function, directly or through other functions.
    [[nodiscard]] bool IsCalled() const { return m_called; }
    /// Called by the rules for calls of user functions; the passes after the checks skip functions
    /// that are not called.
    void SetCalled() { m_called = true; }
    /// True if the function of this definition is called; false if it was rejected and has no
    /// entry.
    [[nodiscard]] static bool IsCalled(const SlcFuncDefNode& definition)
    {
        const auto& entry = definition.GetSymbolEntry();
        return entry && entry->GetFuncInfo() &&
               CheckCast<SlcFuncInfo>(entry->GetFuncInfo())->IsCalled();
    }
    /// Returns the facts about the body, including all functions that it calls.
    [[nodiscard]] const SlcBodyFacts& GetBodyFacts() const { return m_bodyFacts; }
    /// Returns the results of evaluating the body, which later calls with equal inputs share.
    [[nodiscard]] SlcInlineResults& GetInlineResults() { return m_inlineResults; }
    /// Returns the limit on the evaluations of the whole compile that calls cannot share.
    [[nodiscard]] SlcInlineBudget& GetInlineBudget() { return *m_inlineBudget; }

private:
    SlcFuncDefNode* m_definition;
    std::unique_ptr<SlcCheckUsage> m_usage;
    SlcPtr<SlcSymbolTable> m_scope;
    bool m_hasIlluminate;
    bool m_hasIlluminance;
    SlcBodyFacts m_bodyFacts;
    bool m_called = false;
    SlcInlineResults m_inlineResults;
    SlcPtr<SlcInlineBudget> m_inlineBudget;  // of the whole compile
};

// A shader calls only a dozen of the library's functions, and making all entries would take longer
// than compiling a small shader. So the outermost scope is empty at first. It makes the entries of
// a name when the name is first looked up, or redefined, since a redefinition must see the
// built-ins of its name.
//
// Tested by tests/symbols/SlcShaderSymbolTableTest.cpp.

#include "symbols/SlcBuiltInTable.h"

#include <string>
#include <utility>

#include "support/SlcDiagnostics.h"
#include "symbols/SlcFuncDescription.h"
#include "symbols/SlcGeneratedNames.h"
#include "symbols/SlcSymbolScope.h"

namespace {

template <class Rules>
auto RuleOf(const Rules& rules, int code, const char* where)
{
    if (code < 0 || code >= static_cast<int>(rules.size()))
        FatalError(std::string("Invalid code for ") + where + ": " + std::to_string(code));
    return rules[code];
}

SlcFuncSignature SignatureOf(SlcFuncDescription::FuncInfo& info, const SlcDetailRules& rules)
{
    const bool plain = info.tail == nullptr;
    SlcFuncSignature signature;
    signature.ident = SlcLexicalNode::CreateIdent(info.name);
    signature.returnType = info.returnType;
    signature.argTypes = std::move(info.argTypes);
    signature.argDetails = std::move(info.argDetails);
    signature.argStorages = std::move(info.argStorages);
    signature.orderSensitive = info.orderSensitive;
    signature.foldable = info.foldable;
    signature.simd = info.simd;
    signature.simdDetails = std::move(info.simdDetails);
    signature.checkDetail =
        RuleOf(rules.checkDetail, info.checkDetail,
               plain ? "(*funcInfo)->m_checkDetail" : "(*varArgsFuncInfo)->m_checkDetail");
    signature.checkInlineDetail = RuleOf(rules.checkInlineDetail, info.checkInlineDetail,
                                         plain ? "(*funcInfo)->m_checkInlineDetail"
                                               : "(*varArgsFuncInfo)->m_checkInlineDetail");
    signature.cName = info.cName.empty() ? nullptr : SlcLexicalNode::CreateIdent(info.cName);
    return signature;
}

/// The outermost scope. It makes the entries of a built-in when its name is first looked up.
class BuiltInScope : public SlcSymbolScope {
public:
    explicit BuiltInScope(const SlcDetailRules& rules)
        : SlcSymbolScope(SlcPtr<SlcSymbolTable>()),
          m_rules(rules)
    {
    }

    void Add(int table, SlcPtr<SlcSymbolEntry> entry) override
    {
        MakeBuiltIns(entry->GetName());
        SlcSymbolScope::Add(table, std::move(entry));
    }

    [[nodiscard]] const std::vector<Named>* Find(std::string_view name) override
    {
        MakeBuiltIns(name);
        return SlcSymbolScope::Find(name);
    }

private:
    /// If a name already has entries, they include those of its rows.
    void MakeBuiltIns(std::string_view name)
    {
        if (SlcSymbolScope::Find(name))
            return;
        for (const auto& row : SlcFuncDescription::RowsOf(name))
            SlcSymbolScope::Add(0,
                                row.hasTail ? EntryOfTailRow(row.row) : EntryOfPlainRow(row.row));
    }

    [[nodiscard]] SlcPtr<SlcFuncSymbolEntry> EntryOfPlainRow(const char* row) const
    {
        auto info = SlcFuncDescription::ReadPlainRow(row);
        return MakeShared<SlcFuncSymbolEntry>(SignatureOf(info, m_rules));
    }

    [[nodiscard]] SlcPtr<SlcFuncSymbolEntry> EntryOfTailRow(const char* row) const
    {
        auto info = SlcFuncDescription::ReadVarArgsRow(row);
        auto signature = SignatureOf(info, m_rules);
        return MakeShared<SlcFuncVarListSymbolEntry>(std::move(signature), std::move(info.tail));
    }

    SlcDetailRules m_rules;
};

}  // namespace

SlcPtr<SlcSymbolTable> SlcBuiltInTable(const SlcDetailRules& rules)
{
    auto table = MakeShared<SlcSymbolTable>(MakeShared<BuiltInScope>(rules));
    table->AddVarEntry(SlcLexicalNode::CreateIdent("PI"), SlcTypeNode::AFloat(),
                       SlcDetailNode::AUniform(), SlcStorageSpecNode::AInput(), false,
                       SlcGeneratedNames::k_pi, nullptr);
    return table;
}

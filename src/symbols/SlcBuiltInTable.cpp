// Most shaders call only a dozen of the library's functions, and making all entries would take
// longer than compiling a small shader. So the outermost scope has no functions at first. It makes
// the built-ins of a name when the name is first looked up, or before an entry of that name is
// added: once a name has entries, its built-ins are no longer made.
//
// Tested by tests/symbols/SlcFuncDescriptionTest.cpp.

#include "symbols/SlcBuiltInTable.h"

#include <utility>

#include "symbols/SlcFuncDescription.h"
#include "symbols/SlcHiddenVariables.h"
#include "symbols/SlcSymbolScope.h"

namespace {

SlcFuncSignature SignatureOf(SlcFuncDescription& function, const SlcDetailRules& rules)
{
    const SqxCard& card = function.card;
    SlcFuncSignature signature;
    signature.ident = SlcLexicalNode::CreateIdent(function.name);
    signature.returnType = function.returnType;
    signature.argTypes = std::move(function.argTypes);
    signature.argDetails = std::move(function.argDetails);
    signature.argStorages = std::move(function.argStorages);
    signature.orderSensitive = card.isOrdered;
    signature.foldable = card.isFoldable;
    signature.simd = function.simd;
    signature.simdDetails = std::move(function.simdDetails);
    signature.checkDetail = rules.checkDetail[static_cast<std::size_t>(card.detail)];
    signature.checkInlineDetail =
        rules.checkInlineDetail[static_cast<std::size_t>(card.inlineDetail)];
    signature.primitive = card.primitive;
    return signature;
}

/// The outermost scope, which makes the entries of built-ins on demand.
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
    /// Does nothing if the name already has entries: they then include its built-ins, if any.
    void MakeBuiltIns(std::string_view name)
    {
        if (SlcSymbolScope::Find(name))
            return;
        for (const SqxCard* card : SqxCardsNamed(name))
            SlcSymbolScope::Add(0, EntryOf(*card));
    }

    [[nodiscard]] SlcPtr<SlcFuncSymbolEntry> EntryOf(const SqxCard& card) const
    {
        SlcFuncDescription function(card);
        auto signature = SignatureOf(function, m_rules);
        if (!function.tail)
            return MakeShared<SlcFuncSymbolEntry>(std::move(signature));
        return MakeShared<SlcFuncVarListSymbolEntry>(std::move(signature),
                                                     std::move(function.tail));
    }

    SlcDetailRules m_rules;
};

}  // namespace

SlcPtr<SlcSymbolTable> SlcBuiltInTable(const SlcDetailRules& rules)
{
    auto table = MakeShared<SlcSymbolTable>(MakeShared<BuiltInScope>(rules));
    const SlcHiddenVariables::VarInfo& pi = SlcHiddenVariables::Pi();
    table->AddVarEntry(SlcLexicalNode::CreateIdent(pi.name), pi.type(), pi.detail(),
                       SlcStorageSpecNode::AInput(), false, pi.accessor, nullptr);
    return table;
}

#pragma once

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcLexicalNode.h"
#include "frontend/SlcStorageSpecNode.h"
#include "frontend/SlcTypeNode.h"
#include "symbols/SlcVariableUsage.h"

class SlcLexType;

/// What a symbol table holds under a name; the name belongs to the pool of identifiers. Nodes that
/// name the variable or function hold the entry too, once the checks have found it.
class SlcSymbolEntry : public SlcCollectable {
public:
    explicit SlcSymbolEntry(SlcIdentNode* ident) : m_ident(ident) {}
    [[nodiscard]] virtual bool IsFunction() const { return false; }
    [[nodiscard]] virtual bool IsVariable() const { return false; }
    [[nodiscard]] SlcIdentNode* GetIdent() const { return m_ident; }
    [[nodiscard]] const std::string& GetName() const { return m_ident->GetName(); }

private:
    SlcIdentNode* m_ident;
};

/// A variable: declared, predefined, formal, or an `extern` alias of one further out.
class SlcVarSymbolEntry : public SlcSymbolEntry {
public:
    /// `outer`: what an `extern` declaration stands for; null otherwise. `hidden`: predefined.
    SlcVarSymbolEntry(SlcIdentNode* ident, SlcTypeNode* type, SlcDetailNode* detail,
                      SlcStorageSpecNode* storage, bool hidden, SlcPtr<SlcVarSymbolEntry> outer);
    ~SlcVarSymbolEntry() override;

    [[nodiscard]] bool IsVariable() const override { return true; }
    [[nodiscard]] SlcTypeNode* GetType() const { return m_type; }
    /// Told, unused, as the setter below is.
    void SetType(SlcTypeNode* type) { m_type = type; }
    [[nodiscard]] SlcDetailNode* GetDetail() const { return m_detail; }
    void SetDetail(SlcDetailNode* detail) { m_detail = detail; }
    /// Null until an inline evaluation sets it.
    [[nodiscard]] SlcDetailNode* GetInlineDetail() const { return m_inlineDetail; }
    void SetInlineDetail(SlcDetailNode* detail) { m_inlineDetail = detail; }
    /// How it comes by its values: formal, local, predefined, or of another scope.
    [[nodiscard]] SlcStorageSpecNode* GetStorage() const { return m_storage; }
    /// A predefined variable.
    [[nodiscard]] bool IsHidden() const { return m_hidden; }
    /// Null unless it is an `extern` alias. May be one itself.
    [[nodiscard]] const SlcPtr<SlcVarSymbolEntry>& GetOuter() const { return m_outer; }

    /// The variable's operand in the intermediate code; null until the generator makes it. An
    /// `extern` alias gives that of its outer variable, so that both share one operand.
    [[nodiscard]] SlcPtr<SlcLexType>& GetIntCodeVar();
    /// Gives the variable an operand named `cName`, with its type, detail and storage. Defined
    /// with the operand class in `icode`.
    void MakeIntCodeVar(const char* cName);

    /// A parameter whose default value cannot be computed once per shader instance.
    [[nodiscard]] bool DependsOnContext() const { return m_dependsOnContext; }
    void SetDependsOnContext(bool depends) { m_dependsOnContext = depends; }

    /// As the body sees it that declares it; of a formal it stays for the calls of its function.
    [[nodiscard]] SlcVariableUsage& Usage() { return m_usage; }

private:
    SlcTypeNode* m_type;
    SlcDetailNode* m_detail;
    SlcDetailNode* m_inlineDetail = nullptr;
    SlcStorageSpecNode* m_storage;
    bool m_hidden;
    SlcPtr<SlcLexType> m_operand;
    SlcPtr<SlcVarSymbolEntry> m_outer;
    bool m_dependsOnContext = false;
    SlcVariableUsage m_usage;
};

/// What an `extern` declaration stands for in the end, or the variable itself. May be null.
[[nodiscard]] inline SlcPtr<SlcVarSymbolEntry> SlcOutermost(SlcPtr<SlcVarSymbolEntry> entry)
{
    while (entry && entry->GetOuter())
        entry = entry->GetOuter();
    return entry;
}

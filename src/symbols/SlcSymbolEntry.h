#pragma once

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcLexicalNode.h"
#include "frontend/SlcStorageSpecNode.h"
#include "frontend/SlcTypeNode.h"
#include "symbols/SlcVariableUsage.h"

class SlcLexType;

/// An entry of a symbol table. The pool of identifiers owns its name. Nodes that name the variable
/// or function also hold the entry after semantic analysis has found it.
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

/// A variable: declared, predefined, formal, or an `extern` alias of an outer one.
class SlcVarSymbolEntry : public SlcSymbolEntry {
public:
    /// `outer` is the variable that an `extern` declaration refers to; null if there is none, or if
    /// the entry is not `extern`. `hidden` means predefined.
    SlcVarSymbolEntry(SlcIdentNode* ident, SlcTypeNode* type, SlcDetailNode* detail,
                      SlcStorageSpecNode* storage, bool hidden, SlcPtr<SlcVarSymbolEntry> outer);
    ~SlcVarSymbolEntry() override;

    [[nodiscard]] bool IsVariable() const override { return true; }
    [[nodiscard]] SlcTypeNode* GetType() const { return m_type; }
    /// Part of the interface, but unused; the same holds for `SetDetail`.
    void SetType(SlcTypeNode* type) { m_type = type; }
    [[nodiscard]] SlcDetailNode* GetDetail() const { return m_detail; }
    void SetDetail(SlcDetailNode* detail) { m_detail = detail; }
    /// Returns the detail in the call of the enclosing function that is being evaluated; null
    /// before the first evaluation.
    [[nodiscard]] SlcDetailNode* GetInlineDetail() const { return m_inlineDetail; }
    void SetInlineDetail(SlcDetailNode* detail) { m_inlineDetail = detail; }
    /// Returns where the variable's value comes from: formal, local, predefined, or another scope.
    [[nodiscard]] SlcStorageSpecNode* GetStorage() const { return m_storage; }
    /// True for a predefined variable; false for `PI`.
    [[nodiscard]] bool IsHidden() const { return m_hidden; }
    /// Returns the variable that an `extern` alias refers to, which may also be an alias; null
    /// otherwise.
    [[nodiscard]] const SlcPtr<SlcVarSymbolEntry>& GetOuter() const { return m_outer; }

    /// Returns a reference to the variable's operand in the intermediate code, which is null until
    /// it is made. The operand of a predefined variable or of `PI` is made with the entry, any
    /// other by the lowering. An `extern` alias has the operand of its outer variable.
    [[nodiscard]] SlcPtr<SlcLexType>& GetIntCodeVar();
    /// Makes an operand named `cName` with the variable's type, detail and storage; if that is the
    /// name of `PI` in generated code, uses the operand of `PI` that all code shares. Defined in
    /// `icode`, with the operand class.
    void MakeIntCodeVar(const char* cName);

    /// True for a parameter whose default value cannot be computed once per shader instance.
    [[nodiscard]] bool DependsOnContext() const { return m_dependsOnContext; }
    void SetDependsOnContext(bool depends) { m_dependsOnContext = depends; }

    /// Returns the usage in the body that declares the variable. The usage of a formal is kept for
    /// calls of its function.
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

/// Follows `extern` declarations to the variable that they refer to. `entry` may be null.
[[nodiscard]] inline SlcPtr<SlcVarSymbolEntry> SlcOutermost(SlcPtr<SlcVarSymbolEntry> entry)
{
    while (entry && entry->GetOuter())
        entry = entry->GetOuter();
    return entry;
}

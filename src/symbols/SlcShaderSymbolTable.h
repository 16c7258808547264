#pragma once

#include <span>
#include <string_view>

#include "frontend/SlcCodeWalker.h"
#include "symbols/SlcSymbolTable.h"

/// Base of the scopes with predefined variables. That of a shader is between the scope of the
/// built-ins and that of the shader's parameters; that of a light loop (`illuminance`) is around
/// its body.
///
/// The compilation also keeps the entry of each name for `EntryNamed`. Code that needs a variable
/// which the source does not name gets it from there instead of by a look-up, since a parameter may
/// hide it.
class SlcShaderSymbolTable : public SlcSymbolTable {
public:
    using VarEntry = SlcPtr<SlcVarSymbolEntry>;

    /// Add the predefined variables with these names, and their operands, as read-only or writable.
    void InitReadOnlyHiddens(std::span<const char* const> names);
    void InitReadWriteHiddens(std::span<const char* const> names);
    /// Adds the variables of a light loop. All light loops of a shader share the entries: only the
    /// first call makes them. If `first` is false and the shader is a light, which has these
    /// variables itself, no call makes them, and its entries are used.
    void InitIlluminance(std::span<const char* const> names, bool first);
    /// Records the entry for `EntryNamed`; does nothing if no predefined variable has its name.
    static void InitStaticVarEntry(const VarEntry& entry);

    /// Returns the entry of a predefined variable; null if it has not been made, as for a variable
    /// that this kind of shader does not have. An unknown name is a fault of the compiler, and
    /// fatal.
    [[nodiscard]] static const VarEntry& EntryNamed(std::string_view name);
    /// Clears the entries that were recorded for `EntryNamed`.
    static void ResetStatics();

protected:
    explicit SlcShaderSymbolTable(SlcPtr<SlcSymbolTable> parent) : SlcSymbolTable(std::move(parent))
    {
    }

private:
    void AddHidden(const char* name, const char* record, SlcStorageSpecNode* storage);
    friend class SlcSurfaceSymbolTable;
};

/// This class and the next four are the scopes of the five kinds of shader.
class SlcSurfaceSymbolTable : public SlcShaderSymbolTable {
public:
    explicit SlcSurfaceSymbolTable(SlcPtr<SlcSymbolTable> parent);
};

class SlcLightSymbolTable : public SlcShaderSymbolTable {
public:
    explicit SlcLightSymbolTable(SlcPtr<SlcSymbolTable> parent);
};

class SlcVolumeSymbolTable : public SlcShaderSymbolTable {
public:
    explicit SlcVolumeSymbolTable(SlcPtr<SlcSymbolTable> parent);
};

class SlcDisplacementSymbolTable : public SlcShaderSymbolTable {
public:
    explicit SlcDisplacementSymbolTable(SlcPtr<SlcSymbolTable> parent);
};

class SlcImagerSymbolTable : public SlcShaderSymbolTable {
public:
    explicit SlcImagerSymbolTable(SlcPtr<SlcSymbolTable> parent);
};

/// The scope of the body of a light loop: `L`, `Cl` and `Ol` of the current light.
class SlcIlluminanceSymbolTable : public SlcShaderSymbolTable {
public:
    /// `first` is passed to `InitIlluminance`.
    SlcIlluminanceSymbolTable(SlcPtr<SlcSymbolTable> parent, bool first);
};

/// Makes the table of predefined variables for a kind of shader.
class SlcShaderSymbolTableCreater : public SlcCodeWalker {
public:
    /// Any node other than the five kinds is reported to `errors` as fatal.
    explicit SlcShaderSymbolTableCreater(SlcPtr<SlcSemanticError> errors);
    /// Returns a new table inside `parent`. `shaderType` is the node of the shader's kind. First
    /// clears the entries that were recorded for `EntryNamed`.
    [[nodiscard]] SlcPtr<SlcSymbolTable> operator()(SlcSyntaxNode* shaderType,
                                                    SlcPtr<SlcSymbolTable> parent);

private:
    using SlcCodeWalker::Case;
    void Case(SlcLightShaderTypeNode*) override;
    void Case(SlcSurfaceShaderTypeNode*) override;
    void Case(SlcVolumeShaderTypeNode*) override;
    void Case(SlcDisplacementShaderTypeNode*) override;
    void Case(SlcImagerShaderTypeNode*) override;
    void Default(SlcSyntaxNode* node) override;

    SlcPtr<SlcSymbolTable> m_table;
    SlcPtr<SlcSymbolTable> m_parent;
    SlcPtr<SlcSemanticError> m_errors;
};

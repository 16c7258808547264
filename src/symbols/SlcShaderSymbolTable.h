#pragma once

#include <span>
#include <string_view>

#include "frontend/SlcCodeWalker.h"
#include "symbols/SlcSymbolTable.h"

/// The scope of a shader's predefined variables, between the built-ins and the shader's own.
///
/// Code generation reaches the variables through the compilation's entries, never by look-up: a
/// parameter may hide one. They stay null until an entry of that name is made.
class SlcShaderSymbolTable : public SlcSymbolTable {
public:
    using VarEntry = SlcPtr<SlcVarSymbolEntry>;

    /// Adds the predefined variables of these names, each with its operand, as such that the shader
    /// only reads or also sets.
    void InitReadOnlyHiddens(std::span<const char* const> names);
    void InitReadWriteHiddens(std::span<const char* const> names);
    /// Adds the variables of a light loop: the entries that exist already, unless this is the
    /// `first` such scope. All light loops of a compile share them.
    void InitIlluminance(std::span<const char* const> names, bool first);
    /// Remembers the entry under its name; a name that no shader knows changes nothing.
    static void InitStaticVarEntry(const VarEntry& entry);

    /// The entry of a predefined variable; null where the kind of shader has none. A name that
    /// no shader knows is a fault of the compiler, and fatal.
    [[nodiscard]] static const VarEntry& EntryNamed(std::string_view name);
    /// Forgets the variables of an earlier shader.
    static void ResetStatics();

protected:
    explicit SlcShaderSymbolTable(SlcPtr<SlcSymbolTable> parent) : SlcSymbolTable(std::move(parent))
    {
    }

private:
    void AddHidden(const char* name, const char* record, SlcStorageSpecNode* storage);
    friend class SlcSurfaceSymbolTable;
};

/// One class a kind of shader, which takes its variables and tells which of them it may write.
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

/// The scope of the body of a light loop: `L`, `Cl` and `Ol` of the light at hand. `first`: as
/// `InitIlluminance` tells.
class SlcIlluminanceSymbolTable : public SlcShaderSymbolTable {
public:
    SlcIlluminanceSymbolTable(SlcPtr<SlcSymbolTable> parent, bool first);
};

/// Makes the table of predefined variables for a kind of shader.
class SlcShaderSymbolTableCreater : public SlcCodeWalker {
public:
    /// Another node than one of the five is fatal, by this sink.
    explicit SlcShaderSymbolTableCreater(SlcPtr<SlcSemanticError> errors);
    /// `shaderType` is the node of the kind.
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

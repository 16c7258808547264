// Lists for each kind of shader the predefined variables that it should only read and those that it
// may write. The entries are made once per shader. Code that needs a variable which the source does
// not name gets it with `EntryNamed` instead of a look-up, since a parameter may hide a name such
// as "P".
//
// `Ps` of a surface is its `P`: two names with one operand, so that a write to `P` also changes
// `Ps`. All light loops share one set of the three variables `L`, `Cl` and `Ol`.
//
// Tested by tests/symbols/SlcShaderSymbolTableTest.cpp.

#include "symbols/SlcShaderSymbolTable.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <utility>

#include "support/SlcCompilation.h"
#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcHiddenVariables.h"

using S = SlcShaderSymbolTable;

namespace {

constexpr std::string_view k_names[] = {"Cs", "Os", "P",  "Ps",     "dPdu", "dPdv", "N",  "Ng",
                                        "u",  "v",  "du", "dv",     "s",    "t",    "L",  "Cl",
                                        "Ol", "E",  "I",  "ncomps", "time", "Ci",   "Oi", "alpha"};

/// The entries of the predefined variables of the compilation's shader; null until made.
struct PredefinedEntries {
    std::array<S::VarEntry, std::size(k_names)> entries;  // in the order of `k_names`
    bool illuminanceExists = false;                       // the entries of light loops exist
};

/// Returns the place of the entry with this name; null for an unknown name.
[[nodiscard]] S::VarEntry* FindEntry(std::string_view name)
{
    const auto found = std::find(std::begin(k_names), std::end(k_names), name);
    if (found == std::end(k_names))
        return nullptr;
    return &SlcPartOfCompilation<PredefinedEntries>()
                .entries[static_cast<std::size_t>(found - std::begin(k_names))];
}

// The variables of each kind of shader, in the order in which the entries are made. A surface also
// has `Ps`.

constexpr const char* k_surfaceReadOnly[] = {
    "Cs", "Os", "dPdu", "dPdv", "Ng", "u", "v", "du", "dv", "s", "t", "E", "I", "ncomps", "time"};
constexpr const char* k_surfaceReadWrite[] = {"Ci", "Oi", "P", "N"};

constexpr const char* k_lightReadOnly[] = {"P",  "dPdu", "dPdv", "N",  "Ng", "u",      "v",   "du",
                                           "dv", "s",    "t",    "Ps", "E",  "ncomps", "time"};
constexpr const char* k_lightReadWrite[] = {"Cl", "Ol", "L", "I"};

constexpr const char* k_volumeReadOnly[] = {"Cs", "Os", "P", "dPdu",   "dPdv", "N",
                                            "Ng", "u",  "v", "du",     "dv",   "s",
                                            "t",  "E",  "I", "ncomps", "time"};
constexpr const char* k_volumeReadWrite[] = {"Ci", "Oi"};

constexpr const char* k_displacementReadOnly[] = {"dPdu", "dPdv", "Ng", "E", "I",      "u",   "v",
                                                  "du",   "dv",   "s",  "t", "ncomps", "time"};
constexpr const char* k_displacementReadWrite[] = {"P", "N"};

constexpr const char* k_imagerReadOnly[] = {"P", "ncomps", "time", "s", "t", "u", "v", "du", "dv"};
constexpr const char* k_imagerReadWrite[] = {"Ci", "Oi", "I", "alpha"};

constexpr const char* k_illuminanceNames[] = {"L", "Cl", "Ol"};

/// Makes the entries that all light loops share. Only the entries are kept, not the new scope.
void MakeIlluminanceEntries(const SlcPtr<SlcSymbolTable>& parent)
{
    static_cast<void>(MakeShared<SlcIlluminanceSymbolTable>(parent, true));
}

}  // namespace

void SlcShaderSymbolTable::AddHidden(const char* name, const char* record,
                                     SlcStorageSpecNode* storage)
{
    const auto& info = SlcHiddenVariables::GetVarInfoHidden(record);
    InitStaticVarEntry(AddVarEntry(SlcLexicalNode::CreateIdent(name), info.type(), info.detail(),
                                   storage, true, info.accessor, nullptr));
}

void SlcShaderSymbolTable::InitReadOnlyHiddens(std::span<const char* const> names)
{
    for (const char* name : names)
        AddHidden(name, name, SlcStorageSpecNode::AReadOnly());
}

void SlcShaderSymbolTable::InitReadWriteHiddens(std::span<const char* const> names)
{
    for (const char* name : names)
        AddHidden(name, name, SlcStorageSpecNode::AReadWrite());
}

void SlcShaderSymbolTable::InitIlluminance(std::span<const char* const> names, bool first)
{
    bool& exists = SlcPartOfCompilation<PredefinedEntries>().illuminanceExists;
    if (exists || (!first && EntryNamed("L"))) {
        for (const char* name : names)
            if (const VarEntry* const known = FindEntry(name); known && *known)
                AddVarEntry(*known);
        return;
    }
    for (const char* name : names) {
        const auto& info = SlcHiddenVariables::GetVarInfoIlluminance(name);
        InitStaticVarEntry(AddVarEntry(SlcLexicalNode::CreateIdent(name), info.type(),
                                       info.detail(), SlcStorageSpecNode::AReadWrite(), true,
                                       info.accessor, nullptr));
    }
    exists = true;
}

void SlcShaderSymbolTable::InitStaticVarEntry(const VarEntry& entry)
{
    if (VarEntry* const known = FindEntry(entry->GetName()))
        *known = entry;
}

const S::VarEntry& SlcShaderSymbolTable::EntryNamed(std::string_view name)
{
    if (const VarEntry* const known = FindEntry(name))
        return *known;
    FatalError("No predefined variable named '" + std::string(name) + "'");
}

void SlcShaderSymbolTable::ResetStatics()
{
    SlcPartOfCompilation<PredefinedEntries>() = {};
}

SlcSurfaceSymbolTable::SlcSurfaceSymbolTable(SlcPtr<SlcSymbolTable> parent)
    : SlcShaderSymbolTable(parent)
{
    InitReadOnlyHiddens(k_surfaceReadOnly);
    InitReadWriteHiddens(k_surfaceReadWrite);
    // In a surface shader the lit point is the shaded point.
    AddHidden("Ps", "P", SlcStorageSpecNode::AReadOnly());
    EntryNamed("Ps")->GetIntCodeVar() = EntryNamed("P")->GetIntCodeVar();
    MakeIlluminanceEntries(parent);
}

SlcLightSymbolTable::SlcLightSymbolTable(SlcPtr<SlcSymbolTable> parent)
    : SlcShaderSymbolTable(std::move(parent))
{
    InitReadOnlyHiddens(k_lightReadOnly);
    InitReadWriteHiddens(k_lightReadWrite);
}

SlcVolumeSymbolTable::SlcVolumeSymbolTable(SlcPtr<SlcSymbolTable> parent)
    : SlcShaderSymbolTable(parent)
{
    InitReadOnlyHiddens(k_volumeReadOnly);
    InitReadWriteHiddens(k_volumeReadWrite);
    MakeIlluminanceEntries(parent);
}

SlcDisplacementSymbolTable::SlcDisplacementSymbolTable(SlcPtr<SlcSymbolTable> parent)
    : SlcShaderSymbolTable(std::move(parent))
{
    InitReadOnlyHiddens(k_displacementReadOnly);
    InitReadWriteHiddens(k_displacementReadWrite);
}

SlcImagerSymbolTable::SlcImagerSymbolTable(SlcPtr<SlcSymbolTable> parent)
    : SlcShaderSymbolTable(std::move(parent))
{
    InitReadOnlyHiddens(k_imagerReadOnly);
    InitReadWriteHiddens(k_imagerReadWrite);
}

SlcIlluminanceSymbolTable::SlcIlluminanceSymbolTable(SlcPtr<SlcSymbolTable> parent, bool first)
    : SlcShaderSymbolTable(std::move(parent))
{
    InitIlluminance(k_illuminanceNames, first);
}

SlcShaderSymbolTableCreater::SlcShaderSymbolTableCreater(SlcPtr<SlcSemanticError> errors)
    : m_errors(std::move(errors))
{
}

SlcPtr<SlcSymbolTable> SlcShaderSymbolTableCreater::operator()(SlcSyntaxNode* shaderType,
                                                               SlcPtr<SlcSymbolTable> parent)
{
    SlcShaderSymbolTable::ResetStatics();
    m_parent = std::move(parent);
    shaderType->ApplyWalker(this);
    return m_table;
}

void SlcShaderSymbolTableCreater::Case(SlcLightShaderTypeNode*)
{
    m_table = MakeShared<SlcLightSymbolTable>(m_parent);
}

void SlcShaderSymbolTableCreater::Case(SlcSurfaceShaderTypeNode*)
{
    m_table = MakeShared<SlcSurfaceSymbolTable>(m_parent);
}

void SlcShaderSymbolTableCreater::Case(SlcVolumeShaderTypeNode*)
{
    m_table = MakeShared<SlcVolumeSymbolTable>(m_parent);
}

void SlcShaderSymbolTableCreater::Case(SlcDisplacementShaderTypeNode*)
{
    m_table = MakeShared<SlcDisplacementSymbolTable>(m_parent);
}

void SlcShaderSymbolTableCreater::Case(SlcImagerShaderTypeNode*)
{
    m_table = MakeShared<SlcImagerSymbolTable>(m_parent);
}

void SlcShaderSymbolTableCreater::Default(SlcSyntaxNode* node)
{
    m_errors->FatalError(node, "Fatal error, unable to create shader's symbol table!");
}

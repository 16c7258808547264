// Which predefined variables each kind of shader sees, and which of them it may write, as lists of
// names. The entries are made for one compile and then reached by the statics: the lowering asks
// for `sm_P`, not for "P", which a parameter may hide.
//
// `Ps` of a surface is its `P`: two names with one operand, so that a write to one is seen through
// the other. The three variables of light loops exist once, however many loops there are.
//
// Tested by tests/symbols/SlcShaderSymbolTableTest.cpp.

#include "symbols/SlcShaderSymbolTable.h"

#include <string>
#include <utility>

#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcHiddenVariables.h"

using S = SlcShaderSymbolTable;

S::VarEntry S::sm_Cs, S::sm_Os, S::sm_P, S::sm_Ps, S::sm_dPdu, S::sm_dPdv, S::sm_N, S::sm_Ng,
    S::sm_u, S::sm_v, S::sm_du, S::sm_dv, S::sm_s, S::sm_t, S::sm_L, S::sm_Cl, S::sm_Ol, S::sm_E,
    S::sm_I, S::sm_ncomps, S::sm_time, S::sm_Ci, S::sm_Oi, S::sm_alpha;
bool S::sm_illuminanceExists = false;

namespace {

struct StaticEntry {
    std::string_view name;
    S::VarEntry* entry;
};

constexpr StaticEntry k_statics[] = {
    {"Cs", &S::sm_Cs},     {"Os", &S::sm_Os},     {"P", &S::sm_P},   {"Ps", &S::sm_Ps},
    {"dPdu", &S::sm_dPdu}, {"dPdv", &S::sm_dPdv}, {"N", &S::sm_N},   {"Ng", &S::sm_Ng},
    {"u", &S::sm_u},       {"v", &S::sm_v},       {"du", &S::sm_du}, {"dv", &S::sm_dv},
    {"s", &S::sm_s},       {"t", &S::sm_t},       {"L", &S::sm_L},   {"Cl", &S::sm_Cl},
    {"Ol", &S::sm_Ol},     {"E", &S::sm_E},       {"I", &S::sm_I},   {"ncomps", &S::sm_ncomps},
    {"time", &S::sm_time}, {"Ci", &S::sm_Ci},     {"Oi", &S::sm_Oi}, {"alpha", &S::sm_alpha},
};

// What each kind of shader sees, in the order in which the entries are made.

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

/// Makes the statics of the light loops; the scope itself is not needed.
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
    if (sm_illuminanceExists || (!first && sm_L)) {
        for (const char* name : names)
            for (const StaticEntry& known : k_statics)
                if (known.name == name && *known.entry)
                    AddVarEntry(*known.entry);
        return;
    }
    for (const char* name : names) {
        const auto& info = SlcHiddenVariables::GetVarInfoIlluminance(name);
        InitStaticVarEntry(AddVarEntry(SlcLexicalNode::CreateIdent(name), info.type(),
                                       info.detail(), SlcStorageSpecNode::AReadWrite(), true,
                                       info.accessor, nullptr));
    }
    sm_illuminanceExists = true;
}

void SlcShaderSymbolTable::InitStaticVarEntry(const VarEntry& entry)
{
    for (const StaticEntry& known : k_statics)
        if (known.name == entry->GetName())
            *known.entry = entry;
}

const S::VarEntry& SlcShaderSymbolTable::EntryNamed(std::string_view name)
{
    for (const StaticEntry& known : k_statics)
        if (known.name == name)
            return *known.entry;
    FatalError("No predefined variable named '" + std::string(name) + "'");
}

void SlcShaderSymbolTable::ResetStatics()
{
    for (const StaticEntry& known : k_statics)
        *known.entry = nullptr;
    sm_illuminanceExists = false;
}

SlcSurfaceSymbolTable::SlcSurfaceSymbolTable(SlcPtr<SlcSymbolTable> parent)
    : SlcShaderSymbolTable(parent)
{
    InitReadOnlyHiddens(k_surfaceReadOnly);
    InitReadWriteHiddens(k_surfaceReadWrite);
    // The point being shaded is what a surface shader shades.
    AddHidden("Ps", "P", SlcStorageSpecNode::AReadOnly());
    sm_Ps->GetIntCodeVar() = sm_P->GetIntCodeVar();
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

#include "symbols/SlcShaderSymbolTable.h"

#include <gtest/gtest.h>

#include "frontend/SlcShaderTypeNode.h"
#include "icode/SlcLexType.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcHiddenVariables.h"
#include "symbols/TypedArgs.h"

namespace {

/// Returns the scopes with the predefined variables of each kind of shader: surface, light, volume,
/// displacement, imager.
std::vector<SlcPtr<SlcSymbolTable>> TablesOfAllKinds()
{
    SlcSurfaceShaderTypeNode surface;
    SlcLightShaderTypeNode light;
    SlcVolumeShaderTypeNode volume;
    SlcDisplacementShaderTypeNode displacement;
    SlcImagerShaderTypeNode imager;
    SlcShaderTypeNode* const kinds[] = {&surface, &light, &volume, &displacement, &imager};
    std::vector<SlcPtr<SlcSymbolTable>> tables;
    for (SlcShaderTypeNode* kind : kinds)
        tables.push_back(SlcShaderSymbolTableCreater(MakeShared<SlcSemanticError>())(
            kind, MakeShared<SlcSymbolTable>()));
    return tables;
}

/// Returns 'r' for read-only, 'w' for read and write, '-' for not predefined, '?' otherwise.
char AccessTo(const SlcPtr<SlcSymbolTable>& table, const std::string& name)
{
    if (!table->IsVarInTable(Ident(name)))
        return '-';
    const auto* storage = table->GetVarEntry(Ident(name), true)->GetStorage();
    return storage->IsReadOnly() ? 'r' : storage->IsReadWrite() ? 'w' : '?';
}

std::string AccessorOf(const SlcPtr<SlcVarSymbolEntry>& entry)
{
    return entry->GetIntCodeVar()->GetName();
}

}  // namespace

TEST(SlcShaderSymbolTable, DefinesTheVariablesOfEachKindOfShader)
{
    struct Row {
        const char* names;
        const char* access;  // surface, light, volume, displacement, imager
    };
    const Row rows[] = {
        {"Cs Os", "r-r--"},
        {"P", "wrrwr"},
        {"dPdu dPdv Ng", "rrrr-"},
        {"N", "wrrw-"},
        {"u v du dv s t", "rrrrr"},
        {"Ps", "rr---"},
        {"E", "rrrr-"},
        {"I", "rwrrw"},
        {"ncomps time", "rrrrr"},
        {"Ci Oi", "w-w-w"},
        {"L Cl Ol", "-w---"},
        {"alpha", "----w"},
    };
    const auto tables = TablesOfAllKinds();
    for (const Row& row : rows) {
        std::istringstream names(row.names);
        for (std::string name; names >> name;) {
            std::string access;
            for (const auto& table : tables)
                access += AccessTo(table, name);
            EXPECT_EQ(access, row.access) << name;
        }
    }
}

TEST(SlcShaderSymbolTable, MakesPsAnAliasOfPInASurface)
{
    SlcSurfaceShaderTypeNode surface;
    SlcShaderSymbolTableCreater create(MakeShared<SlcSemanticError>());
    auto table = create(&surface, MakeShared<SlcSymbolTable>());
    EXPECT_EQ(AccessorOf(SlcShaderSymbolTable::EntryNamed("Ps")), "i_hiddens.GetP()");
    EXPECT_EQ(table->GetVarEntry(Ident("Ps"), true), SlcShaderSymbolTable::EntryNamed("Ps"));
    EXPECT_TRUE(SlcShaderSymbolTable::EntryNamed("Ps")->IsHidden());
    EXPECT_EQ(SlcShaderSymbolTable::EntryNamed("Ps")->GetIntCodeVar(),
              SlcShaderSymbolTable::EntryNamed("P")->GetIntCodeVar());
    SlcLightShaderTypeNode light;
    table = create(&light, MakeShared<SlcSymbolTable>());
    EXPECT_EQ(AccessorOf(SlcShaderSymbolTable::EntryNamed("Ps")), "i_hiddens.GetPs()");
    EXPECT_TRUE(SlcShaderSymbolTable::EntryNamed("Ci").Null());  // the surface's are gone
}

TEST(SlcIlluminanceSymbolTable, SharesItsVariablesAmongAllLightLoops)
{
    SlcSurfaceShaderTypeNode surface;
    SlcVolumeShaderTypeNode volume;
    for (SlcShaderTypeNode* kind :
         {static_cast<SlcShaderTypeNode*>(&surface), static_cast<SlcShaderTypeNode*>(&volume)}) {
        const auto shader = SlcShaderSymbolTableCreater(MakeShared<SlcSemanticError>())(
            kind, MakeShared<SlcSymbolTable>());
        const auto one = MakeShared<SlcIlluminanceSymbolTable>(shader, true);
        const auto other = MakeShared<SlcIlluminanceSymbolTable>(shader, true);
        for (const char* name : {"L", "Cl", "Ol"}) {
            const auto entry = one->GetVarEntry(Ident(name), true);
            EXPECT_EQ(other->GetVarEntry(Ident(name), true), entry) << name;
            EXPECT_EQ(AccessorOf(entry), std::string("(i_lights[lightCnt].") + name + ")");
            EXPECT_TRUE(entry->GetStorage()->IsReadWrite());
        }
        EXPECT_EQ(one->GetVarEntry(Ident("L"), true), SlcShaderSymbolTable::EntryNamed("L"));
    }
}

TEST(SlcIlluminanceSymbolTable, SharesTheVariablesOfALightShader)
{
    SlcLightShaderTypeNode light;
    const auto shader = SlcShaderSymbolTableCreater(MakeShared<SlcSemanticError>())(
        &light, MakeShared<SlcSymbolTable>());
    const auto loop = MakeShared<SlcIlluminanceSymbolTable>(shader, false);
    EXPECT_EQ(loop->GetVarEntry(Ident("Cl"), true), shader->GetVarEntry(Ident("Cl"), true));
    EXPECT_EQ(AccessorOf(SlcShaderSymbolTable::EntryNamed("Cl")), "i_hiddens.GetCl()");
}

TEST(SlcShaderSymbolTableDeathTest, TreatsUnknownNamesAsInternalErrors)
{
    EXPECT_EXIT(static_cast<void>(SlcHiddenVariables::GetVarInfoHidden("Q")),
                testing::ExitedWithCode(1),
                "No hidden variable named 'Q' in SlcHiddenVariables::GetVarInfoHidden function");
    EXPECT_EXIT(static_cast<void>(SlcHiddenVariables::GetVarInfoIlluminance("P")),
                testing::ExitedWithCode(1),
                "No hidden variable named 'P' in SlcHiddenVariables::GetVarInfoIlluminance "
                "function");
    SlcProcArgsNode node;
    EXPECT_EXIT(static_cast<void>(SlcShaderSymbolTableCreater(MakeShared<SlcSemanticError>())(
                    &node, MakeShared<SlcSymbolTable>())),
                testing::ExitedWithCode(1), "Fatal error, unable to create shader's symbol table!");
}

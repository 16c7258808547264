#include "symbols/SlcShaderSymbolTable.h"

#include <gtest/gtest.h>

#include "frontend/SlcShaderTypeNode.h"
#include "icode/SlcLexType.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcHiddenVariables.h"
#include "symbols/TypedArgs.h"

namespace {

/// The scopes of a shader of each kind, in the order of the columns below.
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

/// 'r' read-only, 'w' read and write, '-' not predefined.
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

TEST(SlcShaderSymbolTable, ShowsEachKindOfShaderItsVariables)
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

TEST(SlcShaderSymbolTable, HasOneTypeAndDetailForEachName)
{
    struct Row {
        const char* name;
        const char* type;
        bool uniform;
        const char* accessor;
    };
    const Row rows[] = {
        {"Cs", "color", false, "i_hiddens.GetCs()"},
        {"P", "point", false, "i_hiddens.GetP()"},
        {"Ps", "point", false, "i_hiddens.GetPs()"},
        {"N", "normal", false, "i_hiddens.GetN()"},
        {"I", "vector", false, "i_hiddens.GetI()"},
        {"dPdv", "vector", false, "i_hiddens.GetDPdv()"},
        {"E", "point", true, "(QxVector3*)i_context.Eye()"},
        {"time", "float", true, "i_hiddens.GetTime()"},
        {"ncomps", "float", true, "i_hiddens.GetNcomps()"},
        {"alpha", "float", false, "i_hiddens.GetAlpha()"},
    };
    for (const Row& row : rows) {
        const auto& info = SlcHiddenVariables::GetVarInfoHidden(row.name);
        EXPECT_EQ(info.type()->ToString(), row.type) << row.name;
        EXPECT_EQ(info.detail()->IsUniform(), row.uniform) << row.name;
        EXPECT_STREQ(info.accessor, row.accessor);
    }
    EXPECT_STREQ(SlcHiddenVariables::GetVarInfoIlluminance("Cl").accessor,
                 "(i_lights[lightCnt].Cl)");
}

TEST(SlcShaderSymbolTable, ReadsTheShadedPointAsPsInASurface)
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
    EXPECT_TRUE(SlcShaderSymbolTable::EntryNamed("Ci").Null());  // nothing is left of the surface
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

TEST(SlcShaderSymbolTableDeathTest, TreatsUnknownNamesAsFaultsOfItsOwn)
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

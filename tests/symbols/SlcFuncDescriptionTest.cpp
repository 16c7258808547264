#include "symbols/SlcFuncDescription.h"

#include <gtest/gtest.h>

#include <set>

#include "symbols/SlcBuiltInTable.h"
#include "symbols/TypedArgs.h"

namespace {

using Description = SlcFuncDescription;

std::string DetailsOf(const std::vector<SlcDetailNode*>& details)
{
    std::string text;
    for (const SlcDetailNode* detail : details)
        text += detail->ToString()[1];  // 'a' for varying, 'n' for uniform or unknown
    return text;
}

/// Every row with how it reads.
std::vector<std::pair<std::string, Description::FuncInfo>> ReadAllRows()
{
    std::vector<std::pair<std::string, Description::FuncInfo>> rows;
    for (const char* const* row = Description::sm_funcInfoString; *row; ++row)
        rows.emplace_back(*row, Description::ReadPlainRow(*row));
    for (const char* const* row = Description::sm_varArgsFuncInfoString; *row; ++row)
        rows.emplace_back(*row, Description::ReadVarArgsRow(*row));
    return rows;
}

}  // namespace

TEST(SlcFuncDescription, SplitsRowsIntoTokens)
{
    const char* cursor = "  vector( float* =0.0)  end";
    std::string tokens;
    while (Description::EatSpaces(cursor) != '\0')
        tokens += std::string(Description::ReadString(cursor)) + "|";
    EXPECT_EQ(tokens, "vector|(|float|*|=|0.0|)|end|");
    EXPECT_EQ(Description::ReadString(cursor), "");
}

TEST(SlcFuncDescription, ReadsAPlainRow)
{
    const auto info = Description::ReadPlainRow(
        "f any-point 3 output uniform color uniform string  float 1 8 CALL_PRIM_F 1 0 "
        "simd varying uniform varying  ");
    EXPECT_EQ(info.name, "f");
    EXPECT_EQ(info.returnType, T::AAnyPoint());
    EXPECT_EQ(TextOf(info.argTypes), "color string float");
    EXPECT_TRUE(info.argStorages[0]->IsOutput());
    EXPECT_TRUE(info.argStorages[1]->IsInput());
    EXPECT_TRUE(info.argDetails[1]->IsUniform());
    EXPECT_TRUE(info.argDetails[2]->IsUnknownDetail());
    EXPECT_EQ(info.checkDetail, 1);
    EXPECT_EQ(info.checkInlineDetail, 8);
    EXPECT_EQ(info.cName, "CALL_PRIM_F");
    EXPECT_TRUE(info.orderSensitive);
    EXPECT_FALSE(info.foldable);
    EXPECT_EQ(info.simd, SlcCallSIMD::Simd);
    EXPECT_EQ(DetailsOf(info.simdDetails), "ana");
}

TEST(SlcFuncDescription, ReadsNoDetailBehindNosimdAndNoNameWhereThereIsNone)
{
    const auto info = Description::ReadPlainRow("f void 1 float 0 0 NOT_YET 0 1 nosimd varying");
    EXPECT_TRUE(info.simdDetails.empty());
    EXPECT_TRUE(info.cName.empty());
    EXPECT_TRUE(info.foldable);
}

TEST(SlcFuncDescription, CountsWholeGridDetailsByTheTail)
{
    const auto bounded = Description::ReadVarArgsRow(
        "f float 1 point (float named (a float b color)) 0 0 CALL_PRIM_F 0 0 simd varying "
        "uniform varying uniform");
    EXPECT_EQ(DetailsOf(bounded.simdDetails), "anan");
    const auto open = Description::ReadVarArgsRow(
        "f float 1 point any* 0 0 CALL_PRIM_F 0 0 simd varying uniform");
    EXPECT_EQ(DetailsOf(open.simdDetails), "a");
}

TEST(SlcFuncDescriptionDeathTest, RefusesMalformedRows)
{
    struct Case {
        const char* row;
        const char* report;
    };
    const Case cases[] = {
        {"f flaot 0 0 0 CALL_PRIM_F 0 0 nosimd",
         "FATAL ERROR: Invalid type during function description list building: flaot"},
        {"f float 1 uniform output float 0 0 CALL_PRIM_F 0 0 nosimd",  // the wrong way round
         "FATAL ERROR: Invalid type during function description list building: output"},
        {"f float one float 0 0 CALL_PRIM_F 0 0 nosimd",
         "FATAL ERROR: Invalid number during function description list building: one"},
        {"f float 1", "FATAL ERROR: Invalid type during function description list building: "},
    };
    for (const Case& c : cases)
        EXPECT_EXIT(static_cast<void>(Description::ReadPlainRow(c.row)), testing::ExitedWithCode(1),
                    c.report);
    // A list that is never closed ends with the row.
    for (const char* row : {"f float 0 (float", "f float 0 (named (a float"})
        EXPECT_EXIT(static_cast<void>(Description::ReadVarArgsRow(row)), testing::ExitedWithCode(1),
                    "Invalid type");
}

TEST(SlcFuncDescription, NamesABadWholeGridWordAndReadsOn)
{
    Description::FuncInfo info;
    const auto report = ReportsOf([&] {
        info = Description::ReadPlainRow("f float 1 float 0 0 CALL_PRIM_F 0 0 smid varying");
    });
    EXPECT_EQ(report, "Bad SIMD info : smid\n");
    EXPECT_EQ(DetailsOf(info.simdDetails), "a");
}

TEST(SlcFuncDescription, HasRowsThatHoldTogether)
{
    const auto rows = ReadAllRows();
    std::set<std::string> overloads;
    for (const auto& [row, info] : rows) {
        EXPECT_TRUE(info.cName.starts_with("CALL_PRIM_")) << row;
        EXPECT_TRUE(info.checkDetail >= 0 && info.checkDetail <= 2) << row;
        EXPECT_TRUE(info.checkInlineDetail >= 0 && info.checkInlineDetail <= 8) << row;
        EXPECT_FALSE(info.orderSensitive && info.foldable) << row;
        const bool ordered = info.name == "random" || info.name == "printf";
        EXPECT_EQ(info.orderSensitive, ordered) << row;

        std::size_t places = info.argTypes.size();
        if (info.tail && info.tail->GetMaxSize(false) > 0)
            places += static_cast<std::size_t>(info.tail->GetMaxSize(false));
        EXPECT_EQ(info.simdDetails.size(), info.simd == SlcCallSIMD::NoSimd ? 0 : places) << row;
        // A uniform formal keeps that detail in a whole-grid call, an output gets every point.
        for (std::size_t i = 0; i < info.simdDetails.size() && i < info.argTypes.size(); ++i) {
            EXPECT_FALSE(info.argDetails[i]->IsUniform() && info.simdDetails[i]->IsVarying())
                << row;
            EXPECT_FALSE(info.argStorages[i]->IsOutput() && info.simdDetails[i]->IsUniform())
                << row;
        }
        // No row is hidden by another one with the same formals and result.
        const std::string overload = info.name + " " + info.returnType->ToString() + " " +
                                     TextOf(info.argTypes) + (info.tail ? " ..." : "");
        EXPECT_TRUE(overloads.insert(overload).second) << row;
    }
}

namespace {

SlcDetailNode* FirstRule(SlcCheckDetail*, SlcPtr<SlcFuncSymbolEntry>, SlcProcCallExprNode*)
{
    return nullptr;
}

SlcDetailNode* SecondRule(SlcCheckDetail*, SlcPtr<SlcFuncSymbolEntry>, SlcProcCallExprNode*)
{
    return nullptr;
}

}  // namespace

TEST(SlcBuiltInTable, MakesAnEntryOfEachRow)
{
    SlcDetailRules rules{};
    rules.checkDetail = {FirstRule, SecondRule, nullptr};
    const auto table = SlcBuiltInTable(rules);
    std::size_t entries = 0;
    const auto rows = ReadAllRows();
    std::set<std::string> names;
    for (const auto& [row, info] : rows)
        names.insert(info.name);
    for (const std::string& name : names)
        entries += table->GetFuncEntrys(Ident(name), T::AError()).size();
    EXPECT_EQ(entries, rows.size());

    const auto pi = table->GetVarEntry(Ident("PI"), true);
    EXPECT_TRUE(pi->GetType()->IsFloatType());
    EXPECT_TRUE(pi->GetDetail()->IsUniform());
    EXPECT_FALSE(pi->GetIntCodeVar().Null());

    const auto sine = table->GetFuncEntrys(Ident("sin"), T::AFloat()).front();
    EXPECT_EQ(sine->GetCName()->GetName(), "CALL_PRIM_SIN");
    EXPECT_EQ(sine->GetCheckDetailProc(), FirstRule);
    EXPECT_TRUE(sine->IsFoldable());
    const auto ambient = table->GetFuncEntrys(Ident("ambient"), T::AColor()).front();
    EXPECT_EQ(ambient->GetCheckDetailProc(), SecondRule);
    const auto print = table->GetFuncEntrys(Ident("printf"), T::AVoid()).front();
    EXPECT_TRUE(print->IsVarNbArgs());
    EXPECT_TRUE(print->IsOrderSensitive());
}

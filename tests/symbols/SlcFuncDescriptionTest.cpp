#include "symbols/SlcFuncDescription.h"

#include <gtest/gtest.h>

#include <set>

#include "sqx/SqxCardReader.h"
#include "symbols/SlcBuiltInTable.h"
#include "symbols/TypedArgs.h"

namespace {

std::string DetailsOf(const std::vector<SlcDetailNode*>& details)
{
    std::string text;
    for (const SlcDetailNode* detail : details)
        text += detail->ToString()[1];  // 'a' for varying, 'n' for uniform or unknown
    return text;
}

}  // namespace

TEST(SlcFuncDescription, HasTheFormalsOfItsCard)
{
    const SqxCard card =
        SqxCardReader(SqxPrimitive::CALL_PRIM_MIX_1D,
                      "@simd @uniform(b, c) any-point f(output color a, uniform string b,"
                      " optional float c = 0.5, named vector d = 0)")
            .Read();
    const SlcFuncDescription function(card);
    EXPECT_EQ(function.name, "f");
    EXPECT_EQ(function.returnType, T::AAnyPoint());
    EXPECT_EQ(TextOf(function.argTypes), "color string");
    EXPECT_TRUE(function.argStorages[0]->IsOutput());
    EXPECT_TRUE(function.argDetails[0]->IsUnknownDetail());
    EXPECT_TRUE(function.argDetails[1]->IsUniform());
    ASSERT_TRUE(function.tail);
    EXPECT_EQ(function.tail->GetMaxSize(true), 3);
    EXPECT_EQ(function.simd, SlcCallSIMD::Simd);
    EXPECT_EQ(DetailsOf(function.simdDetails), "anna");
}

TEST(SlcFuncDescription, HasNoOverloadTwice)
{
    std::set<std::string> overloads;
    for (const SlcFuncDescription& function : SlcFuncDescription::All()) {
        const std::string overload = function.name + " " + function.returnType->ToString() + " " +
                                     TextOf(function.argTypes) + (function.tail ? " ..." : "");
        EXPECT_TRUE(overloads.insert(overload).second) << function.card.text;
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

TEST(SlcBuiltInTable, MakesAnEntryOfEachCard)
{
    SlcDetailRules rules{};
    rules.checkDetail = {FirstRule, SecondRule, nullptr};
    const auto table = SlcBuiltInTable(rules);
    std::size_t entries = 0;
    const auto functions = SlcFuncDescription::All();
    std::set<std::string> names;
    for (const SlcFuncDescription& function : functions)
        names.insert(function.name);
    for (const std::string& name : names)
        entries += table->GetFuncEntrys(Ident(name), T::AError()).size();
    EXPECT_EQ(entries, functions.size());

    const auto pi = table->GetVarEntry(Ident("PI"), true);
    EXPECT_TRUE(pi->GetType()->IsFloatType());
    EXPECT_TRUE(pi->GetDetail()->IsUniform());
    EXPECT_FALSE(pi->GetIntCodeVar().Null());

    const auto sine = table->GetFuncEntrys(Ident("sin"), T::AFloat()).front();
    EXPECT_EQ(sine->GetPrimitive(), SqxPrimitive::CALL_PRIM_SIN);
    EXPECT_EQ(sine->GetCheckDetailProc(), FirstRule);
    EXPECT_TRUE(sine->IsFoldable());
    const auto ambient = table->GetFuncEntrys(Ident("ambient"), T::AColor()).front();
    EXPECT_EQ(ambient->GetCheckDetailProc(), SecondRule);
    const auto print = table->GetFuncEntrys(Ident("printf"), T::AVoid()).front();
    EXPECT_TRUE(print->IsVarNbArgs());
    EXPECT_TRUE(print->IsOrderSensitive());
}

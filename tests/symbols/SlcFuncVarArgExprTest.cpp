// Variable tails of arguments, walked through the entry that holds one.

#include "symbols/SlcFuncVarArgExpr.h"

#include <gtest/gtest.h>

#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncDescription.h"
#include "symbols/SlcFuncTail.h"
#include "symbols/TypedArgs.h"

namespace {

/// A function `f` with one fixed float and this tail.
SlcPtr<SlcFuncVarListSymbolEntry> WithTail(const char* tail)
{
    return MakeShared<SlcFuncVarListSymbolEntry>(SignatureOf("f", T::AFloat(), {T::AFloat()}),
                                                 SlcFuncDescription::ReadVarTypes(tail));
}

struct TailCase {
    const char* tail;
    std::vector<std::string> args;  // after the fixed one; 'name' is a literal
    bool number;                    // the count is right
    bool types;                     // the types fit, with promotion
};

SlcTypeNode* TypeOf(const std::string& word)
{
    SlcDetailNode* detail = nullptr;
    SlcStorageSpecNode* storage = nullptr;
    const char* cursor = word.c_str();
    return SlcFuncDescription::ReadType(cursor, &detail, &storage);
}

void Fill(TypedArgs& args, const std::vector<std::string>& words)
{
    args.Add({T::AFloat()});
    for (const std::string& word : words) {
        if (word.front() == '\'')
            args.AddText(word.substr(1, word.size() - 2));
        else
            args.Add({TypeOf(word)});
    }
}

constexpr const char* k_pairs =
    "(float = 0.0 named (bias float = 0.1 axis vector = 0 dir output vector = 0))";

}  // namespace

TEST(SlcFuncVarArgExpr, TakesTheArgumentsThatTheTailDescribes)
{
    const TailCase cases[] = {
        {"float*", {}, true, true},
        {"float*", {"float", "float", "float"}, true, true},
        {"float*", {"float", "string"}, true, false},
        {"color*", {"float", "color"}, true, true},  // by promotion
        {"any*", {"string", "matrix", "float"}, true, true},
        {"any*", {"void"}, true, false},
        {"(float)", {"float"}, true, true},
        {"(float)", {"float", "float"}, false, false},
        {"(output vector)", {"normal"}, true, true},
        {"(output vector)", {"float"}, true, false},  // an output takes no promoted value
        {k_pairs, {"float"}, true, true},
        {k_pairs, {"'bias'", "float"}, true, true},  // the float in front may be left out
        {k_pairs, {"float", "'axis'", "vector", "'bias'", "float"}, true, true},
        {k_pairs, {"'bias'", "float", "'bias'", "float"}, true, true},
        {k_pairs, {"'axis'", "float"}, true, true},
        {k_pairs, {"'dir'", "float"}, true, false},
        {k_pairs, {"'bias'", "string"}, true, false},
        {k_pairs, {"'size'", "float"}, true, false},  // names no pair
        {k_pairs, {"string", "float"}, true, false},  // a name must be a literal
        {k_pairs, {"float", "'bias'"}, true, false},  // a name without a value
        {k_pairs, {"float", "float"}, true, false},
    };
    for (const TailCase& c : cases) {
        TypedArgs args;
        Fill(args, c.args);
        const auto entry = WithTail(c.tail);
        const std::string text = c.tail + std::string(" / ") + testing::PrintToString(c.args);
        EXPECT_EQ(entry->CheckNumberArgs(args.List()), c.number) << text;
        // A walk leaves no state for the next one.
        for (int i = 0; i < 2; ++i)
            EXPECT_EQ(entry->CheckTypeArgs(args.List(), nullptr, true), c.types) << text;
    }
}

TEST(SlcFuncVarArgExpr, GivesTheLeafOfEachArgument)
{
    TypedArgs args;
    Fill(args, {"float", "'dir'", "vector"});
    const auto entry = WithTail(k_pairs);
    ASSERT_NE(entry->VarArgBegin(), nullptr);
    const auto list = args.List();
    const auto* number = entry->VarArgFindNextMatch(list[1], false);
    ASSERT_NE(number, nullptr);
    EXPECT_TRUE(number->IsPlainValue());
    const auto* name = entry->VarArgFindNextMatch(list[2], false);
    ASSERT_NE(name, nullptr);
    EXPECT_TRUE(name->IsPairName());
    EXPECT_TRUE(name->GetDetail()->IsUniform());
    EXPECT_TRUE(name->GetStorage()->IsInput());
    const auto* value = entry->VarArgFindNextMatch(list[3], false);
    ASSERT_NE(value, nullptr);
    EXPECT_TRUE(value->GetType()->IsVectorType());
    EXPECT_TRUE(value->GetStorage()->IsOutput());
}

TEST(SlcFuncVarArgExpr, KnowsTheFixedPlacesOfItsValues)
{
    const char* row = k_pairs;
    const auto tail = SlcFuncDescription::ReadVarTypes(row);
    EXPECT_EQ(tail->GetMaxSize(false), 4);
    EXPECT_EQ(tail->GetMaxSize(true), 7);
    const auto values = SlcTailValues(tail.get());
    ASSERT_EQ(values.size(), 4u);
    EXPECT_EQ(values[1]->GetDefault(), "0.1");
    EXPECT_EQ(SlcTailValueAt(tail.get(), 3), values[3]);
    EXPECT_EQ(SlcTailValueAt(tail.get(), 4), nullptr);

    const char* repeated = "color*";
    const auto any = SlcFuncDescription::ReadVarTypes(repeated);
    EXPECT_LT(any->GetMaxSize(false), 0);
    EXPECT_NE(SlcTailValueAt(any.get(), 1000), nullptr);
}

TEST(SlcFuncVarListSymbolEntry, ExplainsWhatDoesNotFit)
{
    struct Case {
        const char* tail;
        std::vector<std::string> args;
        const char* report;
    };
    const Case cases[] = {
        {"float*", {"float", "string"}, "ERROR: Invalid type for argument 3 of 'f' function \n"},
        {k_pairs,
         {"'size'", "float"},
         "ERROR: Invalid type for argument 2 of 'f' function \n"
         ":0: ADVICE: unknown argument \"size\", known are \"bias\", \"axis\", \"dir\"\n"},
        {k_pairs,
         {"float", "float"},
         "ERROR: Invalid type for argument 3 of 'f' function \n"
         ":0: ADVICE: the name of an argument is expected: \"bias\", \"axis\", \"dir\"\n"},
        {k_pairs,
         {"'bias'", "color"},
         "ERROR: Invalid type for argument 3 of 'f' function \n"
         ":0: ADVICE: the value of \"bias\" is a float\n"},
        {k_pairs, {"'bias'"}, "ERROR: Argument missing for a name-value pair in f(...)\n"},
    };
    SetWarningLevel(2);
    for (const Case& c : cases) {
        TypedArgs args;
        Fill(args, c.args);
        const auto sink = MakeShared<SlcSemanticError>();
        const auto report =
            ReportsOf([&] { WithTail(c.tail)->ErrorsTypeArgs(args.List(), sink, "f"); });
        EXPECT_EQ(report, std::string(":0: ") + c.report);
    }

    SetWarningLevel(1);

    // Faulty fixed arguments are all named, and then nothing is said of the tail.
    TypedArgs args({{T::AString()}, {T::AString()}});
    const auto sink = MakeShared<SlcSemanticError>();
    EXPECT_EQ(ReportsOf([&] { WithTail("float*")->ErrorsTypeArgs(args.List(), sink, "f"); }),
              ":0: ERROR: Invalid type for argument 1 of 'f' function (float expected)\n");
}

TEST(SlcFuncVarListSymbolEntry, ReportsAVoidArgumentOnce)
{
    const auto table = MakeShared<SlcSymbolTable>();
    for (SlcTypeNode* type : {T::AFloat(), T::AColor()}) {
        const char* tail = "any*";
        table->AddEntry(MakeShared<SlcFuncVarListSymbolEntry>(
            SignatureOf("f", type, {type}), SlcFuncDescription::ReadVarTypes(tail)));
    }
    TypedArgs args({{T::AFloat()}, {T::AVoid()}});
    const auto sink = MakeShared<SlcSemanticError>();
    const auto report = ReportsOf([&] {
        EXPECT_EQ(table->FindOverloads({Ident("f"), args.Node()}, sink).outcome,
                  SlcOverloads::Outcome::WrongTypes);
    });
    EXPECT_EQ(report, ":0: ERROR: Void calls may not be used as parameters\n");
    EXPECT_FALSE(sink->NoError());
}

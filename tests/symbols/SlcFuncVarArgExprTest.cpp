// Tests variable tails, which declare the optional, named and repeated arguments of a function, and
// the symbol entries of functions with such a tail.

#include "symbols/SlcFuncVarArgExpr.h"

#include <gtest/gtest.h>

#include "sqx/SqxCardReader.h"
#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncDescription.h"
#include "symbols/SlcFuncTail.h"
#include "symbols/TypedArgs.h"

namespace {

/// Returns the tail that these parameters form after a fixed one.
std::unique_ptr<SlcFuncVarArgExpr> TailOf(const std::string& parameters)
{
    const std::string text = "float f(float x, " + parameters + ")";
    const SqxCard card = SqxCardReader(SqxPrimitive::CALL_PRIM_MIN_1D, text).Read();
    return SlcFuncDescription(card).tail;
}

/// Returns a function `f` with one fixed float and this tail.
SlcPtr<SlcFuncVarListSymbolEntry> WithTail(const char* tail)
{
    return MakeShared<SlcFuncVarListSymbolEntry>(SignatureOf("f", T::AFloat(), {T::AFloat()}),
                                                 TailOf(tail));
}

struct TailCase {
    const char* tail;
    std::vector<std::string> args;  // after the fixed one; 'name' is a literal
    bool number;                    // the count is right
    bool types;                     // the types and names fit, with promotion
};

SlcTypeNode* TypeOf(const std::string& word)
{
    const std::string text = word + " f()";
    const SqxCard card = SqxCardReader(SqxPrimitive::CALL_PRIM_MIN_1D, text).Read();
    return SlcFuncDescription(card).returnType;
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
    "optional float samples = 0.0, named float bias = 0.1, named vector axis = 0, "
    "named output vector dir = 0";

}  // namespace

TEST(SlcFuncVarArgExpr, AcceptsTheArgumentsThatTheTailDescribes)
{
    const TailCase cases[] = {
        {"float more ...", {}, true, true},
        {"float more ...", {"float", "float", "float"}, true, true},
        {"float more ...", {"float", "string"}, true, false},
        {"color more ...", {"float", "color"}, true, true},  // by promotion
        {"any more ...", {"string", "matrix", "float"}, true, true},
        {"any more ...", {"void"}, true, false},
        {"optional float a", {"float"}, true, true},
        {"optional float a", {"float", "float"}, false, false},
        {"optional output vector a", {"normal"}, true, true},
        {"optional output vector a", {"float"}, true, false},  // an output takes no promoted value
        {k_pairs, {"float"}, true, true},
        {k_pairs, {"'bias'", "float"}, true, true},  // the float before it may be left out
        {k_pairs, {"float", "'axis'", "vector", "'bias'", "float"}, true, true},
        {k_pairs, {"'bias'", "float", "'bias'", "float"}, true, true},
        {k_pairs, {"'axis'", "float"}, true, true},
        {k_pairs, {"'dir'", "float"}, true, false},
        {k_pairs, {"'bias'", "string"}, true, false},
        {k_pairs, {"'size'", "float"}, true, false},  // is no name of a pair
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
        // The second walk over the tail must not depend on the first one.
        for (int i = 0; i < 2; ++i)
            EXPECT_EQ(entry->CheckTypeArgs(args.List(), nullptr, true), c.types) << text;
    }
}

TEST(SlcFuncVarArgExpr, FindsTheLeafOfEachArgument)
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

TEST(SlcFuncVarArgExpr, AssignsFixedPlacesToItsValues)
{
    const auto tail = TailOf(k_pairs);
    EXPECT_EQ(tail->GetMaxSize(false), 4);
    EXPECT_EQ(tail->GetMaxSize(true), 7);
    const auto values = SlcTailValues(tail.get());
    ASSERT_EQ(values.size(), 4u);
    EXPECT_EQ(values[1]->GetDefault(), "0.1");
    EXPECT_EQ(SlcTailValueAt(tail.get(), 3), values[3]);
    EXPECT_EQ(SlcTailValueAt(tail.get(), 4), nullptr);

    const auto any = TailOf("color more ...");
    EXPECT_LT(any->GetMaxSize(false), 0);
    EXPECT_NE(SlcTailValueAt(any.get(), 1000), nullptr);
}

TEST(SlcFuncVarListSymbolEntry, ExplainsArgumentsThatDoNotFit)
{
    struct Case {
        const char* tail;
        std::vector<std::string> args;
        const char* report;
    };
    const Case cases[] = {
        {"float more ...",
         {"float", "string"},
         "ERROR: Invalid type for argument 3 of 'f' function \n"},
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

    // If fixed arguments are faulty, only these are reported, and not the tail.
    TypedArgs args({{T::AString()}, {T::AString()}});
    const auto sink = MakeShared<SlcSemanticError>();
    EXPECT_EQ(
        ReportsOf([&] { WithTail("float more ...")->ErrorsTypeArgs(args.List(), sink, "f"); }),
        ":0: ERROR: Invalid type for argument 1 of 'f' function (float expected)\n");
}

TEST(SlcFuncVarListSymbolEntry, ReportsAVoidArgumentOnce)
{
    const auto table = MakeShared<SlcSymbolTable>();
    for (SlcTypeNode* type : {T::AFloat(), T::AColor()}) {
        table->AddEntry(MakeShared<SlcFuncVarListSymbolEntry>(SignatureOf("f", type, {type}),
                                                              TailOf("any more ...")));
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

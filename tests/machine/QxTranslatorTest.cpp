// Checks the steps into which the translator turns instructions, and that it runs passes over the
// whole block. The passes have separate tests, and tests/host/AgreementTest.cpp checks that the
// computed values stay the same.

#include "machine/translate/QxTranslator.h"

#include <gtest/gtest.h>

#include "machine/FileParts.h"
#include "sqx/SqxReader.h"

namespace {

struct Case {
    const char* code;
    const char* steps;
};

std::string StepText(const QxCode& code)
{
    const std::string target = std::to_string(code.target);
    switch (code.step) {
    case QxCodeStep::Kernel:
        return code.masked == code.all ? "all" : "masked";
    case QxCodeStep::Once:
        return "once";
    case QxCodeStep::Grid:
        return "grid";
    case QxCodeStep::GridIf:
        return "grid-if";
    case QxCodeStep::BeginParallel:
        return (code.pointwise ? "{each>" : "{>") + target;
    case QxCodeStep::EndParallel:
        return "}";
    case QxCodeStep::IfTrue:
        return (code.copyFlag ? "if-copy>" : "if>") + target;
    case QxCodeStep::IfFalse:
        return (code.copyFlag ? "if-not-copy>" : "if-not>") + target;
    case QxCodeStep::EndIf:
        return "end";
    case QxCodeStep::Where:
        return "where>" + target;
    case QxCodeStep::Goto:
        return "goto>" + target;
    case QxCodeStep::GotoIfTrue:
        return "if-goto>" + target;
    case QxCodeStep::GotoIfFalse:
        return "if-not-goto>" + target;
    case QxCodeStep::BeginLights:
        return "lights>" + target;
    case QxCodeStep::EndLights:
        return "again>" + target;
    case QxCodeStep::Stop:
        return ".";
    }
    return "?";
}

/// Returns the steps of `code`. The file has one more varying flag, number 18, than that of
/// FileParts.h, so `code` must name constants by their numbers: 19 is 1.0, 21 the integer 0, 22 a
/// true flag and 23 a false one. Shadeop 0 belongs to a library that does not exist.
std::string Steps(const std::string& code)
{
    FileParts parts;
    parts.varyings = "7\n1 1 0\n10 1 0\n3 1 0\n4 1 0\n1 3 0\n1 1 1\n10 1 0\n";
    parts.constants = "5\n1 1.0\n4 \"a\"\n5 0\n10 1\n10 0\n";
    parts.shadeops = "1\n\"lib.so\"\n1\n0 \"\" \"f\" \"\"\n";
    parts.total = "24";
    parts.code = code;
    SqxReader reader;
    EXPECT_TRUE(reader.Read(parts.Text())) << reader.Message();
    QxMachineCode machine;
    QxTranslator(reader.Shader(), QxKernelTable::For(false), machine).Run();
    std::string text;
    for (const QxCode& step : machine.main.codes)
        text += (text.empty() ? "" : " ") + StepText(step);
    return text;
}

template <std::size_t N>
void ExpectSteps(const Case (&cases)[N])
{
    for (const Case& c : cases)
        EXPECT_EQ(Steps(c.code), c.steps) << c.code;
}

}  // namespace

TEST(QxTranslator, TurnsBracketsThatSetFlagsIntoOperations)
{
    static const Case cases[] = {
        {"BEGIN_PARALLEL IF_FALSE vb ASSIGN_BOOL_BOOL 18 23 END_IF IF_TRUE 18 "
         "ASSIGN_COLOR_FLOAT Ci s END_IF END_PARALLEL",
         "{>5 masked where>4 masked } ."},
        // Nothing reads the new value of vb.
        {"BEGIN_PARALLEL IF_TRUE vb ASSIGN_BOOL_BOOL 18 23 ASSIGN_BOOL_BOOL vb 23 END_IF IF_TRUE "
         "18 ASSIGN_COLOR_FLOAT Ci s END_IF END_PARALLEL",
         "{>5 masked where>4 masked } ."},
        // An assignment of another flag is made point by point. Here it changes the flag of its
        // guard, so the guard tests a copy.
        {"BEGIN_PARALLEL IF_TRUE vb ASSIGN_BOOL_BOOL vb 18 ASSIGN_COLOR_FLOAT Ci s END_IF "
         "END_PARALLEL",
         "{>6 if-copy>5 all masked end } ."},
    };
    ExpectSteps(cases);
}

TEST(QxTranslator, ChoosesHowInstructionsRun)
{
    static const Case cases[] = {
        {"IF_TRUE ub ASSIGN_FLOAT_FLOAT uf 19 END_IF", "if-not-goto>2 once ."},
        {"IF_FALSE ub BEGIN_PARALLEL ASSIGN_COLOR_FLOAT Ci s END_PARALLEL END_IF",
         "if-goto>4 {>4 masked } ."},
        // Points run one after the other if all of them write one variable, or if there is more
        // than one call of a shadeop.
        {"BEGIN_PARALLEL ASSIGN_FLOAT_FLOAT uf s END_PARALLEL", "{each>3 masked } ."},
        {"BEGIN_PARALLEL ASSIGN_FLOAT_FLOAT vf s CALL_DSO 0 1 vf s CALL_DSO 0 1 vc s END_PARALLEL",
         "{each>5 masked all all } ."},
        {"BEGIN_PARALLEL ASSIGN_FLOAT_FLOAT vf s CALL_DSO 0 1 vf s END_PARALLEL",
         "{>4 masked all } ."},
        {"BEGIN_ILLUMINANCE 7 ASSIGN_FLOAT_FLOAT uf 19 END_ILLUMINANCE 2",
         "lights>3 once again>1 ."},
    };
    ExpectSteps(cases);
}

TEST(QxTranslator, RunsPassesOverTheWholeBlock)
{
    static const Case cases[] = {
        // The passes have removed a jump, the end of a run, a product, and brackets with their
        // mask.
        {"IF_FALSE_GOTO ub 9 IF_TRUE ub ASSIGN_FLOAT_FLOAT uf Kd END_IF "
         "BEGIN_PARALLEL MULT_FLOAT_FLOAT vf s Kd ADD_FLOAT_FLOAT s vf s END_PARALLEL "
         "BEGIN_PARALLEL IF_TRUE vb ASSIGN_FLOAT_FLOAT vf s END_IF END_PARALLEL",
         "if-not-goto>2 once {>6 masked all } ."},
    };
    ExpectSteps(cases);
}

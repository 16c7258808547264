// What becomes of brackets and masks when byte-code is made ready to run: where a mask may be left
// out, and where other points still need what they had.

#include "machine/translate/QxSimplifyMasks.h"

#include <gtest/gtest.h>

#include "machine/FileParts.h"
#include "machine/run/QxMachineProgram.h"

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

/// With one varying flag more, number 18, so that #1 is 19, #0 21 and #t 22; 23 is a false flag.
std::string Steps(const std::string& code)
{
    FileParts parts;
    parts.varyings = "7\n1 1 0\n10 1 0\n3 1 0\n4 1 0\n1 3 0\n1 1 1\n10 1 0\n";
    parts.constants = "5\n1 1.0\n4 \"a\"\n5 0\n10 1\n10 0\n";
    parts.total = "24";
    parts.code = code;
    const QxMachineProgram program(parts.Text(), "test");
    std::string text;
    for (const QxCode& step : program.Code().main.codes)
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

TEST(QxSimplifyMasks, LeavesMasksOutWhereNobodySeesIt)
{
    static const Case cases[] = {
        // Nobody reads vf behind the brackets; Ci is the grid's.
        {"BEGIN_PARALLEL IF_TRUE vb ASSIGN_FLOAT_FLOAT vf s ASSIGN_COLOR_FLOAT Ci vf END_IF "
         "END_PARALLEL",
         "{>6 if>5 all masked end } ."},
        // Points outside of the brackets had another value, which is read behind them,
        {"BEGIN_PARALLEL IF_TRUE vb ASSIGN_FLOAT_FLOAT vf s ASSIGN_COLOR_FLOAT Ci vf END_IF "
         "ASSIGN_COLOR_FLOAT Ci vf END_PARALLEL",
         "{>7 if>5 masked masked end masked } ."},
        // in the next round of a loop,
        {"BEGIN_PARALLEL ASSIGN_COLOR_FLOAT Ci vf END_PARALLEL BEGIN_PARALLEL IF_TRUE vb "
         "ASSIGN_FLOAT_FLOAT vf s ASSIGN_COLOR_FLOAT Ci vf END_IF END_PARALLEL IF_TRUE_GOTO ub 0",
         "{>8 masked if>6 masked masked end if-goto>1 } ."},
        // or behind the brackets around.
        {"BEGIN_PARALLEL IF_TRUE vb IF_FALSE 18 ASSIGN_FLOAT_FLOAT vf s ASSIGN_COLOR_FLOAT Ci vf "
         "END_IF END_IF ASSIGN_COLOR_FLOAT Ci vf END_PARALLEL",
         "{>9 if>7 if-not>6 masked masked end end masked } ."},
        {"BEGIN_PARALLEL IF_TRUE vb IF_FALSE 18 ASSIGN_FLOAT_FLOAT vf s ASSIGN_COLOR_FLOAT Ci vf "
         "END_IF END_IF END_PARALLEL",
         "{>8 if>7 if-not>6 all masked end end } ."},
        // The second half of an `if` with `else` needs what the first has left to other points.
        {"BEGIN_PARALLEL IF_TRUE vb ASSIGN_FLOAT_FLOAT vf s END_IF IF_FALSE vb "
         "ASSIGN_FLOAT_FLOAT vf 19 END_IF ASSIGN_COLOR_FLOAT Ci vf END_PARALLEL",
         "{>9 if>4 masked end if-not>7 masked end masked } ."},
    };
    ExpectSteps(cases);
}

TEST(QxSimplifyMasks, DropsBracketsThatDoNothing)
{
    static const Case cases[] = {
        {"BEGIN_PARALLEL IF_TRUE vb ASSIGN_FLOAT_FLOAT vf s ASSIGN_POINT_POINT P P END_IF "
         "END_PARALLEL",
         "{>6 if>5 all masked end } ."},
        {"BEGIN_PARALLEL IF_TRUE vb ASSIGN_FLOAT_FLOAT vf s END_IF END_PARALLEL IF_TRUE_GOTO ub 11",
         "{>3 all } if-goto>4 ."},
    };
    ExpectSteps(cases);
}

TEST(QxSimplifyMasks, MakesOperationsOfBracketsThatSetFlags)
{
    static const Case cases[] = {
        {"BEGIN_PARALLEL IF_FALSE vb ASSIGN_BOOL_BOOL 18 23 END_IF END_PARALLEL", "{>3 masked } ."},
        {"BEGIN_PARALLEL IF_TRUE vb ASSIGN_BOOL_BOOL 18 23 ASSIGN_BOOL_BOOL vb 23 END_IF "
         "END_PARALLEL",
         "{>4 masked masked } ."},
        // A flag that is no constant is copied point by point, and under a copy of the guard if it
        // is the guard's own.
        {"BEGIN_PARALLEL IF_TRUE vb ASSIGN_BOOL_BOOL vb 18 ASSIGN_COLOR_FLOAT Ci s END_IF "
         "END_PARALLEL",
         "{>6 if-copy>5 all masked end } ."},
    };
    ExpectSteps(cases);
}

TEST(QxSimplifyMasks, JumpsOverUniformCode)
{
    static const Case cases[] = {
        {"IF_TRUE ub ASSIGN_FLOAT_FLOAT uf 19 END_IF", "if-not-goto>2 once ."},
        {"IF_FALSE ub BEGIN_PARALLEL ASSIGN_COLOR_FLOAT Ci s END_PARALLEL END_IF",
         "if-goto>4 {>4 masked } ."},
        // One point after the other where all of them write one variable.
        {"BEGIN_PARALLEL ASSIGN_FLOAT_FLOAT uf s END_PARALLEL", "{each>3 masked } ."},
        {"BEGIN_ILLUMINANCE 7 ASSIGN_FLOAT_FLOAT uf 19 END_ILLUMINANCE 2",
         "lights>3 once again>1 ."},
    };
    ExpectSteps(cases);
}

// What the machine makes of code before it runs it. That the values stay the same is shown by the
// comparison with shared objects.

#include "machine/translate/QxTranslator.h"

#include <gtest/gtest.h>

#include "machine/FileParts.h"
#include "machine/run/QxMachineProgram.h"

namespace {

/// One letter for each step of the main block.
std::string StepsOf(const std::string& code)
{
    FileParts parts;
    parts.code = code;
    const QxMachineProgram program(parts.Text(), "test");
    std::string steps;
    for (const QxCode& step : program.Code().main.codes)
        //        Kernel, Once, Grid, GridIf, parallel brackets, conditions, jumps, lights, Stop
        steps += "kogw{}??;jjjll."[static_cast<std::size_t>(step.step)];
    return steps;
}

struct StepCase {
    const char* code;
    const char* steps;
};

void ExpectSteps(const std::vector<StepCase>& cases)
{
    for (const StepCase& c : cases)
        EXPECT_EQ(StepsOf(c.code), c.steps) << c.code;
}

}  // namespace

TEST(QxTranslator, JoinsWhatWorksPointByPoint)
{
    ExpectSteps({
        {"BEGIN_PARALLEL ADD_FLOAT_FLOAT vf s s END_PARALLEL "
         "BEGIN_PARALLEL ADD_FLOAT_FLOAT vf s vf END_PARALLEL",
         "{kk}."},
        {"CALL_PRIM_NORMALIZE_SIMD P P CALL_PRIM_LENGTH_SIMD vf P", "{kk}."},
        // Neighbours must be through.
        {"BEGIN_PARALLEL ADD_FLOAT_FLOAT vf s s END_PARALLEL CALL_PRIM_AREA_SIMD vf P "
         "BEGIN_PARALLEL ADD_FLOAT_FLOAT vf s vf END_PARALLEL",
         "{k}g{k}."},
    });
}

TEST(QxTranslator, RunsUniformInstructionsBeforeAStretchWhereNobodyNotices)
{
    const std::string before = "BEGIN_PARALLEL ADD_FLOAT_FLOAT vf s ";
    const std::string behind = "END_PARALLEL BEGIN_PARALLEL ADD_FLOAT_FLOAT vf uf vf END_PARALLEL";
    EXPECT_EQ(StepsOf(before + "s END_PARALLEL ADD_FLOAT_FLOAT uf Kd #1 " + behind.substr(13)),
              "o{kk}.");
    // The first brackets read what the uniform instruction would change.
    EXPECT_EQ(StepsOf(before + "uf END_PARALLEL ADD_FLOAT_FLOAT uf Kd #1 " + behind.substr(13)),
              "{k}o{k}.");
}

TEST(QxTranslator, DropsJumpsThatOneBeforeHasDecided)
{
    const std::string twice =
        "IF_TRUE ub ASSIGN_FLOAT_FLOAT uf Kd END_IF IF_TRUE ub ADD_FLOAT_FLOAT uf uf Kd END_IF";
    ExpectSteps({
        {("IF_FALSE_GOTO ub 16 " + twice).c_str(), "joo."},
        {"IF_TRUE_GOTO ub 9 IF_FALSE ub ASSIGN_FLOAT_FLOAT uf Kd END_IF", "jo."},
        // The other way, and where nothing has decided.
        {("IF_TRUE_GOTO ub 16 " + twice).c_str(), "jjojo."},
        {twice.c_str(), "jojo."},
        // The flag is another one meanwhile,
        {"IF_FALSE_GOTO ub 12 ASSIGN_BOOL_BOOL ub #t IF_TRUE ub ASSIGN_FLOAT_FLOAT uf Kd END_IF",
         "jojo."},
        // or another way leads between the two.
        {"GOTO 5 IF_FALSE_GOTO ub 11 IF_TRUE ub ASSIGN_FLOAT_FLOAT uf Kd END_IF", "jjjo."},
    });
}

TEST(QxTranslator, RunsLoopsStripByStripIfOnlyTheirEndHangsOnOtherPoints)
{
    const std::string loop = "BEGIN_PARALLEL BOOL_LESS_THEN_FLOAT_FLOAT vb vf #1 "
                             "IF_TRUE vb ADD_FLOAT_FLOAT vf vf s END_IF END_PARALLEL ";
    EXPECT_EQ(StepsOf(loop + "SET_UNIFORM_BOOL_FLAG ub vb IF_TRUE_GOTO ub 0"), "{k?k;kj}.");
    // Somebody else reads the flag.
    EXPECT_EQ(StepsOf(loop + "SET_UNIFORM_BOOL_FLAG ub vb IF_TRUE_GOTO ub 0 "
                             "BEGIN_PARALLEL ASSIGN_BOOL_BOOL vb ub END_PARALLEL"),
              "{k?k;}gj{k}.");
    // How often it counts hangs on all points.
    EXPECT_EQ(StepsOf(loop + "ADD_FLOAT_FLOAT uf uf #1 "
                             "SET_UNIFORM_BOOL_FLAG ub vb IF_TRUE_GOTO ub 0"),
              "{k?k;}ogj.");
}

TEST(QxTranslator, FusesWhatOnlyServesTheNextInstruction)
{
    ExpectSteps({
        {"BEGIN_PARALLEL MULT_FLOAT_FLOAT vf s Kd ADD_COLOR_FLOAT Ci w vf END_PARALLEL", "{kk}."},
        {"BEGIN_PARALLEL MULT_FLOAT_FLOAT vf s Kd ADD_FLOAT_FLOAT vf vf s "
         "ASSIGN_COLOR_FLOAT Ci vf END_PARALLEL",
         "{kk}."},
        {"BEGIN_PARALLEL MULT_FLOAT_FLOAT vf s Kd ADD_FLOAT_FLOAT s vf s "
         "ASSIGN_COLOR_FLOAT Ci vf END_PARALLEL",
         "{kkk}."},
        {"BEGIN_PARALLEL ADD_COLOR_COLOR vc w w ASSIGN_COLOR_COLOR Ci vc END_PARALLEL", "{k}."},
        {"BEGIN_PARALLEL ADD_COLOR_COLOR vc w w ASSIGN_COLOR_COLOR Ci vc "
         "ASSIGN_COLOR_COLOR w vc END_PARALLEL",
         "{kkk}."},
    });
}

// Checks that the comparisons of outcomes, on which many tests rely, find each kind of difference.

#include <gtest/gtest.h>

#include "shaders/SharedRun.h"

TEST(OutcomeDifference, IsFoundInEachPart)
{
    const RunOutcome outcome = {"", {{"Ci", {1, 2, 3}}, {"Oi", {4, 5, 6}}}, "said"};
    struct Case {
        RunOutcome other;
        const char* difference;
    };
    const Case cases[] = {
        {outcome, ""},
        {{"bad", outcome.outputs, "said"}, "fault"},
        {{"", outcome.outputs, "told"}, "text"},
        {{"", {outcome.outputs[0]}, "said"}, "outputs"},
        {{"", {}, "said"}, "outputs"},
        {{"", {outcome.outputs[0], {"Ol", {4, 5, 6}}}, "said"}, "Ol"},
        {{"", {outcome.outputs[0], {"Oi", {4, 5}}}, "said"}, "2 numbers"},
        {{"", {outcome.outputs[0], {"Oi", {4, 5, 7}}}, "said"}, "7.0"},
    };
    for (const Case& c : cases)
        for (const auto compare : {Difference, BitDifference}) {
            const std::string difference = compare(outcome, c.other);
            EXPECT_NE(difference.find(c.difference), std::string::npos) << difference;
            EXPECT_EQ(difference.empty(), *c.difference == '\0') << difference;
            EXPECT_EQ(compare(c.other, outcome).empty(), difference.empty()) << difference;
        }
    RunOutcome near = outcome;
    near.outputs[0].numbers[0] += 1e-6F;
    EXPECT_EQ(Difference(outcome, near), "");
    EXPECT_NE(BitDifference(outcome, near), "");
}

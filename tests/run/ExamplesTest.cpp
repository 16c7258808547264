// The examples compile without a report, and compute the same values at every optimization level.

#include <gtest/gtest.h>

#include "run/ExampleFiles.h"
#include "shaders/RunShader.h"

TEST(Examples, ComputeTheSameAtEveryLevel)
{
    const ExampleFiles examples;
    for (const Example& example : examples.All()) {
        if (!example.HasByteCode())
            continue;
        SqxMachine machine;
        const RunOutcome plain = RunShader(machine, examples.ByteCode(example, 0));
        EXPECT_EQ(plain.fault, "") << example.name;
        for (int level = 1; level <= 3; ++level)
            EXPECT_EQ(Difference(plain, RunShader(machine, examples.ByteCode(example, level))), "")
                << example.name << " at -O" << level;
    }
}

TEST(Examples, CompileToCppWithoutReports)
{
    const ExampleFiles examples;
    for (const Example& example : examples.All())
        for (int level = 0; level <= 3; ++level)
            EXPECT_EQ(examples.Messages(example, "--dso -c -w2 -O" + std::to_string(level)), "")
                << example.name << " at -O" << level;
}

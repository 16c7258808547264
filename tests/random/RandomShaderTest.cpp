// Checks that random shaders compute the same values at every optimization level, in the machine of
// the tests and in that of the product.
//
// SLC_RANDOM_SEED and SLC_RANDOM_COUNT select other shaders and their number.

#include <gtest/gtest.h>

#include <optional>

#include "random/RandomRun.h"
#include "random/ShrinkStatements.h"
#include "shaders/RandomShader.h"

namespace {

/// Returns where the values of a level or machine differ from those of level 0 in the machine of
/// the tests, or the fault with which the latter ends; empty if there is neither. Returns no text
/// if the shader is too large for byte-code at level 0.
std::optional<std::string> Disagreement(const RandomProgram& program)
{
    const std::string source = program.Text();
    const std::string plainCode = ByteCodeOf(source, 0);
    if (plainCode.empty())
        return std::nullopt;
    const RunOutcome plain = RunByteCode(plainCode);
    if (!plain.fault.empty())
        return "-O0 ends with '" + plain.fault + "'";
    const RunOutcome point = RunAtOnePoint(plainCode, plain);
    for (int level = 0; level <= 3; ++level) {
        const std::string code = level == 0 ? plainCode : ByteCodeOf(source, level);
        const RunOutcome outcome = level == 0 ? plain : RunByteCode(code);
        std::string difference = Difference(plain, outcome);
        if (difference.empty())
            difference = MachineDifference(code, outcome);
        if (difference.empty())
            difference = Difference(point, RunAtOnePoint(code, outcome));
        if (!difference.empty())
            return "-O0 and -O" + std::to_string(level) + ": " + difference;
    }
    return "";
}

/// Makes a program smaller as long as levels or machines still disagree.
class Shrinker {
public:
    explicit Shrinker(RandomProgram program)
        : m_program(std::move(program)),
          m_endless(IsEndless(Disagreement(m_program).value_or("")))
    {
    }

    RandomProgram Shrink()
    {
        const auto stillFails = [this] { return StillFails(); };
        for (bool smaller = true; smaller;) {
            smaller = ShrinkStatements(m_program.body, stillFails);
            for (auto& function : m_program.functions)
                smaller |= ShrinkStatements(function.body, stillFails);
        }
        return m_program;
    }

private:
    bool StillFails()
    {
        if (!IsAccepted(m_program.Text()))
            return false;
        const std::string disagreement = Disagreement(m_program).value_or("");
        return !disagreement.empty() && IsEndless(disagreement) == m_endless;
    }

    static bool IsEndless(const std::string& disagreement)
    {
        return disagreement.find("does not end") != std::string::npos;
    }

    RandomProgram m_program;
    bool m_endless;  // a loop that has lost its counter is no fault
};

}  // namespace

TEST(RandomShaders, ComputeTheSameAtEveryLevel)
{
    const unsigned int first = Setting("SLC_RANDOM_SEED", 1);
    const unsigned int count = Setting("SLC_RANDOM_COUNT", 500);
    unsigned int skipped = 0;
    for (unsigned int seed = first; seed < first + count; ++seed) {
        const RandomProgram program = RandomShader(seed).Make();
        const std::string source = program.Text();
        ASSERT_TRUE(IsAccepted(source)) << "seed " << seed << "\n" << source;
        const auto disagreement = Disagreement(program);
        skipped += disagreement ? 0 : 1;
        if (disagreement.value_or("").empty())
            continue;
        const std::string small = Shrinker(program).Shrink().Text();
        ADD_FAILURE() << "seed " << seed << ", " << *disagreement << "\n" << small;
    }
    EXPECT_LE(skipped, 2 + count / 50) << "shaders are too large for byte-code";
}

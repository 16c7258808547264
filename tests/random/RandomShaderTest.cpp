// Random shaders compute the same at every optimization level.
//
// SLC_RANDOM_SEED and SLC_RANDOM_COUNT choose other shaders, and as many as one wants.

#include <gtest/gtest.h>

#include <cstdlib>

#include "helpers/CheckedShader.h"
#include "random/RandomShader.h"
#include "run/RunShader.h"

namespace {

unsigned int Setting(const char* name, unsigned int otherwise)
{
    const char* text = std::getenv(name);
    return text ? static_cast<unsigned int>(std::strtoul(text, nullptr, 10)) : otherwise;
}

bool IsAccepted(const std::string& source)
{
    SlcOptionsControl options;
    return CheckedShader(source, options).IsAccepted();
}

RunOutcome RunByteCode(const std::string& byteCode)
{
    SqxMachine machine;
    machine.SetStepLimit(2000000);
    return RunShader(machine, byteCode);
}

/// Where a level computes otherwise than the plain one; empty if none does.
std::string Disagreement(const RandomProgram& program)
{
    const std::string source = program.Text();
    const std::string plainCode = ByteCodeOf(source, 0);
    if (plainCode.empty())
        return {};  // too large for byte-code
    const RunOutcome plain = RunByteCode(plainCode);
    if (!plain.fault.empty())
        return "-O0 ends with '" + plain.fault + "'";
    for (int level = 1; level <= 3; ++level) {
        const std::string difference = Difference(plain, RunByteCode(ByteCodeOf(source, level)));
        if (!difference.empty())
            return "-O0 and -O" + std::to_string(level) + ": " + difference;
    }
    return {};
}

/// Takes statements away as long as the levels still disagree.
class Shrinker {
public:
    explicit Shrinker(RandomProgram program)
        : m_program(std::move(program)),
          m_endless(IsEndless(Disagreement(m_program)))
    {
    }

    RandomProgram Shrink()
    {
        for (bool smaller = true; smaller;) {
            smaller = ShrinkList(m_program.body);
            for (auto& function : m_program.functions)
                smaller |= ShrinkList(function.body);
        }
        return m_program;
    }

private:
    bool StillFails()
    {
        if (!IsAccepted(m_program.Text()))
            return false;
        const std::string disagreement = Disagreement(m_program);
        return !disagreement.empty() && IsEndless(disagreement) == m_endless;
    }

    static bool IsEndless(const std::string& disagreement)
    {
        return disagreement.find("does not end") != std::string::npos;
    }

    bool ShrinkList(std::vector<RandomStatement>& list)
    {
        bool smaller = false;
        for (std::size_t i = 0; i < list.size();) {
            if (Replace(list, i, {}) ||
                (list[i].hasBody && Replace(list, i, std::vector(list[i].body)))) {
                smaller = true;
                continue;
            }
            smaller |= ShrinkList(list[i].body);
            smaller |= ShrinkList(list[i].otherwise);
            ++i;
        }
        return smaller;
    }

    /// Puts other statements in the place of one; undone if the fault goes with it.
    bool Replace(std::vector<RandomStatement>& list, std::size_t place,
                 const std::vector<RandomStatement>& others)
    {
        const std::vector<RandomStatement> before = list;
        list.erase(list.begin() + static_cast<std::ptrdiff_t>(place));
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(place), others.begin(),
                    others.end());
        if (StillFails())
            return true;
        list = before;
        return false;
    }

    RandomProgram m_program;
    bool m_endless;  // a loop that has lost its counter is no find
};

}  // namespace

TEST(RandomShaders, ComputeTheSameAtEveryLevel)
{
    const unsigned int first = Setting("SLC_RANDOM_SEED", 1);
    const unsigned int count = Setting("SLC_RANDOM_COUNT", 500);
    for (unsigned int seed = first; seed < first + count; ++seed) {
        const RandomProgram program = RandomShader(seed).Make();
        const std::string source = program.Text();
        ASSERT_TRUE(IsAccepted(source)) << "seed " << seed << "\n" << source;
        const std::string disagreement = Disagreement(program);
        if (disagreement.empty())
            continue;
        const std::string small = Shrinker(program).Shrink().Text();
        ADD_FAILURE() << "seed " << seed << ", " << disagreement << "\n" << small;
    }
}

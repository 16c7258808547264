// The optimizer keeps graph, liveness and facts about the code from round to round. Checks that the
// result is the same as if each round rebuilt all of them.
//
// SLC_RANDOM_SEED and SLC_RANDOM_COUNT select other shaders and their number.

#include <gtest/gtest.h>

#include "backends/SlcGenCCode.h"
#include "compiler/SlcOptimizationLevel.h"
#include "helpers/CheckedShader.h"
#include "icode/SlcInterForm.h"
#include "random/RandomRun.h"
#include "shaders/RandomShader.h"
#include "shaders/ReferenceShader.h"
#include "support/SlcCompilation.h"
#include "support/reports/SlcSemanticError.h"

namespace {

enum class Rounds { Kept, Rebuilt };

/// Returns the C++, which also shows the detail and the storage of each variable; empty for a
/// source that is refused.
std::string CodeOf(const std::string& source, int level, Rounds rounds)
{
    SlcCompilation compilation;  // a separate one, since it numbers temporaries
    const SlcCompilation::Entered entered(compilation);
    SlcOptionsControl options;
    SetOptimizationLevel(level, options);
    options.m_validateICode = false;
    options.m_generateDSO = true;
    options.m_rebuildEachRound = rounds == Rounds::Rebuilt;
    const CheckedShader checked(source, options);
    if (!checked.IsAccepted())
        return {};
    SlcInterForm form(options);
    form.GenInterForm(checked.Root());
    form.Optimize();
    SlcText text;
    SlcGenCCode(form.m_errors, &options, text).GenCCode(form);
    return text.Str();
}

/// Compares the code of both kinds of rounds. True if the source is accepted.
bool Compare(const std::string& source, unsigned int seed)
{
    bool isAccepted = false;
    for (const int level : {2, 3}) {
        const std::string code = CodeOf(source, level, Rounds::Kept);
        EXPECT_EQ(code, CodeOf(source, level, Rounds::Rebuilt))
            << "seed " << seed << ", -O" << level << "\n"
            << source;
        isAccepted = !code.empty();
    }
    return isAccepted;
}

TEST(OptimizerRounds, HaveTheResultOfRebuiltRounds)
{
    const unsigned int first = Setting("SLC_RANDOM_SEED", 1);
    const unsigned int count = Setting("SLC_RANDOM_COUNT", 100);
    unsigned int accepted = 0;
    for (unsigned int seed = first; seed < first + count; ++seed) {
        accepted += Compare(RandomShader(seed).Make().Text(), seed) ? 1 : 0;
        accepted += Compare(ReferenceShader(seed).Make().Text(), seed) ? 1 : 0;
    }
    EXPECT_GT(accepted, count);
}

}  // namespace

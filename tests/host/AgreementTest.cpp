// Checks that shared objects and byte-code compute the same values at every optimization level.
//
// These environment variables change what is compared. SLC_AGREE_COMPILER is the C++ compiler,
// by default that of the build, and SLC_AGREE_CXX its options, by default -O0. SLC_AGREE_RANDOM is
// the number of random shaders of each of the two generators, and SLC_AGREE_SEED is the first seed.
// With SLC_AGREE_SPREAD=1, for large numbers of shaders, each shader is compared at one level only,
// and the next shader at the next level. SLC_AGREE_TESTS is a filter for the tests of test_run
// whose shaders are compared.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

#include "backends/SlcGenCCode.h"
#include "compiler/SlcOptimizationLevel.h"
#include "helpers/CheckedShader.h"
#include "helpers/ShaderFolder.h"
#include "host/SharedObjects.h"
#include "shaders/RandomShader.h"
#include "shaders/ReferenceShader.h"
#include "shaders/SharedRun.h"
#include "support/reports/SlcSemanticError.h"

namespace {

using std::filesystem::path;

struct Source {
    std::string name;
    std::string text;
};

std::string Setting(const char* name, const char* otherwise)
{
    const char* text = std::getenv(name);
    return text ? text : otherwise;
}

unsigned long Number(const char* name, const char* otherwise)
{
    return std::stoul(Setting(name, otherwise));
}

std::string OutputOf(const std::string& command)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string text;
    char buffer[4096];
    while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, pipe.get()))
        text.append(buffer, count);
    return text;
}

/// False for sources that cannot be compared: byte-code has no instructions for `pack` and
/// `unpack`, and only byte-code computes default values that need shading data in lights and
/// imagers.
bool IsComparable(const Source& source)
{
    for (const char* text : {"pack(", "float late = alpha", "float a = noise(xcomp(Ps))"})
        if (source.text.find(text) != std::string::npos)
            return false;
    return true;
}

/// Returns the shaders of a folder that can be compared, preprocessed and sorted by name.
std::vector<Source> ShadersOf(const path& folder)
{
    std::vector<Source> sources;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".sl")
            sources.push_back(
                {entry.path().filename(),
                 OutputOf("cc -E -w -undef -nostdinc -x c '" + entry.path().string() + "'")});
    std::erase_if(sources, [](const Source& source) { return !IsComparable(source); });
    std::sort(sources.begin(), sources.end(),
              [](const Source& a, const Source& b) { return a.name < b.name; });
    return sources;
}

/// Returns the generated C++ of a source at an optimization level.
std::string CFileOf(const std::string& source, int level)
{
    SlcOptionsControl options;
    options.m_validateICode = true;
    SetOptimizationLevel(level, options);
    const CheckedShader checked(source, options);
    SlcText text;
    SlcInterForm form(options);
    form.GenInterForm(checked.Root());
    form.Optimize();
    SlcGenCCode(form.m_errors, &options, text).GenCCode(form);
    EXPECT_TRUE(form.m_errors->NoError()) << source;
    return text.Str();
}

class Agreement : public ::testing::Test {
protected:
    void ExpectAgreement(const std::vector<Source>& sources)
    {
        ASSERT_FALSE(sources.empty());
        const bool isSpread = Number("SLC_AGREE_SPREAD", "0") != 0;
        for (std::size_t i = 0; i < sources.size(); ++i)
            for (int level = 0; level <= 3; ++level)
                if (!isSpread || static_cast<int>(i % 4) == level)
                    Add(sources[i], level);
        // Some shaders may be too large for byte-code: a tenth of the comparisons and four more.
        EXPECT_GE(m_pairs.size() + 4, (isSpread ? 1 : 4) * sources.size() * 9 / 10);
        ASSERT_EQ(m_objects.Build(), "");
        for (const Pair& pair : m_pairs) {
            EXPECT_EQ(Difference(pair.byteCode, RunShared(pair.path, pair.byteCode)), "")
                << pair.source << " at -O" << pair.level;
            ExpectSameBits(pair);
        }
    }

    ShaderFolder m_folder;

private:
    struct Pair {
        std::string source;
        int level;
        std::string text;  // of the byte-code
        RunOutcome byteCode;
        std::string path;  // of the shared object
    };

    /// Compares the shared object bit by bit with the machine, with both kernel sets, on grids of
    /// one point, and of fewer and more points than a short strip (256) and a long one (1024) have.
    static void ExpectSameBits(const Pair& pair)
    {
        for (const QxGrid& grid : {QxGrid{1, 1}, QxGrid{1, 300}, k_smallGrid, QxGrid{37, 29}}) {
            const RunOutcome shared = RunShared(pair.path, pair.byteCode, grid);
            for (const QxKernelChoice kernels : {QxKernelChoice::Baseline, QxKernelChoice::Best})
                EXPECT_EQ(
                    BitDifference(shared, RunMachine(pair.text, kernels, pair.byteCode, grid)), "")
                    << pair.source << " at -O" << pair.level << ", " << grid.Size() << " points"
                    << (kernels == QxKernelChoice::Best ? ", best kernels" : "");
        }
    }

    void Add(const Source& source, int level)
    {
        const std::string byteCode = ByteCodeOf(source.text, level);
        if (byteCode.empty())
            return;
        const RunOutcome outcome = RunByteCode(byteCode);
        EXPECT_EQ(outcome.fault, "") << source.name << source.text;
        m_pairs.push_back({source.name + '\n' + source.text, level, byteCode, outcome,
                           m_objects.Add(CFileOf(source.text, level))});
    }

    SharedObjects m_objects{m_folder.Path(), Setting("SLC_AGREE_COMPILER", SLC_CXX_COMPILER) + ' ' +
                                                 Setting("SLC_AGREE_CXX", "-O0")};
    std::vector<Pair> m_pairs;
};

}  // namespace

TEST_F(Agreement, OfExamples)
{
    ExpectAgreement(ShadersOf(SLC_EXAMPLES_FOLDER));
}

TEST_F(Agreement, OfCompiledShaders)
{
    ExpectAgreement(ShadersOf(SLC_COMPILE_SHADERS_FOLDER));
}

TEST_F(Agreement, OfShadersOfOtherTests)
{
    const path folder = m_folder.Path() / "sources";
    std::filesystem::create_directory(folder);
    ASSERT_EQ(std::system(
                  ("SLC_KEEP_SOURCES='" + folder.string() + "' " SLC_TEST_RUN " --gtest_filter='" +
                   Setting("SLC_AGREE_TESTS", "Language.*:BuiltIns.*:Light.*") + "' >/dev/null")
                      .c_str()),
              0);
    ExpectAgreement(ShadersOf(folder));
}

TEST_F(Agreement, OfRandomShaders)
{
    std::vector<Source> sources;
    const unsigned long count = Number("SLC_AGREE_RANDOM", "24");
    for (unsigned long seed = Number("SLC_AGREE_SEED", "1"); sources.size() < count; ++seed)
        sources.push_back({"seed " + std::to_string(seed),
                           RandomShader(static_cast<unsigned int>(seed)).Make().Text()});
    ExpectAgreement(sources);
}

/// Other tests compare what the byte-code of these shaders computes with known values.
TEST_F(Agreement, OfReferenceShaders)
{
    std::vector<Source> sources;
    const unsigned long count = Number("SLC_AGREE_RANDOM", "12");
    for (unsigned long seed = Number("SLC_AGREE_SEED", "1"); sources.size() < count; ++seed) {
        const ReferenceProgram program = ReferenceShader(static_cast<unsigned int>(seed)).Make();
        if (JudgeProgram(program) == ReferenceVerdict::Accepted)
            sources.push_back({"seed " + std::to_string(seed), program.Text()});
    }
    ExpectAgreement(sources);
}

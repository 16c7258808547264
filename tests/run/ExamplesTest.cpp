// Every example computes the same at every optimization level.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

#include "run/RunShader.h"

namespace {

using std::filesystem::path;

std::string Read(const path& file)
{
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

/// Without the lines that announce the default commands.
std::string ReportsIn(const path& messages)
{
    std::ifstream file(messages);
    std::string reports;
    for (std::string line; std::getline(file, line);)
        if (line.find("_COMMAND' environment variable") == std::string::npos)
            reports += line + "\n";
    return reports;
}

/// A copy of the examples, beside which the program may put its files.
class ExamplesCopy {
public:
    ExamplesCopy()
        : m_folder(std::filesystem::temp_directory_path() /
                   ("slc_examples_" + std::to_string(::getpid())))
    {
        std::filesystem::copy(SLC_EXAMPLES_FOLDER, m_folder);
    }
    ~ExamplesCopy() { std::filesystem::remove_all(m_folder); }

    [[nodiscard]] std::vector<path> Sources() const
    {
        std::vector<path> sources;
        for (const auto& entry : std::filesystem::directory_iterator(m_folder))
            if (entry.path().extension() == ".sl")
                sources.push_back(entry.path());
        return sources;
    }
    /// The byte-code file that the program makes of a source, without a word even where it warns
    /// of everything; empty if it refuses it.
    [[nodiscard]] std::string Compile(const path& source, int level) const
    {
        const path messages = m_folder / "messages";
        const std::string command = std::string(SLC_PROGRAM) + " -w2 -O" + std::to_string(level) +
                                    " -d '" + m_folder.string() + "' '" + source.string() +
                                    "' 2> '" + messages.string() + "'";
        if (std::system(command.c_str()) != 0) {
            ADD_FAILURE() << Read(messages);
            return {};
        }
        EXPECT_EQ(ReportsIn(messages), "") << source;
        return Read(path(source).replace_extension(".sqx"));
    }

private:
    path m_folder;
};

}  // namespace

TEST(Examples, ComputeTheSameAtEveryLevel)
{
    const ExamplesCopy examples;
    for (const path& source : examples.Sources()) {
        SqxMachine machine;
        const RunOutcome plain = RunShader(machine, examples.Compile(source, 0));
        EXPECT_EQ(plain.fault, "") << source;
        for (int level = 1; level <= 3; ++level)
            EXPECT_EQ(Difference(plain, RunShader(machine, examples.Compile(source, level))), "")
                << source << " at -O" << level;
    }
}

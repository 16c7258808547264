#include "run/ExampleFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "driver/SlcDefaultCommands.h"

namespace {

using std::filesystem::path;

std::string OptionsOf(const std::string& source)
{
    const std::string mark = "// options: ";
    return source.starts_with(mark) ? source.substr(mark.size(), source.find('\n') - mark.size())
                                    : "";
}

}  // namespace

ExampleFiles::ExampleFiles()
{
    const path top = "examples";
    std::filesystem::copy(SLC_EXAMPLES_FOLDER, top, std::filesystem::copy_options::recursive);
    std::filesystem::remove_all(top / "shadeops");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(top))
        if (entry.path().extension() == ".sl")
            m_examples.push_back({entry.path().lexically_relative(top).replace_extension(),
                                  entry.path(), OptionsOf(TemporaryFolder::Read(entry.path()))});
    std::sort(m_examples.begin(), m_examples.end(),
              [](const Example& a, const Example& b) { return a.name < b.name; });
    // The compiler does not announce a command that the environment sets.
    ::setenv("SLC_CC_COMMAND", "false", 1);
    // The default preprocess command names sqxcpp without a path; it is beside the compiler.
    const std::string programs = path(SLC_PROGRAM).parent_path().string();
    ::setenv("PATH", (programs + ':' + std::getenv("PATH")).c_str(), 1);
}

const Example& ExampleFiles::Named(const std::string& name) const
{
    const auto found = std::find_if(m_examples.begin(), m_examples.end(),
                                    [&](const Example& example) { return example.name == name; });
    if (found == m_examples.end())
        throw std::runtime_error("no example " + name);
    return *found;
}

std::string ExampleFiles::Run(const std::string& arguments)
{
    const std::string command = SLC_PROGRAM " " + arguments + " > messages 2>&1";
    const int status = std::system(command.c_str());
    return (status == 0 ? "" : "refused\n") + TemporaryFolder::Read("messages");
}

path ExampleFiles::Prepare(const Example& example)
{
    path prepared = "prepared" / example.source.filename();
    if (std::filesystem::exists(prepared))
        return prepared;
    ::setenv("SLC_CPP_COMMAND", DefaultPreprocessCommand().c_str(), 1);
    EXPECT_EQ(Run("-E " + example.source.string()), "");
    ::setenv("SLC_CPP_COMMAND", "cp $input_file $cpp_result", 1);
    std::filesystem::create_directory(prepared.parent_path());
    std::filesystem::rename(path(example.source).replace_extension(".i"), prepared);
    return prepared;
}

std::string ExampleFiles::Messages(const Example& example, const std::string& options)
{
    return Run(options + ' ' + example.options + ' ' + Prepare(example).string());
}

std::string ExampleFiles::ByteCode(const Example& example, int level)
{
    EXPECT_EQ(Messages(example, "-w2 -O" + std::to_string(level)), "")
        << example.name << " at -O" << level;
    return TemporaryFolder::Read(example.source.filename().replace_extension(".sqx"));
}

std::string ExampleFiles::Preprocessed(const Example& example)
{
    return TemporaryFolder::Read(Prepare(example));
}

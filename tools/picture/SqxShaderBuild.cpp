// A source is compiled by the compiler that stands beside the program, in a temporary folder, one
// for each source: two shaders may have one name. The folder lives as long as what was built in it,
// since a shared object is read from its file.
//
// Tested by tests/sqxshade/SqxShadeTest.cpp.

#include "picture/SqxShaderBuild.h"

#include <cstdlib>
#include <fstream>
#include <unistd.h>

#include "picture/SqxPictureSettings.h"
#include "process/SqxProcess.h"

namespace {

/// Without the lines that only tell which commands are the default.
std::string ReadMessages(const std::filesystem::path& path)
{
    std::ifstream file(path);
    std::string messages;
    for (std::string line; std::getline(file, line);)
        if (!line.starts_with("shaderqx: WARNING: 'SLC_C"))
            messages += line + '\n';
    return messages;
}

}  // namespace

SqxShaderBuild::~SqxShaderBuild()
{
    std::error_code ignored;
    if (!m_folder.empty())
        std::filesystem::remove_all(m_folder, ignored);
}

/// Each build has its own, since two shaders may have one name.
std::filesystem::path SqxShaderBuild::NewFolder()
{
    if (m_folder.empty()) {
        std::string name = (std::filesystem::temp_directory_path() / "shaderqx-XXXXXX").string();
        if (!mkdtemp(name.data()))
            throw SqxPictureError("Cannot make a temporary folder '" + name + "'");
        m_folder = name;
    }
    std::filesystem::path folder = m_folder / std::to_string(++m_builds);
    std::filesystem::create_directory(folder);
    return folder;
}

std::string SqxShaderBuild::Build(const std::string& source, const SqxBuildOptions& options)
{
    m_messages.clear();
    if (!std::filesystem::exists(source))
        throw SqxPictureError("There is no shader '" + source + "'");
    const std::filesystem::path compiler = SqxProgramBeside("shaderqx");
    if (access(compiler.c_str(), X_OK) != 0)
        throw SqxPictureError("There is no compiler '" + compiler.string() + "'");
    const std::filesystem::path folder = NewFolder();
    SqxCommand command = {
        {compiler, options.sharedObject ? "--dso" : "--int"}, folder, folder / "messages", {}};
    for (const std::string& searched : options.folders)
        command.words.push_back("-I" + searched);
    for (const std::string& definition : options.definitions)
        command.words.push_back("-D" + definition);
    command.words.push_back(std::filesystem::absolute(source));

    const bool built = SqxRunCommand(command) == 0;
    m_messages = ReadMessages(command.output);
    if (built)
        for (const auto& file : std::filesystem::directory_iterator(folder))
            if (file.path().extension() == ".sqx")
                return file.path();
    throw SqxPictureError("Shader '" + source + "' does not compile");
}

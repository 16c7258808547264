// A source is compiled by the compiler that stands beside the program, in a temporary folder, one
// for each source: two shaders may have one name. The folder lives as long as what was built in it,
// since a shared object is read from its file.
//
// Tested by tests/sqxshade/SqxShadeTest.cpp.

#include "picture/SqxShaderBuild.h"

#include <cstdlib>

#include "compile/SqxSourceCompile.h"
#include "picture/SqxPictureSettings.h"

std::vector<std::string> SqxBuildOptions::LibraryFolders() const
{
    std::vector<std::string> searched = {std::filesystem::current_path().string()};
    searched.insert(searched.end(), folders.begin(), folders.end());
    return searched;
}

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
    std::vector<std::string> words = {options.sharedObject ? "--dso" : "--int"};
    for (const std::string& searched : options.folders)
        words.push_back("-I" + searched);
    for (const std::string& definition : options.definitions)
        words.push_back("-D" + definition);
    SqxSourceCompile compile(source, std::move(words), NewFolder());
    const bool built = compile.Run() == 0;
    m_messages = compile.Messages();
    if (built)
        return compile.Output();
    throw SqxPictureError("Shader '" + source + "' does not compile");
}

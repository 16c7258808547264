// The compiler library compiles each source in its own temporary folder, since two shaders may have
// the same name. The folders exist as long as the `SqxShaderBuild`, since a shared object is read
// from its file.
//
// Tested by tests/sqxshade/SqxShadeTest.cpp.

#include "picture/SqxShaderBuild.h"

#include "compile/SqxSourceCompile.h"
#include "picture/SqxPictureSettings.h"

std::vector<std::string> SqxBuildOptions::LibraryFolders() const
{
    std::vector<std::string> searched = {std::filesystem::current_path().string()};
    searched.insert(searched.end(), folders.begin(), folders.end());
    return searched;
}

SqxShaderBuild::SqxShaderBuild() : m_folder("shaderqx"), m_signals([this] { m_folder.Remove(); }) {}

std::filesystem::path SqxShaderBuild::NewFolder()
{
    std::filesystem::path folder = m_folder.Path() / std::to_string(++m_builds);
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
    const bool built = compile.Run();
    m_messages = compile.Messages();
    if (built)
        return compile.Output();
    throw SqxPictureError("Shader '" + source + "' does not compile");
}

#include "sqxshade/SqxShaderBuild.h"

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

std::filesystem::path CompilerBesideThisProgram()
{
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "shaderqx";
}

/// Runs the command in a folder, with its output in a file. True if it succeeds.
bool RunIn(const std::filesystem::path& folder, const std::filesystem::path& output,
           std::vector<std::string> command)
{
    std::vector<char*> words;
    words.reserve(command.size() + 1);
    for (std::string& word : command)
        words.push_back(word.data());
    words.push_back(nullptr);

    const pid_t child = fork();
    if (child == 0) {
        const int file = open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        if (file < 0 || dup2(file, STDOUT_FILENO) < 0 || dup2(file, STDERR_FILENO) < 0 ||
            chdir(folder.c_str()) != 0)
            _exit(127);
        execv(words[0], words.data());
        _exit(127);
    }
    int status = 0;
    return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

/// Without the lines that only tell which commands are the default.
void ShowMessages(const std::filesystem::path& file)
{
    std::ifstream messages(file);
    for (std::string line; std::getline(messages, line);)
        if (!line.starts_with("shaderqx: WARNING: 'SLC_C"))
            std::cerr << line << '\n';
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
        std::string name = (std::filesystem::temp_directory_path() / "sqxshade-XXXXXX").string();
        if (!mkdtemp(name.data()))
            throw SqxShadeError("Cannot make a temporary folder '" + name + "'");
        m_folder = name;
    }
    std::filesystem::path folder = m_folder / std::to_string(++m_builds);
    std::filesystem::create_directory(folder);
    return folder;
}

std::string SqxShaderBuild::Build(const std::string& source, const SqxShadeOptions& options)
{
    if (!std::filesystem::exists(source))
        throw SqxShadeError("There is no shader '" + source + "'");
    const std::filesystem::path compiler = CompilerBesideThisProgram();
    if (access(compiler.c_str(), X_OK) != 0)
        throw SqxShadeError("There is no compiler '" + compiler.string() + "'");
    const std::filesystem::path folder = NewFolder();
    const std::filesystem::path messages = folder / "messages";
    std::vector<std::string> command = {compiler, "--dso"};
    for (const std::string& searched : options.folders)
        command.push_back("-I" + searched);
    for (const std::string& definition : options.definitions)
        command.push_back("-D" + definition);
    command.push_back(std::filesystem::absolute(source));

    const bool built = RunIn(folder, messages, std::move(command));
    ShowMessages(messages);
    if (built)
        for (const auto& file : std::filesystem::directory_iterator(folder))
            if (file.path().extension() == ".sqx")
                return file.path();
    throw SqxShadeError("Shader '" + source + "' does not compile");
}

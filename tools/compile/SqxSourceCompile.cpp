// The compiler leaves its files beside the source and in the working directory, under the shader's
// name. So each run gives it a folder of its own, in which a link stands for the source. Only the
// preprocessor runs in the user's working directory, on the source itself: names in reports are
// then those that the user wrote.
//
// Tested by tests/make/run.sh and tests/sqxview.

#include "compile/SqxSourceCompile.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <system_error>
#include <unistd.h>

#include "compile/SqxFoldReports.h"
#include "compile/SqxLineMarker.h"
#include "driver/SlcDefaultCommands.h"
#include "make/SqxMakeWord.h"
#include "process/SqxProcess.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* k_link = "source.sl";
constexpr const char* k_preprocessed = "source.i";
constexpr const char* k_messages = "messages";
constexpr const char* k_libraries = "libraries";

}  // namespace

SqxSourceCompile::SqxSourceCompile(fs::path source, std::vector<std::string> options, fs::path work)
    : m_source(std::move(source)),
      m_options(std::move(options)),
      m_work(std::move(work)),
      m_compiler(SqxProgramBeside("shaderqx")),
      m_ownCommand(std::getenv("SLC_CPP_COMMAND"))
{
}

void SqxSourceCompile::WriteDependencies(fs::path file, std::string target)
{
    m_dependencies = std::move(file);
    m_target = std::move(target);
}

std::vector<std::string> SqxSourceCompile::PreprocessorArguments() const
{
    std::vector<std::string> arguments;
    for (const std::string& option : m_options)
        if (option.starts_with("-I") || option.starts_with("-D"))
            arguments.push_back(option);
    return arguments;
}

std::string SqxSourceCompile::PreprocessCommand() const
{
    const std::string start = "cd " + SqxShellWord(fs::current_path().string()) +
                              " || exit; input_file=" + SqxShellWord(m_source.string()) + "; ";
    std::string options;
    std::string words;
    for (const std::string& argument : PreprocessorArguments()) {
        options += argument + " ";
        words += SqxShellWord(argument) + " ";
    }
    if (m_ownCommand)
        return start + "cpp_options=" + SqxShellWord(options) +
               "; cpp_arguments=" + SqxShellWord(words) + "; " + m_ownCommand;
    return start + "exec " + SqxShellWord(SqxProgramBeside("sqxcpp")) + " " + words +
           OwnPreprocessorWords() + "-- \"$input_file\" > \"$cpp_result\"";
}

/// What the default command says, and what builds want to know.
std::string SqxSourceCompile::OwnPreprocessorWords() const
{
    std::string words;
    for (const auto& macro : DefaultPreprocessorOptions({}).macros)
        words += "-D" + macro.text + " ";
    for (const std::string& option : m_options)
        if (option.starts_with("-w"))
            words += option + " ";
    if (!m_dependencies.empty())
        words += "-MD -MQ " + SqxShellWord(m_target) + " -MF " +
                 SqxShellWord(m_dependencies.string()) + " ";
    return words;
}

int SqxSourceCompile::Run()
{
    std::error_code failed;
    fs::create_symlink(fs::absolute(m_source), m_work / k_link, failed);
    if (failed)
        throw SqxCompileError("Cannot work in '" + m_work.string() + "': " + failed.message());
    if (access(m_compiler.c_str(), X_OK) != 0)
        throw SqxCompileError("There is no compiler '" + m_compiler.string() + "'");
    SqxCommand command;
    command.words = {m_compiler.string()};
    for (const fs::path& folder : LibraryFolders())
        command.words.push_back("-I" + folder.string());
    for (const std::string& option : m_options)
        if (!option.starts_with("-I"))
            command.words.push_back(option);
    command.words.insert(command.words.end(), {"--keep-cpp-file", m_work / k_link});
    command.folder = m_work;
    command.output = m_work / k_messages;
    command.isOver = m_isOver;
    const char* ownCC = std::getenv("SLC_CC_COMMAND");
    command.variables = {{"SLC_CPP_COMMAND", PreprocessCommand()},
                         {"SLC_CC_COMMAND", ownCC ? ownCC : DefaultCCCommand()},
                         {"SLC_ADVICE", "1"},
                         {"SLC_SHADEOP_LIBRARIES", m_work / k_libraries}};
    const int status = SqxRunCommand(command);
    if (status == 0 && !m_dependencies.empty())
        CompleteDependencies();
    return status;
}

/// The default preprocess command has written the files that it read, another one has not; the
/// compiler's libraries are added behind them.
void SqxSourceCompile::CompleteDependencies() const
{
    std::set<std::string> files = Libraries();
    std::string text;
    if (m_ownCommand) {
        files = FilesRead();
        text = SqxMakeWord(m_target) + ":";
    } else {
        std::ifstream written(m_dependencies, std::ios::binary);
        text.assign(std::istreambuf_iterator<char>(written), {});
        text.erase(text.find_last_not_of('\n') + 1);
    }
    for (const std::string& file : files)
        text += " \\\n " + SqxMakeWord(file);
    std::ofstream file(m_dependencies, std::ios::binary);
    file << text << '\n';
    file.close();
    if (!file)
        throw SqxCompileError("Cannot write '" + m_dependencies.string() + "'");
}

std::set<std::string> SqxSourceCompile::Libraries() const
{
    std::set<std::string> libraries;
    std::ifstream file(m_work / k_libraries);
    for (std::string line; std::getline(file, line);)
        libraries.insert(fs::path(line).lexically_normal().string());
    return libraries;
}

/// The preprocessed file tells in line markers which files it was made of.
std::set<std::string> SqxSourceCompile::FilesRead() const
{
    std::set<std::string> files = Libraries();
    files.insert(m_source.string());
    std::ifstream preprocessed(m_work / k_preprocessed);
    std::error_code ignored;
    for (std::string line; std::getline(preprocessed, line);)
        if (const auto marker = SqxReadLineMarker(line);
            marker && fs::is_regular_file(marker->file, ignored))
            files.insert(marker->file);
    return files;
}

/// Those of `-I`, as given.
std::vector<fs::path> SqxSourceCompile::SearchFolders() const
{
    std::vector<fs::path> folders;
    for (const std::string& option : m_options)
        if (option.starts_with("-I"))
            folders.emplace_back(option.substr(2));
    return folders;
}

/// Shadeop libraries of the working directory come first, as without this program.
std::vector<fs::path> SqxSourceCompile::LibraryFolders() const
{
    std::vector<fs::path> folders = {fs::current_path()};
    for (const fs::path& folder : SearchFolders())
        folders.push_back(fs::absolute(folder));
    return folders;
}

SqxSearchedPlaces SqxSourceCompile::PlacesSearched() const
{
    SqxSearchedPlaces places;
    std::ifstream preprocessed(m_work / k_preprocessed);
    places.AddHeaders(preprocessed, SearchFolders());
    places.AddLibraries(Libraries(), LibraryFolders());
    return places;
}

/// The input is our link, and the closing line of a refusal cuts its path.
std::string SqxSourceCompile::Messages() const
{
    const std::string head = "Compilation of ";
    const std::string link = (m_work / k_link).string();
    std::ifstream file(m_work / k_messages);
    std::string messages;
    for (std::string line; std::getline(file, line);) {
        for (std::size_t at = line.find(link); at != std::string::npos; at = line.find(link, at))
            line.replace(at, link.size(), m_source.string());
        const std::size_t tail = line.find(" aborted due to errors: ");
        const bool isClosing = line.starts_with(head) && tail != std::string::npos;
        messages += (isClosing ? head + m_source.string() + line.substr(tail) : line) + '\n';
    }
    return SqxFoldReports(messages);
}

fs::path SqxSourceCompile::Output() const
{
    for (const auto& entry : fs::directory_iterator(m_work))
        if (entry.path().extension() == ".sqx")
            return entry.path();
    throw SqxCompileError("The compiler left no '.sqx' file for '" + m_source.string() + "'");
}

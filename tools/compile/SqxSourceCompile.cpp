// The library reads the source in the user's working directory, so that reports name files as the
// user wrote them. All output goes to the folder of the compile:
//
//     sqxview                              sqxmake --compile WORK ... -- a.sl
//     RunApart: starts                 ->  RunForAnother, which writes WORK/SHADER.sqx,
//               and reads afterwards   <-  WORK/files, WORK/searched and prints to WORK/messages
//
// Tested by tests/make/run.sh and tests/sqxview.

#include "compile/SqxSourceCompile.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <system_error>
#include <utility>

#include "compile/SqxFoldReports.h"
#include "compile/SqxLineMarker.h"
#include "driver/SlcDefaultCommands.h"
#include "driver/SlcOptionRows.h"
#include "process/SqxProcess.h"

namespace {

namespace fs = std::filesystem;
using Failure = QxCompileResult::Failure;

constexpr const char* k_preprocessed = "source.i";
constexpr const char* k_messages = "messages";
constexpr const char* k_files = "files";
constexpr const char* k_searched = "searched";
constexpr int k_notStarted = 127;

[[nodiscard]] std::string ReadFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFile(const fs::path& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file)
        throw SqxCompileError("Cannot write '" + path.string() + "'");
}

/// Returns the files that the line markers of a preprocessed text name and that exist.
[[nodiscard]] std::set<std::string> FilesOfMarkers(const std::string& preprocessed)
{
    std::set<std::string> files;
    std::istringstream lines(preprocessed);
    std::error_code ignored;
    for (std::string line; std::getline(lines, line);)
        if (const auto marker = SqxReadLineMarker(line);
            marker && fs::is_regular_file(marker->file, ignored))
            files.insert(marker->file);
    return files;
}

/// Returns the shadeop libraries that the shader calls, with absolute paths, since builds may read
/// the paths in another working directory.
[[nodiscard]] std::set<std::string> Libraries(const QxCompileResult& result)
{
    std::set<std::string> libraries;
    for (const std::string& library : result.shadeopLibraries)
        libraries.insert(fs::absolute(library).lexically_normal().string());
    return libraries;
}

[[nodiscard]] SqxSearchedPlaces::Folders SearchFolders(const SlcCommandLine& line)
{
    return {line.m_compile.folders.begin(), line.m_compile.folders.end()};
}

/// Returns the folders for shadeop libraries: the working directory, and then those of `-I`.
[[nodiscard]] SqxSearchedPlaces::Folders LibraryFolders(const SlcCommandLine& line)
{
    SqxSearchedPlaces::Folders folders = {fs::current_path()};
    for (const std::string& folder : line.m_compile.folders)
        folders.push_back(fs::absolute(folder));
    return folders;
}

}  // namespace

SqxSourceCompile::SqxSourceCompile(fs::path source, std::vector<std::string> options, fs::path work)
    : m_source(std::move(source)),
      m_options(std::move(options)),
      m_work(std::move(work)),
      m_ownCommand(std::getenv("SLC_CPP_COMMAND"))
{
}

void SqxSourceCompile::AddMessage(const std::string& text)
{
    m_messages += "shaderqx: ERROR: " + text + "\n";
}

SlcCommandLine SqxSourceCompile::CommandLine() const
{
    SlcCommandLine line;
    std::vector<const char*> words;
    for (const std::string& option : m_options)
        words.push_back(option.c_str());
    for (SlcArgumentList rest(words); !rest.Empty(); rest.Pop())
        if (SlcReadOption(line, rest) != SlcOptionResult::Done)
            throw SqxCompileError("Invalid option: " + std::string(rest.Front()));
    line.m_compile.showsAdvice = true;
    return line;
}

bool SqxSourceCompile::Preprocess(const SlcCommandLine& line)
{
    std::string words;
    for (const std::string& argument : line.m_preprocessorArguments)
        words += SqxShellWord(argument) + " ";
    SqxCommand command;
    command.words = {"/bin/sh", "-c", m_ownCommand};
    command.variables = {{"input_file", m_source.string()},
                         {"cpp_options", line.PreprocessorOptions()},
                         {"cpp_arguments", words},
                         {"cpp_result", (m_work / k_preprocessed).string()}};
    command.onLine = [&](const std::string& text) { m_messages += text + "\n"; };
    if (SqxRunCommand(command) == 0)
        return true;
    AddMessage("Problem during preprocessing.  Stopping.");
    return false;
}

QxCompileResult SqxSourceCompile::Compile(const SlcCommandLine& line)
{
    QxCompileOptions options = line.m_compile;
    options.isPreprocessed = m_ownCommand != nullptr;
    std::error_code ignored;
    if (!fs::exists(m_source, ignored)) {
        AddMessage("File '" + m_source.string() + "' doesn't seem to exist.");
        return {};
    }
    if (!options.isPreprocessed)
        return QxCompileFile(m_source.string(), options);
    if (!Preprocess(line))
        return {};
    if (fs::exists(m_work / k_preprocessed, ignored))
        return QxCompileText(m_source.string(), ReadFile(m_work / k_preprocessed), options);
    m_messages += "Cannot open input file: " + m_source.string() + "\n";
    return {};
}

bool SqxSourceCompile::Run()
{
    const SlcCommandLine line = CommandLine();
    QxCompileResult result = Compile(line);
    TakeFacts(line, result);
    if (result.succeeded)
        QxWriteOutput(result, m_work.string());
    m_messages += result.messages;
    if (result.failure == Failure::Preprocessing)
        AddMessage("Problem during preprocessing.  Stopping.");
    if (result.failure == Failure::Source)
        m_messages += "Compilation of " + m_source.string() +
                      " aborted due to errors: " + std::to_string(result.errors) + " errors, " +
                      std::to_string(result.warnings) + " warnings.\n";
    const bool isBuilt =
        result.succeeded &&
        (line.m_compile.output == QxCompileOptions::Output::ByteCode || BuildSharedObject(result));
    m_messages = SqxFoldReports(m_messages);
    return isBuilt;
}

bool SqxSourceCompile::BuildSharedObject(const QxCompileResult& result)
{
    const char* ownCommand = std::getenv("SLC_CC_COMMAND");
    SqxCommand command;
    command.words = {"/bin/sh", "-c", ownCommand ? ownCommand : DefaultCCCommand()};
    command.folder = m_work;
    command.variables = {{"output_dir", "."},
                         {"output_file", result.shaderName + ".sqx"},
                         {"cc_input_file", result.fileName}};
    command.onLine = [&](const std::string& text) { m_messages += text + "\n"; };
    if (SqxRunCommand(command) == 0)
        return true;
    AddMessage("Problem during C++ compilation.  Stopping.");
    return false;
}

void SqxSourceCompile::TakeFacts(const SlcCommandLine& line, const QxCompileResult& result)
{
    const std::set<std::string> libraries = Libraries(result);
    if (m_ownCommand) {
        const std::string preprocessed = ReadFile(m_work / k_preprocessed);
        m_files = FilesOfMarkers(preprocessed);
        std::istringstream lines(preprocessed);
        m_places.AddHeaders(lines, SearchFolders(line));
    }
    for (const std::string& place : result.searchedPlaces)
        m_places.AddMissing(place);
    m_places.AddLibraries(libraries, LibraryFolders(line));
    m_files.insert(m_source.string());
    m_files.insert(result.files.begin(), result.files.end());
    m_files.insert(libraries.begin(), libraries.end());
}

bool SqxSourceCompile::RunForAnother()
{
    const bool isBuilt = Run();
    std::string files;
    for (const std::string& file : m_files)
        files += file + '\0';
    WriteFile(m_work / k_files, files);
    WriteFile(m_work / k_searched, m_places.Text());
    std::cerr << m_messages << std::flush;
    return isBuilt;
}

bool SqxSourceCompile::RunApart(const std::function<bool()>& isOver)
{
    SqxCommand command;
    command.words = {SqxProgramBeside("sqxmake").string(), "--compile", m_work.string()};
    command.words.insert(command.words.end(), m_options.begin(), m_options.end());
    command.words.insert(command.words.end(), {"--", m_source.string()});
    command.output = m_work / k_messages;
    command.isOver = isOver;
    const int status = SqxRunCommand(command);
    if (status == k_notStarted)
        throw SqxCompileError("There is no compiler '" + command.words.front() + "'");
    m_messages = ReadFile(m_work / k_messages);
    std::istringstream files(ReadFile(m_work / k_files));
    for (std::string file; std::getline(files, file, '\0');)
        m_files.insert(file);
    std::istringstream searched(ReadFile(m_work / k_searched));
    m_places = SqxSearchedPlaces::Read(searched);
    return status == 0;
}

fs::path SqxSourceCompile::Output() const
{
    for (const auto& entry : fs::directory_iterator(m_work))
        if (entry.path().extension() == ".sqx")
            return entry.path();
    throw SqxCompileError("The compiler left no '.sqx' file for '" + m_source.string() + "'");
}

// The C++ compiler, and a user's own preprocessor, run through the shell:
//
//     input_file=a.sl cpp_options=" -DX " cpp_result=.unfinished-abcdef/a.i    in the environment
//     cc -E $cpp_options "$input_file" > "$cpp_result"                         the command
//
// Without a command for the preprocessor, the library preprocesses.
//
// Tested by tests/driver/SlcExternalCommandsTest.cpp.

#include "driver/SlcExternalCommands.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "driver/SlcDefaultCommands.h"
#include "driver/SlcProgramName.h"
#include "support/QxDebug.h"
#include "support/SlcDiagnostics.h"
#include "support/SlcFiles.h"

namespace {

using Variables = std::initializer_list<std::pair<const char*, std::string>>;

/// Ensures that the process receives the exit status of its children: it may have inherited an
/// ignored SIGCHLD, and commands would then have no status.
class DefaultChildSignal {
public:
    DefaultChildSignal()
    {
        struct sigaction action = {};
        action.sa_handler = SIG_DFL;
        sigaction(SIGCHLD, &action, &m_before);
    }
    ~DefaultChildSignal() { sigaction(SIGCHLD, &m_before, nullptr); }
    DefaultChildSignal(const DefaultChildSignal&) = delete;
    DefaultChildSignal& operator=(const DefaultChildSignal&) = delete;

private:
    struct sigaction m_before = {};
};

/// Ends this process by SIGINT or SIGQUIT if that signal has ended the command, or the shell that
/// ran it: while the shell runs, this process ignores both signals.
void EndAsTheCommand(int status)
{
    for (const int signal : {SIGINT, SIGQUIT})
        if ((WIFSIGNALED(status) && WTERMSIG(status) == signal) ||
            (WIFEXITED(status) && WEXITSTATUS(status) == 128 + signal))
            QxDebug::EndBySignal(signal);
}

/// True if the variables were set and the command returned 0. Does not return if Ctrl-C ended it.
[[nodiscard]] bool RunCommand(const std::string& command, Variables variables)
{
    for (const auto& [name, value] : variables)
        if (setenv(name, value.c_str(), 1) != 0)
            return false;
    const DefaultChildSignal childSignal;
    const int status = std::system(command.c_str());
    EndAsTheCommand(status);
    return status == 0;
}

[[nodiscard]] std::string AsShellWords(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words)
        text += SlcShellWord(word) + ' ';
    return text;
}

[[nodiscard]] bool Exists(const std::string& path)
{
    return access(path.c_str(), F_OK) == 0;
}

/// If the command has not written to the given path, takes the file at the final place, which the
/// command can derive from the name of the source.
void AcceptFileInPlace(const SlcUnfinishedFile& file, const std::string& place)
{
    if (!Exists(file.Path()))
        static_cast<void>(std::rename(place.c_str(), file.Path().c_str()));
}

[[nodiscard]] bool RunPreprocessCommand(const SlcCommandLine& line, SlcRunFiles& files)
{
    // The source may be in a folder that the user cannot write to.
    using Else = SlcUnfinishedFile::Else;
    const SlcUnfinishedFile& file = files.m_preprocessed.emplace(
        line.m_preprocessedFile, SlcUnfinishedFile::OnExit::MoveIntoPlace,
        line.m_keepPreprocessedFile ? Else::Nowhere : Else::Temporary);
    const bool succeeded = RunCommand(
        *line.m_preprocessCommand, {{"cpp_options", " " + line.PreprocessorOptions()},
                                    {"cpp_arguments", AsShellWords(line.m_preprocessorArguments)},
                                    {"input_file", line.m_inputFile},
                                    {"cpp_result", file.Path()}});
    AcceptFileInPlace(file, line.m_preprocessedFile);
    return succeeded;
}

/// False if the file could not be written.
[[nodiscard]] bool WritePreprocessedText(const SlcCommandLine& line, SlcRunFiles& files)
{
    const SlcUnfinishedFile& file = files.m_preprocessed.emplace(
        line.m_preprocessedFile, SlcUnfinishedFile::OnExit::MoveIntoPlace);
    return SlcWriteFile(file.Path(), files.m_preprocessedText);
}

/// Preprocesses with the library, as if by the default command. Keeps the text in memory, and
/// writes it to a file only if that is requested or after a failure.
[[nodiscard]] bool Preprocess(const SlcCommandLine& line, SlcRunFiles& files)
{
    QxCompileOptions options = line.m_compile;
    options.output = QxCompileOptions::Output::Preprocessed;
    QxCompileResult result = QxCompileFile(line.m_inputFile, options);
    PrintReport(result.messages);
    files.m_preprocessedText = std::move(result.output);
    if (!result.succeeded)
        KeepPreprocessedText(line, files);
    else if (line.m_keepPreprocessedFile && !WritePreprocessedText(line, files))
        SeverError(k_programName, "Cannot write " + line.m_preprocessedFile);
    else
        return true;
    return false;
}

}  // namespace

bool PreprocessSource(const SlcCommandLine& line, SlcRunFiles& files)
{
    const bool succeeded =
        line.m_preprocessCommand ? RunPreprocessCommand(line, files) : Preprocess(line, files);
    if (succeeded)
        return line.m_runCompile || KeepFile(*files.m_preprocessed, line.m_preprocessedFile);
    if (line.m_preprocessCommand && files.m_preprocessed->IsBesidePlace() &&
        Exists(files.m_preprocessed->Path()))
        static_cast<void>(KeepFile(*files.m_preprocessed, line.m_preprocessedFile));
    SeverError(k_programName, "Problem during preprocessing.  Stopping.");
    return false;
}

void KeepPreprocessedText(const SlcCommandLine& line, SlcRunFiles& files)
{
    if (!line.m_preprocessCommand && WritePreprocessedText(line, files))
        static_cast<void>(files.m_preprocessed->MoveIntoPlace());
}

bool BuildSharedObject(const SlcCommandLine& line, SlcRunFiles& files)
{
    const std::string name = files.m_shaderName + ".sqx";
    const std::string place = line.m_outputDirectory + '/' + name;
    SlcUnfinishedFile output(place);
    const bool succeeded = RunCommand(
        line.m_ccCommand,
        {{"output_dir", output.Folder().empty() ? line.m_outputDirectory : output.Folder()},
         {"output_file", name},
         {"cc_input_file", files.m_cc->Path()}});
    const bool kept = !line.m_keepCCFile || KeepFile(*files.m_cc, files.m_shaderName + ".cpp");
    if (!succeeded)
        SeverError(k_programName, "Problem during C++ compilation.  Stopping.");
    else if (Exists(output.Path()) && !KeepFile(output, place))
        return false;
    return succeeded && kept;
}

bool KeepFile(SlcUnfinishedFile& file, const std::string& place)
{
    if (file.MoveIntoPlace())
        return true;
    SeverError(k_programName, "Cannot write " + place + ": " + std::strerror(errno));
    return false;
}
